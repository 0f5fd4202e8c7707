#!/usr/bin/env python3
"""Runs script cases against upkeep.exe under Wine.

A cases file holds any number of cases:

    === case: what this case shows
    args: /file script.xml /var name value     (default: /file script.xml)
    exit: -4                                    (default: 0; compared as the shell sees it)
    timeout: 300                                (default: 120; seconds each for setup, run and check)
    program: prog/upkeep.exe                    (run this copy of the interpreter, which the setup
                                                 puts in the case directory; default: the built one)
    script: <trace value="hi"/>                 (script.xml of one line: the script element
                                                 around the text)
    --- script.xml                              (a name with a dot or a slash: a file written
    <script version="1.1">...</script>           before the run, relative to the case directory)
    --- script                                  (script.xml, its lines written between
    <trace value="..."/>                         <script version="1.1"> and </script>)
    --- setup                                   (bash, run in the case directory before the run)
    --- expect                                  (the whole standard output, line by line)
    --- expect-in-order                         (lines that must appear in this order)
    --- expect-not                              (lines that must not appear, also among
                                                 the debugger output lines under /debug)
    --- expect-debug                            (debugger output lines, in order, under /debug)
    --- check                                   (bash, run after; must exit 0)
    --- teardown                                (bash, run last, whatever happened before:
                                                 removes what the case made outside its
                                                 directory, such as a service)

A block headed "=== every case" holds header lines and sections that every
later case of the file has unless it has its own (a shared teardown, say).

A block headed "=== table: what the rows show" is one case per row: its
header lines and sections are every row's, and each row ("| " then cells
separated by " | ") fills the columns its "columns:" line names, of exit,
args, script (as the script: line), line (the one line the output must
have, as expect-in-order) and file names (a file of that one line). A script,
args or file cell may itself hold " | ".

An expected line starting with "~ " is a regular expression for the whole line;
"<empty>" stands for an empty line. In args, {exedir} is the Windows path of
the interpreter's directory (the one that runs) and {casedir} that of the
case's own directory, and {caserel} the case's directory relative to the work
directory, with forward slashes (for URLs of a server that serves the latter);
{http} is that server's base URL and {http_closed} one nobody listens on
(UPKEEP_HTTP and UPKEEP_HTTP_CLOSED, see tests/harness/http_server.py).
Bash sections get `win` (runs a Windows program in the test prefix),
`await FILE` (waits up to 10 s for FILE to appear, else fails), `hold [FILE
[none|rw|delete|read]]` (starts the helper that keeps FILE open, or just runs, and
waits until it is ready), `release` (tells it to stop and waits until it has),
`remove_service NAME...` (stops and deletes services, waiting up to 10 s until
each is gone), $HELPERS (the helper programs' directory) and $UPKEEP (the
interpreter's Windows-side path is its Linux path); they first source cases.sh
from the cases file's directory when there is one (a family's own helpers).

Any other section name or header line refuses its case, as does a file name
that is absolute or contains "..": a case keeps everything it writes inside its
own directory, and a case that leaves something beside it fails. A setup, run
or check that outlives its timeout is stopped, with every process it started,
and fails its case; the next case runs as usual.
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
        if raw.startswith("=== case:") or raw.startswith("=== every case") or raw.startswith("=== table:"):
            case = {"name": raw[raw.index(":") + 1:].strip() if ":" in raw else "", "args": "/file script.xml",
                    "exit": 0, "files": {}, "sections": {}, "refused": [],
                    "dir": os.path.dirname(os.path.abspath(path))}
            if every:
                case.update({key: every[key] for key in ("args", "exit", "timeout", "program") if key in every})
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
            target = case["sections"] if section in SECTION_KINDS else case["files"]
            target[section] = []
        elif section is None:
            if raw.startswith("args:"):
                case["args"] = raw[5:].strip()
            elif raw.startswith("exit:"):
                case["exit"] = int(raw[5:].strip())
            elif raw.startswith("timeout:"):
                case["timeout"] = int(raw[8:].strip())
            elif raw.startswith("script:"):
                case["files"]["script.xml"] = [one_line_script(raw[7:].strip())]
            elif "rows" in case and raw.startswith("columns:"):
                case["columns"] = [name.strip() for name in raw[8:].split("|")]
            elif "rows" in case and raw.startswith("| "):
                case["rows"].append(raw[2:])
            elif raw.startswith("program:"):
                case["program"] = raw[8:].strip()
                problem = file_name_problem(case["program"])
                if problem:
                    case["refused"].append(problem)
            elif raw.strip():
                case["refused"].append("unknown line before the first section: %r" % raw)
        else:
            target = case["sections"] if section in SECTION_KINDS else case["files"]
            target[section].append(raw)
    for c in cases + ([every] if every else []):  # a section ends before the blank lines that separate cases
        for group in (c["sections"], c["files"]):
            for key, lines in group.items():
                while lines and lines[-1] == "":
                    lines.pop()
        if c.get("wrapped"):
            c["files"]["script.xml"] = ['<script version="1.1">'] + c["files"]["script.xml"] + ["</script>"]
    if every:
        for c in cases:
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
            yield case
            continue
        for name, cell in zip(columns, cells):
            if name == "exit":
                case["exit"] = int(cell)
            elif name == "args":
                case["args"] = cell
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
    """Runs `command` in a session of its own; (returncode, stdout, stderr) as
    bytes, or None when it outlived `timeout`, after ending all it started."""
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
            process.communicate(timeout=10)
        except subprocess.TimeoutExpired:
            pass  # something escaped the session and holds the pipes: give up on its output
        return None


def bash(kind, script, cwd, env, timeout):
    """None when the section passed, else why it failed."""
    result = run_bounded(["bash", "-c", BASH_PRELUDE + script], cwd, env, timeout)
    if result is None:
        return "%s timed out after %d s" % (kind, timeout)
    returncode, stdout, stderr = result
    if returncode == 0:
        return None
    return "%s failed:\n%s%s" % (kind, stdout.decode("utf-8", "replace"), stderr.decode("utf-8", "replace"))


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
    if "teardown" in case["sections"]:
        failure = bash("teardown", "\n".join(case["sections"]["teardown"]), workdir, env,
                       case.get("timeout", DEFAULT_TIMEOUT))
        if failure:
            problems.append(failure)
    return problems


def run_steps(case, opts, workdir, env):
    sections = case["sections"]
    timeout = case.get("timeout", DEFAULT_TIMEOUT)
    if "setup" in sections:
        failure = bash("setup", "\n".join(sections["setup"]), workdir, env, timeout)
        if failure:
            return [failure]
    if "expect-debug" in sections:
        env["WINEDEBUG"] = "-all,warn+seh,warn+debugstr"
    exe = os.path.join(workdir, case["program"]) if "program" in case else opts.exe
    arg_text = case["args"].replace("{exedir}", windows_path(os.path.dirname(exe)))
    arg_text = arg_text.replace("{casedir}", windows_path(workdir))
    arg_text = arg_text.replace("{caserel}", os.path.relpath(workdir, opts.work).replace(os.sep, "/"))
    for key, name in (("{http}", "UPKEEP_HTTP"), ("{http_closed}", "UPKEEP_HTTP_CLOSED")):
        arg_text = arg_text.replace(key, os.environ.get(name, key))
    lexer = shlex.shlex(arg_text, posix=True)
    lexer.whitespace_split, lexer.escape = True, ""  # backslashes are Windows paths
    args = list(lexer)
    run = run_bounded([opts.wine_run, opts.prefix, exe] + args, workdir, env, timeout)
    if run is None:
        return ["timed out after %d s" % timeout]
    returncode, stdout, stderr = run
    output = stdout.decode("utf-8", errors="replace").replace("\r\n", "\n").split("\n")
    if output and output[-1] == "":
        output.pop()
    problems = []
    expected_exit = case["exit"] & 0xFF
    if expected_exit == 0 and case["exit"] != 0:
        expected_exit = 1  # Wine reports a code whose low byte is 0 as 1
    if returncode < 0:
        # A Windows program cannot end this way by itself: Wine's server kills
        # threads with SIGQUIT when another process terminates this one.
        problems.append("killed by signal %d; stderr:\n%s" % (-returncode, stderr.decode("utf-8", "replace")[-2000:]))
    elif returncode != expected_exit:
        problems.append("exit code %d, expected %d (%d)" % (returncode, expected_exit, case["exit"]))
    if "expect" in sections:
        expected = sections["expect"]
        if len(expected) != len(output) or not all(map(line_matches, expected, output)):
            problems.append("output differs:\n" + "".join(
                "%s %s\n" % ("  " if i < len(output) and i < len(expected) and line_matches(expected[i], output[i]) else "!!",
                             output[i] if i < len(output) else "<missing: %s>" % expected[i])
                for i in range(max(len(expected), len(output)))))
    if "expect-in-order" in sections:
        missing = in_order(sections["expect-in-order"], output)
        if missing is not None:
            problems.append("line not found in order: %r\noutput:\n%s" % (missing, "\n".join(output)))
    debug = [m.group(1) for m in map(DEBUG_LINE.match, stderr.decode("utf-8", "replace").splitlines()) if m]
    for line in sections.get("expect-not", []):
        if any(line_matches(line, actual) for actual in output + debug):
            problems.append("unexpected line: %r" % line)
    if "expect-debug" in sections:
        missing = in_order(sections["expect-debug"], debug)
        if missing is not None:
            problems.append("debug line not found in order: %r\ndebug output:\n%s" % (missing, "\n".join(debug)))
    if "check" in sections and not problems:
        failure = bash("check", "\n".join(sections["check"]), workdir, env, timeout)
        if failure:
            problems.append(failure)
    return problems


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--exe", required=True)
    parser.add_argument("--prefix", required=True)
    parser.add_argument("--wine-run", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--helpers")
    parser.add_argument("--only", help="run only cases whose name contains this")
    parser.add_argument("files", nargs="+")
    opts = parser.parse_args()
    for name in ("exe", "prefix", "wine_run", "work"):
        setattr(opts, name, os.path.abspath(getattr(opts, name)))
    if opts.helpers:
        opts.helpers = os.path.abspath(opts.helpers)
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
            if problems:
                failed += 1
                print("FAIL %s: %s\n  %s" % (base, case["name"], "\n  ".join("\n".join(problems).split("\n"))))
            else:
                passed += 1
                print("ok   %s: %s" % (base, case["name"]))
    print("%d passed, %d failed" % (passed, failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
