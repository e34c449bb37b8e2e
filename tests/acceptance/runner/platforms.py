"""All that depends on the system on which the program runs."""

from __future__ import annotations

import os
import re
import subprocess
import time
from abc import ABC, abstractmethod
from pathlib import Path

# Of the caller's environment the program sees these alone, so that a case runs the same everywhere; the last ones
# carry the settings of sanitizers and of coverage measurement.
INHERITED = re.compile(r"PATH|LD_LIBRARY_PATH|TMPDIR|WINE\w+|(ASAN|LSAN|UBSAN|TSAN|LLVM|GCOV)_\w+")

KEY_TIME_LIMIT = 20
SERVER_TIME_LIMIT = 20
POLL_INTERVAL = 0.02

TEXTS = Path(__file__).resolve().parents[1] / "texts"
WINE = Path(__file__).resolve().parents[3] / "tools" / "windows" / "wine"


class PlatformError(Exception):
    """The system does not do what the runner asks of it, or something of the run goes on in it."""


class Platform(ABC):
    """A program on an X display."""

    # As case.json and the names of expectations spell it.
    name: str

    def __init__(self, display: str) -> None:
        self._display = display

    @abstractmethod
    def command(self, program: Path, arguments: list[str], unprivileged: bool) -> list[str]:
        """What to start. Unprivileged, the program is held to the rights of files."""

    def environment(self, home: Path, variables: dict[str, str]) -> dict[str, str]:
        """That of the program, which sees the variables."""
        inherited = {name: value for name, value in os.environ.items() if INHERITED.fullmatch(name)}
        return inherited | {"DISPLAY": self._display, "LC_ALL": "C.UTF-8", "HOME": str(home)} | variables

    @property
    def usage(self) -> str:
        """What the program says of its options."""
        return (TEXTS / f"usage.{self.name}.txt").read_text("utf-8")

    def path(self, path: Path) -> str:
        """The path as the program is told it."""
        return str(path)

    def press_key(self, process: int, window: int, key: str) -> None:
        """As a person does: the window has the focus, and the key is pressed on the keyboard, not sent as an event."""
        self._xdotool("windowfocus", "--sync", str(self.x_window(process, window)))
        self._xdotool("key", key)

    def x_window(self, process: int, window: int) -> int:
        """The window on the X display, of the process and of the window that the program itself knows."""
        del process
        return window

    def returned_value(self, exit_status: int) -> int:
        """What the program's main function has returned; it returns no value above 127."""
        return exit_status - 0x100 if exit_status > 0x7F else exit_status

    def spellings(self, path: Path) -> list[str]:
        """All forms in which the program may write the path."""
        return [self.path(path)]

    def log_text(self, content: bytes) -> str:
        """The run log with line feeds as line ends."""
        return content.decode("utf-8", "backslashreplace")

    def wait_for_servers(self, store: Path) -> None:
        """Returns when nothing that the program has started is at work any more."""

    def _xdotool(self, *arguments: str) -> str:
        environment = os.environ | {"DISPLAY": self._display}
        done = subprocess.run(
            ["xdotool", *arguments],
            env=environment,
            check=True,
            timeout=KEY_TIME_LIMIT,
            stdout=subprocess.PIPE,
            text=True,
        )
        return done.stdout


class LinuxPlatform(Platform):
    """A Linux program."""

    name = "linux"

    def command(self, program: Path, arguments: list[str], unprivileged: bool) -> list[str]:
        """Root reads and writes whatever the rights of a file are, unless it has given that up."""
        command = [str(program), *arguments]
        if not unprivileged or os.geteuid() != 0:
            return command
        return ["setpriv", "--inh-caps=-all", "--bounding-set=-all", "--", *command]

    def environment(self, home: Path, variables: dict[str, str]) -> dict[str, str]:
        return super().environment(home, variables) | {
            "QT_QPA_PLATFORM": "xcb",
            # Qt warns of its absence, and the warning could stand in a run log.
            "XDG_RUNTIME_DIR": str(home),
            # No session bus: nobody listens, and looking for one takes time.
            "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            "NO_AT_BRIDGE": "1",
        }


class WinePlatform(Platform):
    """A Windows program that Wine runs, with the stand-in for Outlook as a process beside it."""

    name = "wine"

    # What Qt's Windows platform says of Wine while it shows a box, and can stand in no log that was written on Windows.
    _NOISE = re.compile(
        r"(?m)^(QPixmap::fromWinHICON\(\), failed to GetIconInfo\(\) \(Invalid cursor handle\.\)"
        r"|EnableNonClientDpiScaling\(\) failed for HWND 0x[0-9a-f]+ \(120\) \(Call not implemented\.\))\n"
    )
    _SERVER = b"outlook-stand-in.exe"

    def command(self, program: Path, arguments: list[str], unprivileged: bool) -> list[str]:
        """Wine is always without privileges: its server, which opens the files, is one for all cases."""
        del unprivileged
        return [str(WINE), str(program), *arguments]

    def environment(self, home: Path, variables: dict[str, str]) -> dict[str, str]:
        """Wine keeps the variables of Qt from its programs, but hands each WINEQT_... on as QT_..."""
        named = {f"WINE{name}" if name.startswith("QT_") else name: value for name, value in variables.items()}
        return super().environment(home, named)

    def path(self, path: Path) -> str:
        """Drive Z is the whole file system."""
        return f"Z:{path}"

    def x_window(self, process: int, window: int) -> int:
        """Wine's windows bear the process; a program has no more than one box on the screen."""
        del window
        found = self._xdotool("search", "--sync", "--onlyvisible", "--pid", str(process)).split()
        if len(found) != 1:
            raise PlatformError(f"One window of the program is expected on the display, there are {len(found)}.")
        return int(found[0])

    def spellings(self, path: Path) -> list[str]:
        return [self.path(path), self.path(path).replace("/", "\\")]

    def log_text(self, content: bytes) -> str:
        return self._NOISE.sub("", super().log_text(content).replace("\r\n", "\n"))

    def wait_for_servers(self, store: Path) -> None:
        """A stand-in that is left to itself would be the Outlook of the next case."""
        deadline = time.monotonic() + SERVER_TIME_LIMIT
        while servers := self._servers(store):
            if time.monotonic() > deadline:
                for server in servers:
                    os.kill(server, 9)
                raise PlatformError("The stand-in for Outlook hasn't ended with the program.")
            time.sleep(POLL_INTERVAL)

    def _servers(self, store: Path) -> list[int]:
        """The environment that a stand-in has from its client tells whose it is."""
        mark = os.fsencode(f"LETTERLIFT_OUTLOOK_STORE={self.path(store)}")
        return [
            int(process.name)
            for process in Path("/proc").glob("[0-9]*")
            if self._SERVER in _content(process / "cmdline")
            and mark in _content(process / "environ").split(b"\0")
        ]


PLATFORMS: dict[str, type[Platform]] = {platform.name: platform for platform in (LinuxPlatform, WinePlatform)}


def _content(path: Path) -> bytes:
    """Of a process that may have ended by now, or be somebody else's."""
    try:
        return path.read_bytes()
    except OSError:
        return b""
