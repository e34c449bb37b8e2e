#!/usr/bin/python3
"""Runs one acceptance case against a build of the program; README.md tells how cases are written.

Exit status 0 if all is as the case expects it, 77 if the case is for another platform, otherwise 1, with a diff for each
thing that isn't.
"""

from __future__ import annotations

import argparse
import shutil
import sys
import tempfile
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

from runner.case import Case, CaseError, CaseSkipped, load_case
from runner.display import Display, DisplayError, open_display
from runner.observation import (
    DICTIONARY_FOLDER,
    Observation,
    Places,
    differences,
    observe,
    snapshot,
    write_expectations,
)
from runner.platforms import PLATFORMS, PlatformError
from runner.program import RunError, Workplace, run_program
from runner.steps import give_rights_back

SKIPPED = 77


def read_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True, help="the program to run")
    parser.add_argument("--plugins", type=Path, required=True, help='the folder that holds "generic/"')
    parser.add_argument("--case", type=Path, required=True, help="the directory of the case")
    parser.add_argument("--platform", choices=PLATFORMS, default="linux", help="what runs the program")
    parser.add_argument("--keep", type=Path, help="leave the run's directory below this one")
    parser.add_argument("--screenshot-dir", type=Path, help="save a picture of each box here")
    parser.add_argument("--time-limit", type=float, default=60, help="seconds that the program may take")
    parser.add_argument("--update", action="store_true", help="write the expectations anew; read the diff")
    return parser.parse_args()


@contextmanager
def workplace_for(case: Case, program: Path, keep: Path | None) -> Iterator[Workplace]:
    if keep:
        keep.mkdir(parents=True, exist_ok=True)
    # No link in the name: the program may write paths with all links resolved.
    base = Path(tempfile.mkdtemp(prefix=f"letterlift-{case.name}-", dir=keep)).resolve()
    try:
        workplace = Workplace(base)
        fill(workplace, case, program)
        yield workplace
    finally:
        give_rights_back(base)
        if keep:
            print(f"The run's directory is {base}")
        else:
            shutil.rmtree(base)


def fill(workplace: Workplace, case: Case, program: Path) -> None:
    if case.input:
        shutil.copytree(case.input, workplace.directory)
    else:
        workplace.directory.mkdir()
    workplace.home.mkdir(mode=0o700)
    if case.scenario:
        shutil.copyfile(case.scenario, workplace.scenario)
    if case.dictionaries:
        # Copies, which a case may spoil.
        shutil.copytree(program.parent / DICTIONARY_FOLDER, workplace.directory / DICTIONARY_FOLDER)


def run_case(case: Case, options: argparse.Namespace, display: Display) -> Observation:
    program = options.program.resolve()
    platform = PLATFORMS[options.platform](display.name)

    def on_box(number: int) -> None:
        if options.screenshot_dir:
            display.save_screenshot(options.screenshot_dir / f"{case.name}-{number}.png")

    with workplace_for(case, program, options.keep) as workplace:
        for step in case.setup:
            if not step.takes_rights:
                step.apply(workplace.directory)
        before = snapshot(workplace.directory)
        for step in case.setup:
            if step.takes_rights:
                step.apply(workplace.directory)
        run = run_program(program, options.plugins.resolve(), case, workplace, platform, options.time_limit, on_box)
        give_rights_back(workplace.directory)
        return observe(run, case, workplace, before, Places(workplace, program, platform), platform)


def main() -> int:
    options = read_arguments()
    try:
        case = load_case(options.case.resolve(), options.platform)
        with open_display() as display:
            seen = run_case(case, options, display)
    except CaseSkipped as reason:
        print(reason)
        return SKIPPED
    except (CaseError, RunError, DisplayError, PlatformError) as error:
        print(error)
        return 1
    if options.update:
        write_expectations(case, seen)
        for fault in seen.faults:
            print(fault)
        return 1 if seen.faults else 0
    found = differences(case, seen)
    for difference in found:
        print(difference)
    print(f"{case.name}: {'not as expected' if found else 'as expected'}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
