#!/usr/bin/env python3
"""Reads the hardening of built Windows programs from their PE headers, so it
cannot regress unnoticed: ASLR with high entropy, DEP, and imports only of
libraries Windows always takes from its system folder (the others are loaded
when used, from there only). With --shipped, also no symbols or debug data.

    pe_test.py --objdump OBJDUMP [--shipped] program.exe...
"""
import argparse
import re
import subprocess
import sys

FLAGS = ["HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"]
# Windows' known DLLs among the ones the programs use: never searched for.
SYSTEM_IMPORTS = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "shlwapi.dll"}


def problems(objdump, path, shipped=False):
    headers = subprocess.run([objdump, "-p", "-f", path], capture_output=True, text=True, check=True).stdout
    found = []
    block = re.search(r"^DllCharacteristics\s+[0-9a-f]+\n((?:\t+\S.*\n)*)", headers, re.M)
    present = block.group(1).split() if block else []
    found += ["%s: no %s" % (path, flag) for flag in FLAGS if flag not in present]
    imports = {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers)}
    if imports - SYSTEM_IMPORTS:
        found.append("%s imports %s, which Windows may search for" % (path, sorted(imports - SYSTEM_IMPORTS)))
    if shipped:
        for flag in ("HAS_DEBUG", "HAS_SYMS", "HAS_LOCALS"):
            if re.search(r"flags 0x[0-9a-f]+:\n.*\b%s\b" % flag, headers):
                found.append("%s carries %s" % (path, flag))
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--shipped", action="store_true")
    parser.add_argument("programs", nargs="+")
    opts = parser.parse_args()
    found = [p for path in opts.programs for p in problems(opts.objdump, path, opts.shipped)]
    if found:
        sys.exit("\n".join(found))
    print("%d programs: %s, system imports only" % (len(opts.programs), ", ".join(FLAGS)))


if __name__ == "__main__":
    main()
