#!/usr/bin/env python3
"""Builds the release archive with the build's CPack configuration in a fresh
temporary directory, unpacks it as an administrator would, checks that it holds
exactly what a deployment needs, and runs the unpacked programs under Wine: the
version and manifest tests against the shipped (stripped) copies, and an example
script by its absolute Windows path, which the interpreter accepts only under
its own directory."""
import argparse
import os
import sys
import tempfile
import zipfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "harness"))
from script_cases import run_bounded, windows_path  # noqa: E402
from pe_test import problems as pe_problems  # noqa: E402

PROGRAMS = ["upkeep.exe", "upkeep-password.exe", "upkeep-check.exe"]
DOCUMENTS = ["README.md", "upkeep.xsd", "docs/reference.md"]
TIMEOUT = 300


def source_files(directory, prefix):
    found = {}
    for root, _, files in os.walk(directory):
        for name in files:
            path = os.path.join(root, name)
            found[prefix + os.path.relpath(path, directory).replace(os.sep, "/")] = path
    return found


def run(command, env=None, cwd=None, timeout=TIMEOUT):
    result = run_bounded(command, cwd, env, timeout)
    if result[0] is None:
        sys.exit("timed out after %d s: %s" % (timeout, " ".join(command)))
    code, stdout, stderr = result
    return code, stdout.decode("utf-8", "replace").replace("\r\n", "\n"), stderr.decode("utf-8", "replace")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cpack", required=True)
    parser.add_argument("--config", required=True, help="the build's CPackConfig.cmake")
    parser.add_argument("--archive", required=True, help="the file name the archive must have")
    parser.add_argument("--source", required=True, help="the repository, for the shipped documents")
    parser.add_argument("--wine-run", required=True)
    parser.add_argument("--prefix", required=True)
    parser.add_argument("--version-tests", required=True, help="the version resource test program")
    parser.add_argument("--objdump", required=True)
    opts = parser.parse_args()
    failures = []

    with tempfile.TemporaryDirectory(prefix="upkeep-package-") as work:
        out = os.path.join(work, "out")
        env = {k: v for k, v in os.environ.items() if not k.startswith("UPKEEP_SIGN_")}
        code, stdout, stderr = run([opts.cpack, "--config", opts.config, "-B", out], env=env)
        if code != 0:
            sys.exit("cpack failed (%d):\n%s%s" % (code, stdout, stderr))
        if "the programs are not signed" not in stdout:
            failures.append("cpack did not say that it builds unsigned:\n" + stdout)
        made = sorted(name for name in os.listdir(out) if name.endswith(".zip") or name == "SHA256SUMS")
        if made != ["SHA256SUMS", opts.archive]:
            sys.exit("expected %s, cpack made %s" % (opts.archive, made))
        archive = os.path.join(out, opts.archive)
        print("%s: %d bytes" % (opts.archive, os.path.getsize(archive)))

        # Everything at the archive's root: no top-level directory, nothing else.
        expected = {name: os.path.join(opts.source, name) for name in DOCUMENTS}
        expected.update(source_files(os.path.join(opts.source, "examples"), "examples/"))
        unpacked = os.path.join(work, "Upkeep")
        with zipfile.ZipFile(archive) as zipped:
            names = {name for name in zipped.namelist() if not name.endswith("/")}
            zipped.extractall(unpacked)
        missing = sorted((set(expected) | set(PROGRAMS)) - names)
        extra = sorted(names - set(expected) - set(PROGRAMS))
        if missing or extra:
            failures.append("archive contents: missing %s, unexpected %s" % (missing, extra))
        for name, path in sorted(expected.items()):
            if name in names:
                with open(path, "rb") as want, open(os.path.join(unpacked, name), "rb") as got:
                    if want.read() != got.read():
                        failures.append("%s differs from the repository's copy" % name)
        # Hardened, and without symbols or debug data.
        for name in PROGRAMS:
            failures += pe_problems(opts.objdump, os.path.join(unpacked, name), shipped=True)
        if failures:
            sys.exit("\n".join(failures))

        # The shipped copies keep their version resource and manifest.
        env = dict(os.environ, UPKEEP_PROGRAM_DIR=windows_path(unpacked))
        code, stdout, stderr = run([opts.wine_run, opts.prefix, opts.version_tests], env=env)
        if code != 0:
            failures.append("version tests on the unpacked programs failed (%d):\n%s%s" % (code, stdout, stderr))

        # An example, by its absolute path, as a scheduled task would start it.
        script = windows_path(os.path.join(unpacked, "examples", "hello.xml"))
        code, stdout, stderr = run([opts.wine_run, opts.prefix, os.path.join(unpacked, "upkeep.exe"),
                                    "/file", script], cwd=work)
        lines = stdout.split("\n")
        wanted = ["Trace: Hello, world! Upkeep runs from %s\\" % windows_path(unpacked),
                  "Trace: item: alpha", "Trace: item: beta", "Trace: item: gamma", "End"]
        absent = [line for line in wanted if line not in lines]
        if code != 0 or absent:
            failures.append("upkeep.exe /file %s: exit code %d, missing lines %s; output:\n%s%s"
                            % (script, code, absent, stdout, stderr))

    if failures:
        sys.exit("\n".join(failures))
    print("archive unpacked, contents checked, example ran")


if __name__ == "__main__":
    main()
