"""The set-up steps of a case: what its input folder can't hold, or would hold only as bytes that nobody can read.

Each kind of step is a small class that checks its own keys, so that a misspelt step is an error and not a step less.
"""

from __future__ import annotations

import codecs
import stat
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Protocol

MARKS = {
    "utf-8": codecs.BOM_UTF8,
    "utf-16-le": codecs.BOM_UTF16_LE,
    "utf-16-be": codecs.BOM_UTF16_BE,
    "utf-32-le": codecs.BOM_UTF32_LE,
    "utf-32-be": codecs.BOM_UTF32_BE,
}


class Step(Protocol):
    # Rights are taken away last: what comes before them has to be able to write.
    takes_rights: bool

    def apply(self, directory: Path) -> None: ...


@dataclass(frozen=True)
class MakeDirectory:
    """{"directory": PATH}"""

    path: str
    takes_rights = False

    def apply(self, directory: Path) -> None:
        (directory / self.path).mkdir(parents=True)


@dataclass(frozen=True)
class AddBytes:
    """{"write" or "append": PATH, and one of "text", "hex", "repeat" with "times"; "encoding"; "mark": true}"""

    path: str
    mode: str
    content: bytes
    takes_rights = False

    def apply(self, directory: Path) -> None:
        with (directory / self.path).open(self.mode) as file:
            file.write(self.content)


@dataclass(frozen=True)
class AddSections:
    """{"sections": COUNT, "into": PATH}: so many sections of one key each, at the end of the file."""

    count: int
    path: str
    takes_rights = False

    def apply(self, directory: Path) -> None:
        with (directory / self.path).open("a", encoding="utf-8", newline="\n") as file:
            file.writelines(f"[SECTION{number}]\nSUBJECT=Section {number}\n" for number in range(self.count))


@dataclass(frozen=True)
class TakeRights:
    """{"unreadable": PATH} or {"readOnly": PATH}"""

    path: str
    rights: int
    takes_rights = True

    def apply(self, directory: Path) -> None:
        path = directory / self.path
        path.chmod(path.stat().st_mode & ~self.rights)


def read_steps(data: list[Any]) -> list[Step]:
    steps = [_read_step(dict(step)) for step in data]
    return sorted(steps, key=lambda step: step.takes_rights)


def give_rights_back(directory: Path) -> None:
    """So that the runner can look at all files, and remove them."""
    directory.chmod(directory.stat().st_mode | stat.S_IRWXU)
    for path in directory.iterdir():
        if path.is_dir():
            give_rights_back(path)
        else:
            path.chmod(path.stat().st_mode | stat.S_IRUSR | stat.S_IWUSR)


def _read_step(keys: dict[str, Any]) -> Step:
    step = _step_from(keys)
    if keys:
        raise ValueError(f"unknown keys in a set-up step: {', '.join(sorted(keys))}")
    return step


def _step_from(keys: dict[str, Any]) -> Step:
    """Takes the keys that it understands out of the dictionary."""
    if "directory" in keys:
        return MakeDirectory(keys.pop("directory"))
    if "write" in keys:
        return AddBytes(keys.pop("write"), "wb", _content_from(keys))
    if "append" in keys:
        return AddBytes(keys.pop("append"), "ab", _content_from(keys))
    if "sections" in keys:
        return AddSections(keys.pop("sections"), keys.pop("into"))
    if "unreadable" in keys:
        return TakeRights(keys.pop("unreadable"), stat.S_IRUSR | stat.S_IRGRP | stat.S_IROTH)
    if "readOnly" in keys:
        return TakeRights(keys.pop("readOnly"), stat.S_IWUSR | stat.S_IWGRP | stat.S_IWOTH)
    raise ValueError(f"a set-up step that is not known: {keys}")


def _content_from(keys: dict[str, Any]) -> bytes:
    if "hex" in keys:
        return bytes.fromhex(keys.pop("hex"))
    if "repeat" in keys:
        return keys.pop("repeat").encode("utf-8") * keys.pop("times")
    encoding = keys.pop("encoding", "utf-8")
    mark = MARKS[encoding] if keys.pop("mark", False) else b""
    return mark + keys.pop("text").encode(encoding)
