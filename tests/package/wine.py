"""A fresh Windows of its own: a Wine prefix in which nothing is installed."""

from __future__ import annotations

import os
import subprocess
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path, PureWindowsPath
from typing import IO

TIME_LIMIT = 120
SERVER = "/usr/lib/wine/wineserver64"


class Wine:
    def __init__(self, command: Path, base: Path, display: str) -> None:
        self._command = command
        # Nothing else, so that no library is found but those of the package and of Windows.
        self._environment = {
            "PATH": os.defpath,
            "HOME": str(base / "home"),
            "WINEPREFIX": str(base / "prefix"),
            "DISPLAY": display,
            "LC_ALL": "C.UTF-8",
        }
        (base / "home").mkdir()

    def start(
        self, output: IO[bytes] | int, *arguments: str, folder: Path | None = None, **environment: str
    ) -> subprocess.Popen[bytes]:
        """The output goes to a file and not to a pipe: the services, which the first program starts, keep it open."""
        return subprocess.Popen(
            [str(self._command), *arguments],
            cwd=folder,
            env=self._environment | environment,
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=output,
        )

    def run(self, *arguments: str) -> int:
        with self.start(subprocess.DEVNULL, *arguments) as process:
            try:
                return process.wait(TIME_LIMIT)
            finally:
                process.kill()

    def make_prefix(self) -> None:
        if self.run("wineboot", "--init") != 0:
            raise RuntimeError("Wine can't make a prefix")
        # Wine 8 would pass for Windows 7, on which Qt 6 doesn't run.
        if self.run("reg", "add", r"HKEY_CURRENT_USER\Software\Wine", "/v", "Version", "/d", "win10", "/f") != 0:
            raise RuntimeError("Wine can't be set to Windows 10")
        # The service manager has looked for services before there were any; COM needs one.
        self.end()

    def end(self) -> None:
        """Ends what still runs in the prefix, and waits until nothing writes there any more."""
        for option in "--kill", "--wait":
            subprocess.run([SERVER, option], env=self._environment, check=False, timeout=TIME_LIMIT)


@contextmanager
def fresh_wine(command: Path, base: Path, display: str) -> Iterator[Wine]:
    wine = Wine(command, base, display)
    try:
        wine.make_prefix()
        yield wine
    finally:
        wine.end()


def windows_path(path: Path) -> str:
    """The root of the file system is drive Z."""
    return str(PureWindowsPath("Z:/", *path.resolve().parts[1:]))
