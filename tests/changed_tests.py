#!/usr/bin/env python3
"""Which tests have to run again, as ctest's option -I takes them: those whose program was built
since they passed, and all that run the built workbench where it or the plugin was.

   tests/changed_tests.py BUILD             prints the list; empty when there is none
   tests/changed_tests.py BUILD --passed    notes that they have passed
"""

import json
import os
import subprocess
import sys
from pathlib import Path

build = Path(sys.argv[1])
stamp = build / "tests_passed"
if sys.argv[2:] == ["--passed"]:
    stamp.touch()
    sys.exit()


def is_newer(file):
    return not stamp.exists() or os.stat(file).st_mtime > stamp.stat().st_mtime


def labels(test):
    return next((each["value"] for each in test.get("properties", []) if each["name"] == "LABELS"), [])


listed = subprocess.run(("ctest", "--test-dir", build, "--show-only=json-v1"),
                        check=True, capture_output=True, text=True).stdout
product = is_newer(build / "workbench/intake-workbench") or is_newer(build / "plugin/Intake.so")
numbers = [str(number) for number, test in enumerate(json.loads(listed)["tests"], 1)
           if is_newer(test["command"][0]) or product and "workbench" in labels(test)]
if numbers:
    print(",".join(["0", "0", "0"] + numbers))
