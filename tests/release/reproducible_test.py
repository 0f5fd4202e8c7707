#!/usr/bin/env python3
"""Builds the three programs again in a second, clean build directory (only
they, not the tests, to keep the cost down), packages both builds, and
compares the archives and the programs in them byte for byte: the PE headers
carry no link time, the archive's entries are sorted and carry the commit's
time, and nothing depends on the build directory's path."""
import argparse
import hashlib
import os
import shutil
import sys
import tempfile
import zipfile

from package_test import PROGRAMS, run

BUILD_TIMEOUT = 1800


def package(cpack, config, out):
    env = {k: v for k, v in os.environ.items() if not k.startswith("UPKEEP_SIGN_")}
    code, stdout, stderr = run([cpack, "--config", config, "-B", out], env=env)
    if code != 0:
        sys.exit("cpack --config %s failed (%d):\n%s%s" % (config, code, stdout, stderr))


def contents(archive):
    with zipfile.ZipFile(archive) as zipped:
        return {name: hashlib.sha256(zipped.read(name)).hexdigest() for name in zipped.namelist()}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cmake", required=True)
    parser.add_argument("--cpack", required=True)
    parser.add_argument("--source", required=True)
    parser.add_argument("--build", required=True, help="the tested build directory")
    parser.add_argument("--second", required=True, help="the second build directory (emptied first)")
    parser.add_argument("--archive", required=True)
    opts = parser.parse_args()

    shutil.rmtree(opts.second, ignore_errors=True)
    for command in ([opts.cmake, "--preset", "mingw", "-S", opts.source, "-B", opts.second, "-DBUILD_TESTING=OFF"],
                    [opts.cmake, "--build", opts.second, "--target"] + [p[:-4] for p in PROGRAMS]):
        code, stdout, stderr = run(command, cwd=opts.source, timeout=BUILD_TIMEOUT)
        if code != 0:
            sys.exit("%s failed (%d):\n%s%s" % (" ".join(command), code, stdout[-4000:], stderr[-4000:]))

    with tempfile.TemporaryDirectory(prefix="upkeep-reproducible-") as work:
        first, second = os.path.join(work, "first"), os.path.join(work, "second")
        package(opts.cpack, os.path.join(opts.build, "CPackConfig.cmake"), first)
        package(opts.cpack, os.path.join(opts.second, "CPackConfig.cmake"), second)
        sums = [open(os.path.join(d, "SHA256SUMS")).read() for d in (first, second)]
        if sums[0] != sums[1]:
            a, b = (contents(os.path.join(d, opts.archive)) for d in (first, second))
            differ = sorted(name for name in set(a) | set(b) if a.get(name) != b.get(name))
            sys.exit("the two builds' archives differ:\n%s%sentries that differ: %s" % (sums[0], sums[1], differ))
    shutil.rmtree(opts.second, ignore_errors=True)
    print("two builds, one archive: %s" % sums[0].strip())


if __name__ == "__main__":
    main()
