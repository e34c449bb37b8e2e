#!/usr/bin/env python3
"""Checks what may include what, and that no file has grown too big to live in."""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MAXIMUM_LINES = 600

# Folder: the folders whose headers it may include, beside its own. The longest folder that fits a file counts.
ALLOWED = {
    "libraries/core/src": [],
    "libraries/core/src/protocol": ["libraries/core/src"],
    "libraries/core/src/test": ["libraries/core/src", "libraries/core/src/protocol"],
    "libraries/core/src/error": ["libraries/core/src", "libraries/core/src/protocol", "libraries/core/src/test"],
    "letterlift/simulation": [],
    "letterlift/automation": ["letterlift/simulation"],
    "letterlift/standin": ["letterlift/automation", "letterlift/simulation"],
    "letterlift": ["letterlift/automation", "letterlift/simulation", "libraries/core/src"],
}
# Within the simulation, only these may touch the disk or know the MIME library: the model is to be used without.
STORE_FILES = {"outlookstore", "messagewriter", "simulatedoutlook"}
NOT_IN_THE_MODEL = re.compile(
    r"<(QFile|QFileInfo|QSaveFile|QDir|QTemporary\w+|QStandardPaths|QProcess|fstream|filesystem|gmime/.*)>"
    r"|outlookstore\.h|messagewriter\.h|simulatedoutlook\.h|automation/")

INCLUDE = re.compile(r'^\s*#\s*include\s+(["<][^">]+[">])', re.MULTILINE)


def tracked(pattern: str) -> list[Path]:
    command = ["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", pattern]
    listing = subprocess.run(command, cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return [Path(line) for line in listing.splitlines() if (ROOT / line).is_file()]


def folder_of(path: Path) -> str | None:
    folders = [folder for folder in ALLOWED if path.as_posix().startswith(folder + "/")]
    return max(folders, key=len) if folders else None


def resolve(include: str, source: Path, files: set[str]) -> Path | None:
    """The project's own file that an include in quotes means."""
    for base in (source.parent, Path("letterlift"), Path("libraries/core/src")):
        candidate = (base / include).as_posix()
        if candidate in files:
            return Path(candidate)
    return None


def check_includes(files: list[Path]) -> tuple[list[str], dict[str, set[str]]]:
    complaints: list[str] = []
    graph: dict[str, set[str]] = {}
    names = {path.as_posix() for path in files}
    for path in files:
        folder = folder_of(path)
        if folder is None:
            continue
        for token in INCLUDE.findall((ROOT / path).read_text(encoding="utf-8")):
            if folder == "letterlift/simulation" and path.stem not in STORE_FILES and NOT_IN_THE_MODEL.search(token):
                complaints.append(f"{path}: the model must not include {token}")
            if token.startswith("<"):
                continue
            target = resolve(token.strip('"'), path, names)
            if target is None:
                continue
            graph.setdefault(path.as_posix(), set()).add(target.as_posix())
            target_folder = folder_of(target)
            if target_folder != folder and target_folder not in ALLOWED[folder]:
                complaints.append(f"{path}: {folder} must not include {token}")
    return complaints, graph


def find_circle(graph: dict[str, set[str]]) -> list[str]:
    done: set[str] = set()

    def walk(node: str, way: list[str]) -> list[str]:
        if node in way:
            return way[way.index(node):] + [node]
        if node in done:
            return []
        for target in sorted(graph.get(node, ())):
            circle = walk(target, way + [node])
            if circle:
                return circle
        done.add(node)
        return []

    for node in sorted(graph):
        circle = walk(node, [])
        if circle:
            return circle
    return []


def main() -> int:
    files = tracked("*.h") + tracked("*.cpp")
    complaints, graph = check_includes(files)
    circle = find_circle(graph)
    if circle:
        complaints.append("Headers include each other: " + " -> ".join(circle))
    for path in files:
        lines = (ROOT / path).read_text(encoding="utf-8").count("\n")
        if lines > MAXIMUM_LINES and "data" not in path.parts:
            complaints.append(f"{path}: {lines} lines")
    print("\n".join(complaints) if complaints else f"{len(files)} files, no complaints", file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
