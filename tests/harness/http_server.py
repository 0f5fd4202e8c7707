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

A few paths answer as a misbehaving server would:
    /_/cut          announces 1,000,000 bytes, sends 1,000 and closes the connection
    /_/loop         302 to itself, forever
    /_/status/<n>   status n with the body "status <n>" and a line end
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

    def do_GET(self):
        if self.path == "/_/cut":
            self.answer(200, b"x" * 1000, length=1000000)
        elif self.path == "/_/loop":
            self.answer(302, b"", location="/_/loop")
        elif self.path.startswith("/_/status/"):
            code = int(self.path[len("/_/status/"):])
            self.answer(code, b"status %d\n" % code)
        else:
            super().do_GET()

    def answer(self, code, body, length=None, location=None):
        self.send_response(code)
        self.send_header("Content-Length", str(len(body) if length is None else length))
        if location:
            self.send_header("Location", location)
        self.end_headers()
        self.wfile.write(body)


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
