#!/usr/bin/env python3
"""Starts the packaged program where there is nothing but Windows: in an empty folder and a fresh Wine prefix.

Exit status 0 if it behaves as it should, otherwise 1, with a line for each complaint. The program first has to say that
there is no Outlook, and then, if there is a stand-in, to hand a mail over to it.
"""

from __future__ import annotations

import argparse
import email
import email.policy
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile
from dataclasses import dataclass
from pathlib import Path

from wine import Wine, fresh_wine, windows_path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "acceptance"))
from runner.display import Display, open_display  # noqa: E402

RUN_TIME_LIMIT = 60
# What Wine tells of each library that it loads; "native" are those that aren't Wine's own.
LOADED = re.compile(r'Loaded L"([^"]+)" at [0-9A-Fa-f]+: native')


@dataclass
class Run:
    status: int
    boxes: int
    output: str


class Program:
    def __init__(self, wine: Wine, display: Display, program: Path) -> None:
        self._wine = wine
        self._display = display
        self._program = program

    def run(self, *arguments: str, **environment: str) -> Run:
        """Runs the program to its end, and presses Return as often as it shows a box."""
        windows: set[str] = set()
        with (
            tempfile.TemporaryFile() as output,
            # In its own folder, where its dictionaries are.
            self._wine.start(
                output.fileno(), str(self._program), *arguments, folder=self._program.parent, **environment
            ) as process,
        ):
            try:
                end = time.monotonic() + RUN_TIME_LIMIT
                while process.poll() is None and time.monotonic() < end:
                    windows.update(self._press_return())
                    time.sleep(0.3)
            finally:
                process.kill()
            status = process.wait()
            output.seek(0)
            return Run(status, len(windows), output.read().decode("utf-8", "replace"))

    def _press_return(self) -> list[str]:
        windows = self._xdotool("search", "--onlyvisible", "--class", "letterlift.exe").split()
        for window in windows:
            self._xdotool("windowfocus", window, "key", "Return")
        return windows

    def _xdotool(self, *arguments: str) -> str:
        # It fails when there is no such window, or no longer.
        result = subprocess.run(
            ["xdotool", *arguments],
            env=os.environ | {"DISPLAY": self._display.name},
            capture_output=True,
            text=True,
            check=False,
            timeout=RUN_TIME_LIMIT,
        )
        return result.stdout


class Checks:
    def __init__(self) -> None:
        self.complaints: list[str] = []

    def equal(self, what: str, actual: object, expected: object) -> None:
        if actual != expected:
            self.complaints.append(f"{what}: {actual!r} instead of {expected!r}")

    def contains(self, what: str, text: str, part: str) -> None:
        if part not in text:
            self.complaints.append(f"{what}: there is no {part!r} in {text!r}")


def check_help(program: Program, folder: Path, checks: Checks) -> None:
    """The box makes the program load all that it ever needs: the package's libraries, all of them and no others."""
    run = program.run("--help", WINEDEBUG="-all,+loaddll")
    checks.equal("Status of --help", run.status, 0)
    checks.equal("Boxes of --help", run.boxes, 1)
    loaded = {path.replace("\\\\", "\\") for path in LOADED.findall(run.output)}
    packaged = {windows_path(path) for path in folder.rglob("*") if path.suffix in {".dll", ".exe"}}
    checks.equal("Libraries loaded from elsewhere", sorted(loaded - packaged), [])
    checks.equal("Libraries that were not loaded", sorted(packaged - loaded), [])


def check_without_argument(program: Program, checks: Checks) -> None:
    run = program.run()
    checks.equal("Status without an argument", run.status, 1)
    checks.equal("Boxes without an argument", run.boxes, 1)


def check_without_outlook(program: Program, mail: Path, checks: Checks) -> None:
    run = program.run(windows_path(mail))
    # Of -1 only the last byte is left here.
    checks.equal("Status without Outlook", run.status, 0xFF)
    checks.equal("Boxes without Outlook", run.boxes, 1)
    log = run_log(mail)
    checks.contains("Run log", log, "Outlook.Application could not be instantiated")
    checks.contains("Run log", log, "Reading parameter from file " + windows_path(mail))


def check_hand_over(program: Program, mail: Path, store: Path, checks: Checks) -> None:
    run = program.run(windows_path(mail), LETTERLIFT_OUTLOOK_STORE=windows_path(store).replace("\\", "/"))
    checks.equal("Status of a hand-over", run.status, 0)
    checks.equal("Boxes of a hand-over", run.boxes, 0)
    log = run_log(mail)
    checks.contains("Run log", log, "Outlook Version found: ")
    checks.contains("Run log", log, "Displaying mail")
    drafts = sorted((store / "drafts").glob("*.eml"))
    checks.equal("Drafts", [draft.name for draft in drafts], ["0001.eml"])
    for draft in drafts:
        message = email.message_from_bytes(draft.read_bytes(), policy=email.policy.default)
        subject = re.search("^SUBJECT=(.*?)\r?$", mail.read_text("utf-8"), re.MULTILINE)
        checks.equal("Subject", message["Subject"], subject and subject[1])
        checks.equal("Attachments", len(list(message.iter_attachments())), 1)


def run_log(mail: Path) -> str:
    log = mail.with_name("letterlift.log")
    return log.read_text("utf-8", "replace") if log.exists() else ""


def register_stand_in(wine: Wine, stand_in: Path, folder: Path, place: Path, checks: Checks) -> None:
    """Outlook has its own libraries too; the stand-in takes what it needs from the package."""
    place.mkdir()
    shutil.copy(stand_in, place)
    for library in folder.glob("*.dll"):
        shutil.copy(library, place)
    checks.equal("Status of /RegServer", wine.run(str(place / stand_in.name), "/RegServer"), 0)


def check_package(options: argparse.Namespace, base: Path, checks: Checks) -> None:
    with zipfile.ZipFile(options.package) as package:
        package.extractall(base)
    folder = base / options.package.stem
    shutil.copytree(options.mail.parent, base / "mail", ignore=shutil.ignore_patterns("*.log"))
    mail = base / "mail" / options.mail.name
    with open_display() as display, fresh_wine(options.wine, base, display.name) as wine:
        program = Program(wine, display, folder / "letterlift.exe")
        check_help(program, folder, checks)
        check_without_argument(program, checks)
        check_without_outlook(program, mail, checks)
        if options.stand_in:
            register_stand_in(wine, options.stand_in, folder, base / "stand-in", checks)
            check_hand_over(program, mail, base / "store", checks)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--package", type=Path, required=True)
    parser.add_argument("--wine", type=Path, required=True, help="the command that runs a Windows program")
    parser.add_argument("--mail", type=Path, required=True, help="a mail parameter file to hand over")
    parser.add_argument("--stand-in", type=Path, help="the stand-in for Outlook")
    options = parser.parse_args()
    checks = Checks()
    with tempfile.TemporaryDirectory(prefix="letterlift-package-") as base:
        check_package(options, Path(base).resolve(), checks)
    for complaint in checks.complaints:
        print(complaint)
    return 1 if checks.complaints else 0


if __name__ == "__main__":
    sys.exit(main())
