#!/usr/bin/env python3
"""Runs a program of GoogleTest under Wine: tests/under_wine.py PROGRAM.exe [ARGUMENT...]

Wine starts processes of its own that inherit the program's descriptors and outlive it, so it is given
a file instead of the caller's pipes, whose end would not come. A program that has printed nothing for
a minute was hung by Wine as it started; it is started once more, with a note. Every other hang is a
failure.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

WINE = pathlib.Path(__file__).resolve().parent.parent / "scripts/wine"
SECONDS_TO_START = 60
SECONDS = 500


def main():
    with tempfile.TemporaryFile() as output:
        ending = run(sys.argv[1:], output)
        output.seek(0)
        text = output.read()
    sys.stdout.buffer.write(text)
    # The status of a program that crashes may be 0.
    passed = ending == 0 and b"[  PASSED  ]" in text
    if not passed:
        print(f"{sys.argv[1]} failed: {ending}")
    return 0 if passed else 1


def run(arguments, output):
    """The exit status, or what went wrong."""
    program = start(arguments, output)
    if not ends(program, SECONDS_TO_START) and os.fstat(output.fileno()).st_size == 0:
        kill(program)
        print("Wine hung as it started the program; it is started again", flush=True)
        program = start(arguments, output)
    if ends(program, SECONDS):
        return program.returncode
    kill(program)
    return f"no end within {SECONDS} seconds"


def start(arguments, output):
    return subprocess.Popen([WINE, *arguments], stdin=subprocess.DEVNULL, stdout=output,
                            stderr=subprocess.STDOUT)


def ends(program, seconds):
    try:
        program.wait(seconds)
        return True
    except subprocess.TimeoutExpired:
        return False


def kill(program):
    program.kill()
    program.wait()


if __name__ == "__main__":
    sys.exit(main())
