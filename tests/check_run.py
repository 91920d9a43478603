#!/usr/bin/env python3
"""Runs ./run on a terminal of its own, as on a desktop and as in continuous integration.

    tests/check_run.py
"""

import os
import pathlib
import pty
import re
import sys
import urllib.request

ROOT = pathlib.Path(__file__).resolve().parent.parent
ADDRESS = re.compile(rb"^(http://127\.0\.0\.1:\d+/)#t=[0-9a-f]{64}\r$", re.M)
INTERRUPT = b"\x03"


class Run:
    """./run on a terminal."""

    def __init__(self, **more):
        keep = {name: value for name, value in os.environ.items()
                if name not in ("CI", "DISPLAY", "WAYLAND_DISPLAY")}
        self.printed = b""
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(ROOT)
            os.execve("./run", ["./run"], {**keep, **more})

    def read(self):
        """False at the end."""
        try:
            text = os.read(self.terminal, 4096)
        except OSError:  # nobody holds the other side any more
            return False
        self.printed += text
        return bool(text)

    def address(self):
        """What is served; None where ./run ended without it."""
        while not (found := ADDRESS.search(self.printed)):
            if not self.read():
                return None
        return found[1].decode()

    def end(self):
        """The exit status."""
        while self.read():
            pass
        return os.waitstatus_to_exitcode(os.waitpid(self.process, 0)[1])


def require(holds, what, run):
    if not holds:
        sys.exit(f"{run.printed.decode(errors='replace')}\ncheck_run: {what}")


def is_answered(address):
    try:
        with urllib.request.urlopen(address, timeout=20) as answer:
            return answer.status == 200
    except OSError:
        return False


def check_desktop():
    run = Run(DISPLAY=":0")
    page = run.address()
    require(page, "no page is served on a desktop", run)
    require(is_answered(page), "the page is not there", run)
    weather = "http://127.0.0.1:18391/weather.xml"
    require(is_answered(weather), "the page outlives the server of a sample", run)
    os.write(run.terminal, INTERRUPT)
    require(run.end() == 0, "Ctrl-C is not taken as the end", run)
    require(not is_answered(page), "the page outlives ./run", run)
    require(not is_answered(weather), "the server of a sample outlives ./run", run)


def check_without(**environment):
    run = Run(**environment)
    require(run.address() is None, f"a page is served with {environment}", run)
    require(run.end() == 0, "a sample failed", run)


if __name__ == "__main__":
    check_desktop()
    check_without()
    check_without(DISPLAY=":0", CI="true")
    print("./run serves a page on a desktop, and nowhere else.")
