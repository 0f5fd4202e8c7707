#!/usr/bin/env python3
"""Runs script cases against upkeep.exe under Wine.

A cases file holds any number of cases:

    === case: what this case shows
    args: /file script.xml /var name value     (default: /file script.xml)
    exit: -4                                    (default: 0; compared as the shell sees it)
    --- script.xml                              (any other name: a file written before the run)
    <script version="1.1">...</script>
    --- setup                                   (bash, run in the case directory before the run)
    --- expect                                  (the whole standard output, line by line)
    --- expect-in-order                         (lines that must appear in this order)
    --- expect-not                              (lines that must not appear)
    --- expect-debug                            (debugger output lines, in order, under /debug)
    --- check                                   (bash, run after; must exit 0)

An expected line starting with "~ " is a regular expression for the whole line;
"<empty>" stands for an empty line. In args, {exedir} is the Windows path of
the interpreter's directory and {casedir} that of the case's own directory.
Bash sections get `win` (runs a Windows program in the test prefix) and
$UPKEEP (the interpreter's Windows-side path is its Linux path).
"""
import argparse
import os
import re
import shlex
import shutil
import subprocess
import sys

SECTION_KINDS = {"expect", "expect-in-order", "expect-not", "expect-debug", "setup", "check"}
DEBUG_LINE = re.compile(r'^[0-9a-f]*:warn:[a-z]*:OutputDebugStringA "(.*?)"(\.\.\.)?$')


def parse_cases(path):
    cases, case, section = [], None, None
    for raw in open(path, encoding="utf-8").read().split("\n"):
        if raw.startswith("=== case:"):
            case = {"name": raw[9:].strip(), "args": "/file script.xml", "exit": 0, "files": {}, "sections": {}}
            cases.append(case)
            section = None
        elif case is None or (raw.startswith("#") and section is None):
            continue
        elif raw.startswith("--- "):
            section = raw[4:].strip()
            target = case["sections"] if section in SECTION_KINDS else case["files"]
            target[section] = []
        elif section is None:
            if raw.startswith("args:"):
                case["args"] = raw[5:].strip()
            elif raw.startswith("exit:"):
                case["exit"] = int(raw[5:].strip())
            elif raw.startswith("timeout:"):
                case["timeout"] = int(raw[8:].strip())
        else:
            target = case["sections"] if section in SECTION_KINDS else case["files"]
            target[section].append(raw)
    for c in cases:  # a section ends before the blank lines that separate cases
        for group in (c["sections"], c["files"]):
            for key, lines in group.items():
                while lines and lines[-1] == "":
                    lines.pop()
    return cases


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


def bash(script, cwd, env):
    prelude = 'win() { "$WINE_RUN" "$WINE_PREFIX" "$@"; }\nset -e\n'
    return subprocess.run(["bash", "-c", prelude + script], cwd=cwd, env=env,
                          capture_output=True, text=True, errors="replace", timeout=300)


def run_case(case, opts, workdir):
    shutil.rmtree(workdir, ignore_errors=True)
    os.makedirs(workdir)
    for name, lines in case["files"].items():
        with open(os.path.join(workdir, name), "w", encoding="utf-8", newline="\n") as f:
            f.write("\n".join(lines) + "\n")
    env = dict(os.environ, WINE_RUN=opts.wine_run, WINE_PREFIX=opts.prefix, UPKEEP=opts.exe,
               HELPERS=opts.helpers or "", LC_ALL="C.UTF-8")
    sections = case["sections"]
    if "setup" in sections:
        result = bash("\n".join(sections["setup"]), workdir, env)
        if result.returncode != 0:
            return ["setup failed:\n" + result.stdout + result.stderr]
    if "expect-debug" in sections:
        env["WINEDEBUG"] = "-all,warn+seh,warn+debugstr"
    arg_text = case["args"].replace("{exedir}", windows_path(os.path.dirname(opts.exe)))
    arg_text = arg_text.replace("{casedir}", windows_path(workdir))
    lexer = shlex.shlex(arg_text, posix=True)
    lexer.whitespace_split, lexer.escape = True, ""  # backslashes are Windows paths
    args = list(lexer)
    try:
        run = subprocess.run([opts.wine_run, opts.prefix, opts.exe] + args, cwd=workdir, env=env,
                             capture_output=True, timeout=case.get("timeout", 120))
    except subprocess.TimeoutExpired:
        return ["timed out"]
    output = run.stdout.decode("utf-8", errors="replace").replace("\r\n", "\n").split("\n")
    if output and output[-1] == "":
        output.pop()
    problems = []
    expected_exit = case["exit"] & 0xFF
    if expected_exit == 0 and case["exit"] != 0:
        expected_exit = 1  # Wine reports a code whose low byte is 0 as 1
    if run.returncode != expected_exit:
        problems.append("exit code %d, expected %d (%d)" % (run.returncode, expected_exit, case["exit"]))
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
    for line in sections.get("expect-not", []):
        if any(line_matches(line, actual) for actual in output):
            problems.append("unexpected line: %r" % line)
    if "expect-debug" in sections:
        debug = [m.group(1) for m in map(DEBUG_LINE.match, run.stderr.decode("utf-8", "replace").splitlines()) if m]
        missing = in_order(sections["expect-debug"], debug)
        if missing is not None:
            problems.append("debug line not found in order: %r\ndebug output:\n%s" % (missing, "\n".join(debug)))
    if "check" in sections and not problems:
        result = bash("\n".join(sections["check"]), workdir, env)
        if result.returncode != 0:
            problems.append("check failed:\n" + result.stdout + result.stderr)
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
            problems = run_case(case, opts, os.path.join(opts.work, base, "%03d" % index))
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
