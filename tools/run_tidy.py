#!/usr/bin/env python3
"""Runs clang-tidy over the sources, on all processors, and remembers what has passed.

A source passes as the preprocessor leaves it, comments included, together with the configuration and the version of
clang-tidy. As long as none of these changes it isn't looked at again.
"""

import argparse
import hashlib
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
CACHE = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache") / "letterlift" / "tidy"


def preprocessed(entry: dict[str, str]) -> bytes:
    command = shlex.split(entry["command"])
    if Path(command[0]).name == "ccache":
        command = command[1:]
    output = command.index("-o")
    del command[output:output + 2]
    # -P leaves out the line markers, in which the project's path would stand.
    result = subprocess.run([*command, "-E", "-C", "-P"], cwd=entry["directory"], capture_output=True, check=False)
    if result.returncode != 0:
        sys.exit(result.stderr.decode(errors="replace"))
    return result.stdout


def key_of(entry: dict[str, str], common: bytes) -> str:
    return hashlib.sha256(common + preprocessed(entry)).hexdigest()


def check(entry: dict[str, str], build: Path, common: bytes) -> tuple[bool, bool, str]:
    """Whether it passes, whether that was known, and the complaints."""
    stamp = CACHE / key_of(entry, common)
    if stamp.exists():
        return True, True, ""
    command = ["clang-tidy", "--quiet", "-p", str(build), entry["file"]]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    if result.returncode == 0:
        stamp.touch()
    return result.returncode == 0, False, result.stdout


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=Path, help="a build folder with compile_commands.json")
    parser.add_argument("sources", type=Path, nargs="+")
    options = parser.parse_args()

    CACHE.mkdir(parents=True, exist_ok=True)
    wanted = {str(source.resolve()) for source in options.sources}
    entries = json.loads((options.build / "compile_commands.json").read_text(encoding="utf-8"))
    entries = [entry for entry in entries if entry["file"] in wanted]
    version = subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
    common = version + (ROOT / ".clang-tidy").read_bytes()

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda entry: check(entry, options.build, common), entries))
    for _, _, complaints in results:
        if complaints:
            print(complaints)
    failed = sum(not passed for passed, _, _ in results)
    known = sum(was_known for _, was_known, _ in results)
    print(f"{len(results)} sources, {known} of them known to pass, {failed} with complaints", file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
