#!/usr/bin/env python3
"""Builds the release archive signed with a throw-away code-signing certificate
(made here with openssl, given as a PKCS#12 file with a password, as an
organisation gives its own), and checks every shipped program twice: with
`osslsigncode verify` against that certificate, and with the interpreter's own
fileIsSigned under Wine. Wine checks a signature's digest, not the trust of its
certificate, so the certificate need not be made trusted in the prefix. Also
checks SHA256SUMS beside the archive."""
import argparse
import hashlib
import os
import subprocess
import sys
import tempfile
import zipfile

from package_test import PROGRAMS, run, windows_path


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cpack", required=True)
    parser.add_argument("--config", required=True, help="the build's CPackConfig.cmake")
    parser.add_argument("--archive", required=True)
    parser.add_argument("--wine-run", required=True)
    parser.add_argument("--prefix", required=True)
    opts = parser.parse_args()
    failures = []

    with tempfile.TemporaryDirectory(prefix="upkeep-signed-") as work:
        cert, key, pfx = (os.path.join(work, name) for name in ("cert.pem", "key.pem", "sign.pfx"))
        password = "pass word; $ & ü"
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", cert,
                        "-days", "30", "-subj", "/CN=Upkeep Test Release Signer",
                        "-addext", "extendedKeyUsage=codeSigning"], check=True, capture_output=True)
        subprocess.run(["openssl", "pkcs12", "-export", "-inkey", key, "-in", cert, "-out", pfx,
                        "-passout", "pass:" + password], check=True, capture_output=True)

        out = os.path.join(work, "out")
        env = dict(os.environ, UPKEEP_SIGN_PFX=pfx, UPKEEP_SIGN_PASSWORD=password)
        env.pop("UPKEEP_SIGN_TIMESTAMP", None)
        code, stdout, stderr = run([opts.cpack, "--config", opts.config, "-B", out], env=env)
        if code != 0:
            sys.exit("signed cpack failed (%d):\n%s%s" % (code, stdout, stderr))
        for name in PROGRAMS:
            if "Upkeep: signed %s" % name not in stdout:
                failures.append("cpack did not say it signed %s:\n%s" % (name, stdout))
        if password in stdout + stderr:
            failures.append("the password appeared in cpack's output")

        archive = os.path.join(out, opts.archive)
        with open(archive, "rb") as f:
            digest = hashlib.sha256(f.read()).hexdigest()
        with open(os.path.join(out, "SHA256SUMS")) as f:
            sums = f.read()
        if sums != "%s  %s\n" % (digest, opts.archive):
            failures.append("SHA256SUMS holds %r, the archive's checksum is %s" % (sums, digest))

        unpacked = os.path.join(work, "Upkeep")
        with zipfile.ZipFile(archive) as zipped:
            zipped.extractall(unpacked)
        for name in PROGRAMS:
            code, stdout, stderr = run(["osslsigncode", "verify", "-CAfile", cert, "-in", os.path.join(unpacked, name)])
            if code != 0 or "Signature verification: ok" not in stdout:
                failures.append("osslsigncode verify %s (%d):\n%s%s" % (name, code, stdout, stderr))

        # The interpreter checks its own signature and its companions'.
        with open(os.path.join(unpacked, "signed.xml"), "w") as f:
            f.write('<script version="1.1">\n%s</script>\n' % "".join(
                '  <fileIsSigned path="%%enginedir%%%s"/>\n' % name for name in PROGRAMS))
        code, stdout, stderr = run([opts.wine_run, opts.prefix, os.path.join(unpacked, "upkeep.exe"),
                                    "/file", windows_path(os.path.join(unpacked, "signed.xml"))], cwd=work)
        answers = [line for line in stdout.split("\n") if line.startswith("fileIsSigned function end")]
        if code != 0 or answers != ["fileIsSigned function end with True."] * len(PROGRAMS):
            failures.append("fileIsSigned under Wine (%d):\n%s%s" % (code, stdout, stderr))

    if failures:
        sys.exit("\n".join(failures))
    print("%s signed: osslsigncode and fileIsSigned accept all %d programs; SHA256SUMS matches"
          % (opts.archive, len(PROGRAMS)))


if __name__ == "__main__":
    main()
