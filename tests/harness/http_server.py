#!/usr/bin/env python3
"""Runs a command while a small HTTP server on 127.0.0.1 serves a directory.

    http_server.py <directory> -- <command> [args...]

The server listens on a free loopback port and answers from a thread of this
process, so it ends when the command ends, however the command ends (failure,
timeout, a signal to this process). The command's environment carries
UPKEEP_HTTP (the base URL, no trailing slash), UPKEEP_HTTP_DIR (the served
directory) and UPKEEP_HTTP_CLOSED (a URL on a loopback port nobody listens on).
Scripts read the URLs as %UPKEEP_HTTP% and %UPKEEP_HTTP_CLOSED%. The exit code
is the command's.
"""
import functools
import http.server
import os
import socket
import subprocess
import sys
import threading


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *args):
        pass


def closed_port():
    """A loopback port that was free a moment ago and has no listener."""
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def main():
    if len(sys.argv) < 4 or sys.argv[2] != "--":
        sys.exit(__doc__)
    directory = os.path.abspath(sys.argv[1])
    os.makedirs(directory, exist_ok=True)
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0),
                                             functools.partial(QuietHandler, directory=directory))
    server.daemon_threads = True
    thread = threading.Thread(target=server.serve_forever, daemon=True)
    thread.start()
    env = dict(os.environ,
               UPKEEP_HTTP="http://127.0.0.1:%d" % server.server_address[1],
               UPKEEP_HTTP_DIR=directory,
               UPKEEP_HTTP_CLOSED="http://127.0.0.1:%d" % closed_port())
    try:
        return subprocess.call(sys.argv[3:], env=env)
    finally:
        server.shutdown()
        server.server_close()


if __name__ == "__main__":
    sys.exit(main())
