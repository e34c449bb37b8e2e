#!/usr/bin/env python3
"""Times whole runs of the program against the bare application, in turn, and prints the figures as JSON."""

import argparse
import json
import os
import statistics
import sys
import tempfile
import time
from pathlib import Path

MAIL = """[VEXAMAIL]
TO1=kim.sample@example.com
SUBJECT=Quarterly figures
BODY=Good morning;Please find the figures in the folder.
"""


def run_once(command: list[str], environment: dict[str, str]) -> tuple[float, float]:
    """Wall time in seconds and peak memory in MiB."""
    with open(os.devnull, "r+b") as nothing:
        redirect = [(os.POSIX_SPAWN_DUP2, nothing.fileno(), stream) for stream in (0, 1, 2)]
        start = time.perf_counter()
        process = os.posix_spawn(command[0], command, environment, file_actions=redirect)
        _, status, usage = os.wait4(process, 0)
        elapsed = time.perf_counter() - start
    if status != 0:
        sys.exit(f"{command[0]} has ended with {os.waitstatus_to_exitcode(status)}")
    return elapsed, usage.ru_maxrss / 1024


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, help="its absolute path")
    parser.add_argument("--yardstick", required=True, help="likewise")
    parser.add_argument("--rounds", type=int, required=True)
    parser.add_argument("--wine", help="the command that runs Windows programs; their paths begin with Z: then")
    options = parser.parse_args()

    # Where the program finds its dictionaries.
    os.chdir(Path(options.program).parent)
    figures: dict[str, list[float]] = {"time": [], "yardstick_time": [], "memory": [], "yardstick_memory": []}
    with tempfile.TemporaryDirectory() as folder:
        drive, runner = ("Z:", [options.wine]) if options.wine else ("", [])
        mail = Path(folder, "mail.vxm")
        mail.write_text(MAIL, encoding="utf-8")
        environment = os.environ | {"LETTERLIFT_OUTLOOK_STORE": f"{drive}{folder}/store"}
        for turn in range(options.rounds + 1):
            elapsed, memory = run_once([*runner, options.program, f"{drive}{mail}"], environment)
            bare_elapsed, bare_memory = run_once([*runner, options.yardstick], environment)
            if turn == 0:
                continue  # the first of each fills the system's caches
            figures["time"].append(elapsed)
            figures["yardstick_time"].append(bare_elapsed)
            figures["memory"].append(memory)
            figures["yardstick_memory"].append(bare_memory)

    json.dump({name: statistics.median(values) for name, values in figures.items()}
              | {"rounds": options.rounds}, sys.stdout)


if __name__ == "__main__":
    main()
