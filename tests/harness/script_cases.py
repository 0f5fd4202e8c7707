#!/usr/bin/env python3
"""Runs script cases against upkeep.exe under Wine.

A cases file holds cases, each headed "=== case: what it shows", then header
lines, then sections ("--- name" and its lines):
    args: ...      the command line (default: /file script.xml); {exedir} and {casedir} are the
                   Windows paths of the running interpreter's and the case's directories,
                   {caserel} the case's directory relative to the work directory, {http} and
                   {http_closed} the URLs UPKEEP_HTTP and UPKEEP_HTTP_CLOSED (http_server.py)
    exit: -4       the exit code (default 0), compared as the shell sees it
    timeout: 300   seconds each for setup, run and check (default 120)
    program: p/upkeep.exe   run this copy of the interpreter, put there by the setup
    script: TEXT   script.xml of one line: the script element around TEXT
Sections: "script" (script.xml, its lines inside <script version="1.1">), a
file name (has a dot or a slash; written before the run, inside the case
directory), "setup", "check" and "teardown" (bash: before the run, after it,
and last whatever happened), "expect" (the whole output), "expect-in-order",
"expect-not" (also among the debugger lines) and "expect-debug" (debugger
output lines in order, under /debug). An expected line "~ RE" is a regular
expression for the whole line, "<empty>" an empty line.

"=== every case" gives every later case of the file its header lines and
sections unless it has its own. "=== table: what the rows show" is one case
per row: a "columns:" line names the columns (exit, args, script, line: a line
expected in order, or a file name) and each row is "| " then its cells joined
by " | "; an args, script or file cell may hold " | " itself.

Bash sections get `win` (runs a Windows program in the prefix), `await FILE`
(10 s), `hold [FILE [none|rw|delete|read]]` and `release` (the helper that
keeps a file open), `remove_service NAME...`, $HELPERS and $UPKEEP, and first
source cases.sh beside the cases file. They run under `set -e`, and a line
"! command" or "a && b" fails its section wherever it stands. An unknown section or header line, or a
file name that is absolute or holds "..", refuses its case; so does writing
beside the case directory. A step that outlives its timeout is stopped with
everything it started, and fails its case. A run that printed nothing and
ended with an unexpected code is run once more, with a note: a Wine process on
a loaded machine can fail to start, and a fault of the program repeats.
"""
import argparse
import copy
import os
import re
import shlex
import shutil
import signal
import subprocess
import sys

TABLE_COLUMNS = ("exit", "args", "script", "line")
SECTION_KINDS = {"expect", "expect-in-order", "expect-not", "expect-debug", "setup", "check", "teardown"}
DEBUG_LINE = re.compile(r'^[0-9a-f]*:warn:[a-z]*:OutputDebugStringA "(.*?)"(\.\.\.)?$')
DEFAULT_TIMEOUT = 120
BASH_PRELUDE = r"""
win() { "$WINE_RUN" "$WINE_PREFIX" "$@"; }
await() { for _ in $(seq 100); do [ -e "$1" ] && return 0; sleep 0.1; done; echo "no $1 after 10 s" >&2; return 1; }
[ -f "$CASES_DIR/cases.sh" ] && . "$CASES_DIR/cases.sh"
hold() { win "$HELPERS/hold_file.exe" "$@" >/dev/null 2>&1 & await held.ready; }
release() {
  touch held.stop
  for _ in $(seq 100); do [ -e held.ready ] || return 0; sleep 0.1; done
  echo "the holder did not stop within 10 s" >&2; return 1
}
remove_service() {
  local name
  for name; do
    win sc delete "$name" >/dev/null 2>&1 || true
    for _ in $(seq 100); do
      win sc query "$name" >/dev/null 2>&1 || continue 2
      win sc stop "$name" >/dev/null 2>&1 || true
      sleep 0.1
    done
    echo "service $name still there after 10 s" >&2; return 1
  done
}
set -e
"""


def file_name_problem(name):
    """Why a section name cannot be a file of the case, or None."""
    if "." not in name and "/" not in name:
        return "unknown section %r (a file's name has a dot or a slash)" % name
    if name.startswith("/") or any(part in ("", ".", "..") for part in name.split("/")):
        return "file %r must be a relative path inside the case directory, without .." % name
    return None


def parse_cases(path):
    cases, case, section, every = [], None, None, None
    for raw in open(path, encoding="utf-8").read().split("\n"):
        if raw.startswith(("=== case:", "=== every case", "=== table:")):
            case = {"name": raw.partition(":")[2].strip(), "args": "/file script.xml", "exit": 0, "files": {},
                    "sections": {}, "refused": [], "dir": os.path.dirname(os.path.abspath(path))}
            case.update({key: every[key] for key in ("args", "exit", "timeout", "program") if every and key in every})
            if raw.startswith("=== table:"):
                case["rows"], case["columns"] = [], []
            if raw.startswith("=== every case"):
                every = case
            else:
                cases.append(case)
            section = None
        elif case is None or (raw.startswith("#") and section is None):
            continue
        elif raw.startswith("--- "):
            section = raw[4:].strip()
            if section == "script":
                section, case["wrapped"] = "script.xml", True
            problem = None if section in SECTION_KINDS else file_name_problem(section)
            if problem:
                case["refused"].append(problem)
            (case["sections"] if section in SECTION_KINDS else case["files"])[section] = []
        elif section is not None:
            (case["sections"] if section in SECTION_KINDS else case["files"])[section].append(raw)
        elif raw.startswith(("args:", "exit:", "timeout:", "program:")):
            key, _, value = raw.partition(":")
            case[key] = int(value) if key in ("exit", "timeout") else value.strip()
            if key == "program" and file_name_problem(case[key]):
                case["refused"].append(file_name_problem(case[key]))
        elif raw.startswith("script:"):
            case["files"]["script.xml"] = [one_line_script(raw[7:].strip())]
        elif "rows" in case and raw.startswith("columns:"):
            case["columns"] = [name.strip() for name in raw[8:].split("|")]
        elif "rows" in case and raw.startswith("| "):
            case["rows"].append(raw[2:])
        elif raw.strip():
            case["refused"].append("unknown line before the first section: %r" % raw)
    for c in cases + ([every] if every else []):  # a section ends before the blank lines that separate cases
        for lines in list(c["sections"].values()) + list(c["files"].values()):
            while lines and lines[-1] == "":
                lines.pop()
        if c.get("wrapped"):
            c["files"]["script.xml"] = ['<script version="1.1">'] + c["files"]["script.xml"] + ["</script>"]
        if every:
            c["sections"] = {**every["sections"], **c["sections"]}
    return [row for c in cases for row in (table_rows(c) if "rows" in c else [c])]


def one_line_script(text):
    return '<script version="1.1">%s</script>' % text


def table_rows(table):
    """The cases of a table's rows."""
    columns, rows = table.pop("columns"), table.pop("rows")
    unknown = [name for name in columns if name not in TABLE_COLUMNS and file_name_problem(name)]
    wide = next((columns.index(name) for name in columns if name not in ("exit", "line")), None)
    if not rows:
        table["refused"].append("a table without rows")
        yield table
    for row in rows:
        case = copy.deepcopy(table)
        case["name"] = "%s: %s" % (table["name"], row)
        cells = row.split(" | ")
        extra = len(cells) - len(columns)
        if wide is not None and extra > 0:
            cells[wide:wide + extra + 1] = [" | ".join(cells[wide:wide + extra + 1])]
        if unknown or len(cells) != len(columns):
            case["refused"].append("a row needs one cell for each of the columns %s" % columns)
        for name, cell in zip(columns, cells) if not case["refused"] else ():
            if name in ("exit", "args"):
                case[name] = int(cell) if name == "exit" else cell
            elif name == "script":
                case["files"]["script.xml"] = [one_line_script(cell)]
            elif name == "line":
                case["sections"]["expect-in-order"] = [cell]
            else:
                case["files"][name] = [cell]
        yield case


def windows_path(path):
    return "Z:" + path.replace("/", "\\")


def line_matches(expected, actual):
    if expected == "<empty>":
        return actual == ""
    if expected.startswith("~ "):
        return re.fullmatch(expected[2:], actual) is not None
    return expected == actual


def in_order(expected, actual):
    """Returns the first expected line not found in order, or None."""
    position = 0
    for line in expected:
        while position < len(actual) and not line_matches(line, actual[position]):
            position += 1
        if position == len(actual):
            return line
        position += 1
    return None


def run_bounded(command, cwd, env, timeout):
    """Runs `command` in a session of its own; (returncode, stdout, stderr), the
    output as bytes. When it outlives `timeout`, all it started is ended and the
    returncode is None; the output is what it wrote until then."""
    process = subprocess.Popen(command, cwd=cwd, env=env, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE, start_new_session=True)
    try:
        stdout, stderr = process.communicate(timeout=timeout)
        return process.returncode, stdout, stderr
    except subprocess.TimeoutExpired:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        try:
            stdout, stderr = process.communicate(timeout=10)
        except subprocess.TimeoutExpired:
            stdout, stderr = b"", b""  # something escaped the session and holds the pipes
        return None, stdout, stderr


def strict(lines):
    """Under `set -e` alone bash goes on after a line `! command` whose command
    succeeds, or a line `a && b` whose `a` fails, unless it is the last line:
    such lines fail the section wherever they stand. Compound commands, lines
    that go on, and here-documents are left as written."""
    heredoc = None
    for line in lines:
        if heredoc:
            heredoc = None if line.strip() == heredoc else heredoc
        elif "<<" in line:
            heredoc = line.split("<<", 1)[1].strip().strip("'\"-")
        elif line.startswith("! "):
            line = "if %s; then false; fi" % line[2:]
        elif " && " in line and not any(c in re.sub(r"\$\([^()]*\)", "", line) for c in "#;{}()") and \
                not line.rstrip().endswith(("\\", "&", "|")) and \
                line.split()[0] not in ("for", "if", "while", "until", "case", "then", "do", "else"):
            line += " || exit 1"
        yield line


def bash(kind, case, cwd, env):
    """None when the section passed, else why it failed."""
    timeout = case.get("timeout", DEFAULT_TIMEOUT)
    script = "\n".join(strict(case["sections"][kind]))
    result = run_bounded(["bash", "-c", BASH_PRELUDE + script], cwd, env, timeout)
    if result[0] is None:
        return "%s timed out after %d s:\n%s" % (kind, timeout, result[1].decode("utf-8", "replace"))
    if result[0] != 0:
        return "%s failed:\n%s%s" % (kind, result[1].decode("utf-8", "replace"), result[2].decode("utf-8", "replace"))
    return None


def run_case(case, opts, workdir):
    if case["refused"]:
        return case["refused"]
    shutil.rmtree(workdir, ignore_errors=True)
    os.makedirs(workdir)
    for name, lines in case["files"].items():
        path = os.path.join(workdir, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8", newline="\n") as f:
            f.write("\n".join(lines) + "\n")
    env = dict(os.environ, WINE_RUN=opts.wine_run, WINE_PREFIX=opts.prefix, UPKEEP=opts.exe,
               HELPERS=opts.helpers or "", CASES_DIR=case["dir"], LC_ALL="C.UTF-8")
    problems = run_steps(case, opts, workdir, env)
    failure = "teardown" in case["sections"] and bash("teardown", case, workdir, env)
    return problems + [failure] if failure else problems


def command_line(case, opts, exe, workdir):
    text = case["args"].replace("{exedir}", windows_path(os.path.dirname(exe)))
    text = text.replace("{casedir}", windows_path(workdir))
    text = text.replace("{caserel}", os.path.relpath(workdir, opts.work).replace(os.sep, "/"))
    for key, name in (("{http}", "UPKEEP_HTTP"), ("{http_closed}", "UPKEEP_HTTP_CLOSED")):
        text = text.replace(key, os.environ.get(name, key))
    lexer = shlex.shlex(text, posix=True)
    lexer.whitespace_split, lexer.escape = True, ""  # backslashes are Windows paths
    return list(lexer)


def run_steps(case, opts, workdir, env):
    sections = case["sections"]
    failure = "setup" in sections and bash("setup", case, workdir, env)
    if failure:
        return [failure]
    if "expect-debug" in sections:
        env["WINEDEBUG"] = "-all,warn+seh,warn+debugstr"
    exe = os.path.join(workdir, case["program"]) if "program" in case else opts.exe
    timeout = case.get("timeout", DEFAULT_TIMEOUT)
    command = [opts.wine_run, opts.prefix, exe] + command_line(case, opts, exe, workdir)
    expected_exit = case["exit"] & 0xFF or (1 if case["exit"] else 0)  # Wine reports a low byte of 0 as 1
    returncode, stdout, stderr = run_bounded(command, workdir, env, timeout)
    if returncode is not None and returncode != expected_exit and not stdout.strip():
        # Our programs always print a first line: a run that printed nothing did
        # not get going (a Wine process on a loaded machine can fail to start),
        # and runs are deterministic, so it runs once more.
        print("note: the run ended with %d having printed nothing, stderr: %s; running it once more"
              % (returncode, stderr.decode("utf-8", "replace")[-500:].strip()), flush=True)
        returncode, stdout, stderr = run_bounded(command, workdir, env, timeout)
    if returncode is None:
        return ["timed out after %d s; its output until then:" % timeout] + stdout.decode("utf-8", "replace").splitlines()
    output = stdout.decode("utf-8", errors="replace").replace("\r\n", "\n").split("\n")
    if output and output[-1] == "":
        output.pop()
    problems = []
    if returncode < 0:
        # A Windows program cannot end this way by itself: Wine's server kills
        # threads with SIGQUIT when another process terminates this one.
        problems.append("killed by signal %d; stderr:\n%s" % (-returncode, stderr.decode("utf-8", "replace")[-2000:]))
    elif returncode != expected_exit:
        problems.append("exit code %d, expected %d (%d)" % (returncode, expected_exit, case["exit"]))
    expected = sections.get("expect")
    if expected is not None and (len(expected) != len(output) or not all(map(line_matches, expected, output))):
        problems.append("output differs:\n" + "".join(
            "%s %s\n" % ("  " if i < min(len(output), len(expected)) and line_matches(expected[i], output[i]) else "!!",
                         output[i] if i < len(output) else "<missing: %s>" % expected[i])
            for i in range(max(len(expected), len(output)))))
    missing = in_order(sections.get("expect-in-order", []), output)
    if missing is not None:
        problems.append("line not found in order: %r\noutput:\n%s" % (missing, "\n".join(output)))
    debug = [m.group(1) for m in map(DEBUG_LINE.match, stderr.decode("utf-8", "replace").splitlines()) if m]
    problems += ["unexpected line: %r" % line for line in sections.get("expect-not", [])
                 if any(line_matches(line, actual) for actual in output + debug)]
    missing = in_order(sections.get("expect-debug", []), debug)
    if missing is not None:
        problems.append("debug line not found in order: %r\ndebug output:\n%s" % (missing, "\n".join(debug)))
    failure = "check" in sections and not problems and bash("check", case, workdir, env)
    return problems + [failure] if failure else problems


def main():
    parser = argparse.ArgumentParser()
    for name in ("exe", "prefix", "wine-run", "work"):
        parser.add_argument("--" + name, required=True)
    parser.add_argument("--helpers")
    parser.add_argument("--only", help="run only cases whose name contains this")
    parser.add_argument("files", nargs="+")
    opts = parser.parse_args()
    for name in ("exe", "prefix", "wine_run", "work", "helpers"):
        if getattr(opts, name):
            setattr(opts, name, os.path.abspath(getattr(opts, name)))
    passed = failed = 0
    for path in opts.files:
        base = os.path.splitext(os.path.basename(path))[0]
        for index, case in enumerate(parse_cases(path)):
            if opts.only and opts.only not in case["name"]:
                continue
            casedir = os.path.join(opts.work, base, "%03d" % index)
            os.makedirs(os.path.dirname(casedir), exist_ok=True)
            beside = set(os.listdir(os.path.dirname(casedir))) | {os.path.basename(casedir)}
            problems = run_case(case, opts, casedir)
            strays = sorted(set(os.listdir(os.path.dirname(casedir))) - beside)
            if strays:
                problems.append("wrote outside its directory: %s" % ", ".join(strays))
            failed += bool(problems)
            passed += not problems
            print("FAIL %s: %s\n  %s" % (base, case["name"], "\n  ".join("\n".join(problems).split("\n")))
                  if problems else "ok   %s: %s" % (base, case["name"]))
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
