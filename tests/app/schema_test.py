#!/usr/bin/env python3
"""The schema and the reference: the committed files are what the program
describes, every example and every script shown in the documentation validates
against the schema with xmllint, and scripts with the mistakes the schema is
for do not."""
import argparse
import glob
import os
import re
import subprocess
import sys
import tempfile

WRONG = {
    "an unknown tag": '<script version="1.1"><fileExist path="a"/></script>',
    "a missing required attribute": '<script version="1.1"><fileCopySingle src="a"/></script>',
    "an empty attribute that must not be": '<script version="1.1"><dirCreate path=""/></script>',
    "a value outside a list": '<script version="1.1"><test left="1" right="2" operator="=" type="number"/></script>',
    "a handler of the other kind": '<script version="1.1"><fileExists path="a"><onerror/></fileExists></script>',
    "onerrorspec without err": '<script version="1.1"><dirCreate path="a"><onerrorspec/></dirCreate></script>',
    "a script without version": "<script><nothing/></script>",
    "an attribute no function reads": '<script version="1.1"><nothing pth="a"/></script>',
}


def xml_blocks(path):
    """The ```xml blocks of a Markdown file, each as a whole script."""
    text = open(path, encoding="utf-8").read()
    for number, block in enumerate(re.findall(r"```xml\n(.*?)```", text, re.S), 1):
        body = re.sub(r"<!--.*?-->", "", block, flags=re.S).strip()
        script = block if body.startswith("<script") else '<script version="1.1">\n' + block + "</script>\n"
        yield f"{os.path.basename(path)} block {number}", script


def validates(schema, path):
    result = subprocess.run(["xmllint", "--noout", "--schema", schema, path], capture_output=True, text=True)
    return result.returncode == 0, result.stderr.strip()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", required=True)
    parser.add_argument("--prefix", required=True)
    parser.add_argument("--check", required=True)
    opts = parser.parse_args()
    passed = failed = 0

    def outcome(ok, what, detail=""):
        nonlocal passed, failed
        passed += ok
        failed += not ok
        if not ok:
            print(f"FAILED: {what}\n{detail}")

    with tempfile.TemporaryDirectory() as work:
        subprocess.run([os.path.join(opts.source, "cmake", "describe.sh"), opts.prefix, opts.check, work], check=True)
        for name in ("upkeep.xsd", "docs/reference.md"):
            diff = subprocess.run(["diff", "-u", os.path.join(opts.source, name), os.path.join(work, name)],
                                  capture_output=True, text=True)
            outcome(diff.returncode == 0, f"{name} is not what the program describes; "
                    "run: cmake --build --preset mingw --target describe", diff.stdout[:3000])

        schema = os.path.join(opts.source, "upkeep.xsd")
        for path in sorted(glob.glob(os.path.join(opts.source, "examples", "*.xml"))):
            ok, detail = validates(schema, path)
            outcome(ok, os.path.relpath(path, opts.source), detail)
        for doc in ("README.md", "docs/reference.md"):
            for what, script in xml_blocks(os.path.join(opts.source, doc)):
                path = os.path.join(work, "block.xml")
                open(path, "w", encoding="utf-8").write(script)
                ok, detail = validates(schema, path)
                outcome(ok, what, detail + "\n" + script)
        for what, script in WRONG.items():
            path = os.path.join(work, "wrong.xml")
            open(path, "w", encoding="utf-8").write(script)
            outcome(not validates(schema, path)[0], f"the schema accepts {what}: {script}")

    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
