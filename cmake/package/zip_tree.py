#!/usr/bin/env python3
"""Writes a directory tree as a zip archive that depends on nothing but the
files' contents: entries in sorted order, every time set to one given moment,
permissions only rw-r--r-- or, for executables, rwxr-xr-x, and no extra fields.

    zip_tree.py DIRECTORY ARCHIVE EPOCH_SECONDS
"""
import os
import sys
import time
import zipfile


def main():
    root, archive, epoch = sys.argv[1], sys.argv[2], int(sys.argv[3])
    # Zip times are local times from 1980 on, without a zone: written as UTC.
    moment = time.gmtime(max(epoch, 315532800))[:6]
    names = []
    for directory, subdirectories, files in os.walk(root):
        subdirectories.sort()
        names += [os.path.relpath(os.path.join(directory, f), root).replace(os.sep, "/") for f in files]
    with zipfile.ZipFile(archive + ".tmp", "w") as out:
        for name in sorted(names):
            path = os.path.join(root, name)
            entry = zipfile.ZipInfo(name, moment)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3  # Unix, so the permissions below are read
            entry.external_attr = (0o100755 if os.stat(path).st_mode & 0o111 else 0o100644) << 16
            with open(path, "rb") as f:
                out.writestr(entry, f.read(), compresslevel=9)
    os.replace(archive + ".tmp", archive)


if __name__ == "__main__":
    main()
