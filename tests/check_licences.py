#!/usr/bin/env python3
"""Compares THIRD_PARTY.md with what is linked, compiled in and bundled.

   tests/check_licences.py linux FILE    after build/release was built; FILE lists what the page bundles
   tests/check_licences.py windows       after build/windows was built
"""

import re
import subprocess
import sys
from pathlib import Path

# What every Windows has, and the host's own modules.
OF_WINDOWS = {"KERNEL32.dll", "OLEAUT32.dll", "USER32.dll", "WINHTTP.dll", "msvcrt.dll", "ole32.dll",
              "urlmon.dll", "ODBC32.dll", "ADVAPI32.dll", "SHELL32.dll"}
OF_THE_HOST = {"CobaltLib.dll", "Lumo.exe"}
PRODUCT = ("formats/", "host/", "pipeline/", "platform/", "plugin/", "readers/", "workbench/")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def listed(heading):
    """The first column of the table below a heading."""
    text = Path("THIRD_PARTY.md").read_text(encoding="utf8")
    section = text.split(f"## {heading}\n", 1)[1].split("\n## ", 1)[0]
    return set(re.findall(r"^\| ([^ |]+) \|", section, re.MULTILINE)) - {"Library"}


def packages_of(files):
    """The Debian packages that these files come from; some lie in /usr and are listed without it."""
    names = set(files) | {file.removeprefix("/usr") for file in files}
    found = subprocess.run(("dpkg", "--search", *sorted(names)), capture_output=True, text=True)
    packages = dict(reversed(line.split(": ", 1)) for line in found.stdout.splitlines())
    unknown = {file for file in files if not {file, file.removeprefix("/usr")} & packages.keys()}
    if unknown:
        sys.exit(f"No package has {', '.join(sorted(unknown))}")
    return {package.split(":", 1)[0] for package in packages.values()}


def linked_packages(*programs):
    names = {name for program in programs
             for name in re.findall(r"NEEDED +(\S+)", output("objdump", "-p", program))}
    places = dict(re.findall(r"^\t(\S+) \(libc6,x86-64.*\) => (\S+)$", output("/sbin/ldconfig", "-p"), re.MULTILINE))
    return packages_of({str(Path(places[name]).resolve()) for name in names})


def is_header_only(package):
    files = output("dpkg", "--listfiles", package).splitlines()
    return not any(re.search(r"/lib.*\.(so|a)$", file) for file in files)


def compiled_in():
    headers = set()
    is_ours = False
    for line in output("ninja", "-C", "build/release", "-t", "deps").splitlines():
        if not line.startswith(" "):
            is_ours = line.startswith(PRODUCT)
        elif is_ours and line.strip().startswith("/usr/include/"):
            headers.add(line.strip())
    packages = packages_of(headers) - {"linux-libc-dev"}  # declarations of what the kernel does
    return {package for package in packages if is_header_only(package)}


def libraries_of_the_cross_compiler():
    compiler = "x86_64-w64-mingw32-g++-posix"
    names = ("libstdc++.a", "libgcc.a", "libgcc_eh.a", "libwinpthread.a", "libmingw32.a", "libmingwex.a")
    return packages_of({str(Path(output(compiler, f"-print-file-name={name}").strip()).resolve()) for name in names})


def imported(*programs):
    return {name for program in programs
            for name in re.findall(r"DLL Name: (\S+)", output("x86_64-w64-mingw32-objdump", "-p", program))}


def differences(heading, found):
    written = listed(heading)
    return [f"{heading}: {name} is missing in THIRD_PARTY.md" for name in sorted(found - written)] + \
           [f"{heading}: {name} is in THIRD_PARTY.md, and is not used" for name in sorted(written - found)]


def check_linux(bundled):
    return differences("Used at run time on Linux", linked_packages(
        "build/release/plugin/Intake.so", "build/release/workbench/intake-workbench")) + \
        differences("Compiled in", compiled_in()) + \
        differences("In the page", set(Path(bundled).read_text(encoding="utf8").split()))


def check_windows():
    needed = imported("build/windows/plugin/Intake.dll", "build/windows/workbench/intake-workbench.exe")
    return differences("Linked into the Windows build", libraries_of_the_cross_compiler()) + \
        [f"{name} is not a part of Windows" for name in sorted(needed - OF_WINDOWS - OF_THE_HOST)]


def main():
    if sys.argv[1:2] == ["linux"] and len(sys.argv) == 3:
        found = check_linux(sys.argv[2])
    elif sys.argv[1:] == ["windows"]:
        found = check_windows()
    else:
        sys.exit(__doc__)
    for difference in found:
        print(difference, file=sys.stderr)
    sys.exit(1 if found else 0)


main()
