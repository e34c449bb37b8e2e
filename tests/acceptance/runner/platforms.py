"""All that depends on the system on which the program runs."""

from __future__ import annotations

import os
import re
import subprocess
from pathlib import Path

# Of the caller's environment the program sees these alone, so that a case runs the same everywhere; the last ones
# carry the settings of sanitizers and of coverage measurement.
INHERITED = re.compile(r"PATH|LD_LIBRARY_PATH|TMPDIR|(ASAN|LSAN|UBSAN|TSAN|LLVM|GCOV)_\w+")

KEY_TIME_LIMIT = 20


class LinuxPlatform:
    """A Linux program on an X display."""

    def __init__(self, display: str) -> None:
        self._display = display

    def command(self, program: Path, arguments: list[str], unprivileged: bool) -> list[str]:
        """Root reads and writes whatever the rights of a file are, unless it has given that up."""
        command = [str(program), *arguments]
        if not unprivileged or os.geteuid() != 0:
            return command
        return ["setpriv", "--inh-caps=-all", "--bounding-set=-all", "--", *command]

    def environment(self, home: Path) -> dict[str, str]:
        inherited = {name: value for name, value in os.environ.items() if INHERITED.fullmatch(name)}
        return inherited | {
            "DISPLAY": self._display,
            "QT_QPA_PLATFORM": "xcb",
            "LC_ALL": "C.UTF-8",
            "HOME": str(home),
            # Qt warns of its absence, and the warning could stand in a run log.
            "XDG_RUNTIME_DIR": str(home),
            # No session bus: nobody listens, and looking for one takes time.
            "DBUS_SESSION_BUS_ADDRESS": "disabled:",
            "NO_AT_BRIDGE": "1",
            "QT_FORCE_STDERR_LOGGING": "1",
        }

    def press_key(self, window: int, key: str) -> None:
        """As a person does: the window has the focus, and the key is pressed on the keyboard, not sent as an event."""
        self._xdotool("windowfocus", "--sync", str(window))
        self._xdotool("key", key)

    def exit_status(self, returned: int) -> int:
        """What the system makes of the value that the program's main function returns."""
        return returned & 0xFF

    def returned_value(self, exit_status: int) -> int:
        """The other way round, as far as that is possible: the program returns no value above 127."""
        return exit_status - 0x100 if exit_status > 0x7F else exit_status

    def spellings(self, path: Path) -> list[str]:
        """All forms in which the program may write the path."""
        return [str(path)]

    def log_text(self, content: bytes) -> str:
        """The run log with line feeds as line ends."""
        return content.decode("utf-8", "backslashreplace")

    def _xdotool(self, *arguments: str) -> None:
        environment = os.environ | {"DISPLAY": self._display}
        subprocess.run(["xdotool", *arguments], env=environment, check=True, timeout=KEY_TIME_LIMIT)
