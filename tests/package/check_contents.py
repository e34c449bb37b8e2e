#!/usr/bin/env python3
"""Checks that the package has all that its program needs, and no library that nothing needs.

Exit status 0 if so, otherwise 1, with a line for each complaint.
"""

from __future__ import annotations

import argparse
import re
import sys
import zipfile
from pathlib import Path, PurePosixPath

from imports import Image, ImageError

PROGRAM = "letterlift.exe"
DICTIONARIES = {"data/mng.dat.0", "data/msg.dat.0"}
REQUIRED = {PROGRAM, "platforms/qwindows.dll", "data/README.txt", "licences/Letterlift.txt", *DICTIONARIES}
REQUIRED_FOLDERS = {"styles", "licences"}
PLUGIN_FOLDERS = {"platforms", "styles"}
FOLDERS = PLUGIN_FOLDERS | {"data", "licences"}

# What every Windows 10 has. A name that isn't here is missing from the package, or it is to be looked up in Microsoft's
# documentation and added.
WINDOWS_LIBRARIES = {
    "advapi32.dll", "authz.dll", "bcrypt.dll", "comctl32.dll", "comdlg32.dll", "crypt32.dll", "d2d1.dll", "d3d11.dll",
    "d3d12.dll", "d3d9.dll", "dnsapi.dll", "dwmapi.dll", "dwrite.dll", "dxgi.dll", "gdi32.dll", "imm32.dll",
    "iphlpapi.dll", "kernel32.dll", "mpr.dll", "msvcrt.dll", "netapi32.dll", "ntdll.dll", "ole32.dll", "oleaut32.dll",
    "opengl32.dll", "propsys.dll", "rpcrt4.dll", "secur32.dll", "setupapi.dll", "shcore.dll", "shell32.dll",
    "shlwapi.dll", "ucrtbase.dll", "uiautomationcore.dll", "user32.dll", "userenv.dll", "uxtheme.dll", "version.dll",
    "winmm.dll", "winspool.drv", "ws2_32.dll", "wtsapi32.dll",
}  # fmt: skip
WINDOWS_FAMILIES = re.compile(r"(api|ext)-ms-win-.*\.dll")
# Visual C++'s libraries come as a whole, as Microsoft hands them out.
WHOLE_FAMILIES = re.compile(r"(msvcp|vcruntime|concrt|vccorlib)\d+.*\.dll")


def is_of_windows(library: str) -> bool:
    return library in WINDOWS_LIBRARIES or WINDOWS_FAMILIES.fullmatch(library) is not None


def read_package(path: Path) -> tuple[dict[str, bytes], list[str]]:
    """The files by their paths below the package's one folder, and complaints about what isn't there."""
    files: dict[str, bytes] = {}
    complaints = []
    with zipfile.ZipFile(path) as package:
        for entry in package.infolist():
            parts = PurePosixPath(entry.filename).parts
            if parts[0] != path.stem:
                complaints.append(f"{entry.filename} lies outside the folder {path.stem}")
            elif not entry.is_dir():
                files["/".join(parts[1:])] = package.read(entry)
    return files, complaints


def check_files(files: dict[str, bytes]) -> list[str]:
    complaints = [f"There is no {name}" for name in sorted(REQUIRED - files.keys())]
    for folder in sorted(REQUIRED_FOLDERS):
        if not any(name.startswith(folder + "/") for name in files):
            complaints.append(f"There is nothing in {folder}")
    for name, content in sorted(files.items()):
        folder, separator, _ = name.partition("/")
        if not content:
            complaints.append(f"{name} is empty")
        known = folder in FOLDERS if separator else name == PROGRAM or name.endswith(".dll")
        if not known:
            complaints.append(f"{name} has no place in the package")
    return complaints


def check_program(files: dict[str, bytes]) -> list[str]:
    """A box is all that it shows. Whatever else is wrong with the file, check_libraries complains about."""
    try:
        opens_console = PROGRAM in files and Image(files[PROGRAM]).opens_console()
    except ImageError:
        return []
    return [f"{PROGRAM} opens a console"] if opens_console else []


def check_libraries(files: dict[str, bytes]) -> list[str]:
    """Walks from the program and the plugins to all that they import."""
    beside_program = {name.lower(): name for name in files if "/" not in name and name.endswith(".dll")}
    starts = [name for name in files if name == PROGRAM or name.split("/")[0] in PLUGIN_FOLDERS]
    complaints = []
    seen: set[str] = set()
    waiting = sorted(starts)
    while waiting:
        name = waiting.pop()
        if name in seen:
            continue
        seen.add(name)
        try:
            needed = Image(files[name]).libraries()
        except ImageError as error:
            complaints.append(f"{name}: {error}")
            continue
        for library in sorted(needed):
            if library in beside_program:
                waiting.append(beside_program[library])
            elif not is_of_windows(library):
                complaints.append(f"{name} needs {library}, which isn't in the package")
    for library, name in sorted(beside_program.items()):
        if name not in seen and not WHOLE_FAMILIES.fullmatch(library):
            complaints.append(f"Nothing needs {name}")
    return complaints


def check_package(path: Path) -> list[str]:
    files, complaints = read_package(path)
    return complaints + check_files(files) + check_program(files) + check_libraries(files)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("package", type=Path)
    complaints = check_package(parser.parse_args().package)
    for complaint in complaints:
        print(complaint, file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
