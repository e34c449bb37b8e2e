"""One run of the program, and a person in front of it who closes its boxes."""

from __future__ import annotations

import json
import subprocess
import time
from collections.abc import Callable
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any

from runner.case import Box, Case
from runner.platforms import Platform, PlatformError

POLL_INTERVAL = 0.01
SHOWN_ERROR_OUTPUT = 2000


class RunError(Exception):
    """The run did not come to its end, or nobody could watch it."""


@dataclass(frozen=True)
class Workplace:
    """The temporary directory of one run. The program works in one folder of it and gets the names of others."""

    base: Path

    @property
    def directory(self) -> Path:
        return self.base / "dir"

    @property
    def store(self) -> Path:
        return self.base / "store"

    @property
    def scenario(self) -> Path:
        return self.base / "scenario.json"

    @property
    def home(self) -> Path:
        return self.base / "home"

    @property
    def box_report(self) -> Path:
        return self.base / "boxes.jsonl"

    @property
    def error_output(self) -> Path:
        return self.base / "stderr.txt"


@dataclass
class ProgramRun:
    """What is seen of the program from outside."""

    exit_status: int = 0
    boxes: list[Box] = field(default_factory=list)


class Person:
    """Waits for boxes, notes them and presses their keys."""

    def __init__(
        self, platform: Platform, report: Path, expected: list[Box], on_box: Callable[[int], None]
    ) -> None:
        self._platform = platform
        self._report = report
        self._keys = [box.key for box in expected]
        self._on_box = on_box
        self.boxes: list[Box] = []

    def look(self) -> list[int]:
        """Notes the boxes that are new, and returns their windows."""
        windows = []
        for line in self._complete_lines()[len(self.boxes) :]:
            shown = json.loads(line)
            self.boxes.append(self._noted(shown))
            windows.append(shown["window"])
        return windows

    def close(self, process: int, window: int) -> None:
        number = len(self.boxes)
        self._on_box(number)
        self._platform.press_key(process, window, self.boxes[-1].key)

    def _noted(self, shown: dict[str, Any]) -> Box:
        number = len(self.boxes)
        key = self._keys[number] if number < len(self._keys) else Box.key
        return Box(shown["icon"], shown["title"], shown["text"], shown["buttons"], key)

    def _complete_lines(self) -> list[str]:
        if not self._report.exists():
            return []
        return self._report.read_text("utf-8").split("\n")[:-1]


def run_program(
    program: Path,
    plugins: Path,
    case: Case,
    workplace: Workplace,
    platform: Platform,
    time_limit: float,
    on_box: Callable[[int], None],
) -> ProgramRun:
    person = Person(platform, workplace.box_report, case.boxes, on_box)
    arguments = [in_workplace(argument, workplace, platform) for argument in case.arguments]
    with workplace.error_output.open("wb") as error_output:
        process = subprocess.Popen(
            platform.command(program, arguments, case.unprivileged),
            cwd=workplace.directory,
            env=_environment(case, workplace, plugins, platform),
            stdin=subprocess.DEVNULL,
            stdout=error_output,
            stderr=error_output,
        )
    try:
        _wait(process, person, time.monotonic() + time_limit, workplace)
    finally:
        if process.poll() is None:
            process.kill()
        process.wait()
        platform.wait_for_servers(workplace.store)
    if not workplace.box_report.exists():
        raise RunError(f"The program has not loaded the box observer from {plugins}.{_error_output(workplace)}")
    if process.returncode < 0:
        raise RunError(f"The program was ended by signal {-process.returncode}.{_error_output(workplace)}")
    return ProgramRun(process.returncode, person.boxes)


def in_workplace(text: str, workplace: Workplace, platform: Platform) -> str:
    return text.replace("{dir}", platform.path(workplace.directory))


def _environment(case: Case, workplace: Workplace, plugins: Path, platform: Platform) -> dict[str, str]:
    variables = {
        "QT_QPA_GENERIC_PLUGINS": "boxobserver",
        "QT_PLUGIN_PATH": platform.path(plugins),
        "QT_FORCE_STDERR_LOGGING": "1",
        "LETTERLIFT_BOX_REPORT": platform.path(workplace.box_report),
        "LETTERLIFT_OUTLOOK_STORE": platform.path(workplace.store),
    }
    if case.scenario:
        variables["LETTERLIFT_OUTLOOK_SCENARIO"] = platform.path(workplace.scenario)
    variables |= {name: in_workplace(value, workplace, platform) for name, value in case.environment.items()}
    return platform.environment(workplace.home, variables)


def _wait(process: subprocess.Popen[bytes], person: Person, deadline: float, workplace: Workplace) -> None:
    while process.poll() is None:
        for window in person.look():
            try:
                person.close(process.pid, window)
            except (subprocess.SubprocessError, PlatformError) as error:
                raise RunError(f"The key for {person.boxes[-1]} can't be pressed: {error}") from error
        if time.monotonic() > deadline:
            shown = "\n".join(str(box) for box in person.boxes) or "none"
            raise RunError(f"The program does not end. Boxes so far: {shown}{_error_output(workplace)}")
        time.sleep(POLL_INTERVAL)
    person.look()


def _error_output(workplace: Workplace) -> str:
    text = workplace.error_output.read_text("utf-8", "replace")[-SHOWN_ERROR_OUTPUT:]
    return f"\nIts output:\n{text}" if text else ""
