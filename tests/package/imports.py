"""Reads from a Windows program or library which libraries it needs, and whether it is for a console."""

from __future__ import annotations

import struct

X86_64 = 0x8664
PE32_PLUS = 0x20B
# In the optional header.
SUBSYSTEM_OFFSET = 68
WINDOWS_GUI = 2
# Where the directories of imports stand in the optional header, the size of their entries, and where in an entry the
# library's name is.
DIRECTORIES_OFFSET = 112
IMPORTS = (1, 20, 12)
DELAYED_IMPORTS = (13, 32, 4)


class ImageError(Exception):
    """It is no 64-bit Windows image."""


class Image:
    def __init__(self, content: bytes) -> None:
        self._content = content
        if content[:2] != b"MZ":
            raise ImageError("no Windows image")
        header = self._number("<I", 0x3C)
        if content[header : header + 4] != b"PE\0\0":
            raise ImageError("no Windows image")
        machine, section_count = struct.unpack_from("<HH", content, header + 4)
        optional_size = self._number("<H", header + 20)
        self._optional = header + 24
        if machine != X86_64 or self._number("<H", self._optional) != PE32_PLUS:
            raise ImageError("no 64-bit image")
        self._sections = []
        for index in range(section_count):
            start = self._optional + optional_size + 40 * index
            _, address, size, offset = struct.unpack_from("<IIII", content, start + 8)
            self._sections.append((address, size, offset))

    @property
    def subsystem_offset(self) -> int:
        """Where in the file the number of the subsystem stands."""
        return self._optional + SUBSYSTEM_OFFSET

    def opens_console(self) -> bool:
        return self._number("<H", self.subsystem_offset) != WINDOWS_GUI

    def libraries(self) -> set[str]:
        """The names in lower case, delayed imports included."""
        return self._names(*IMPORTS) | self._names(*DELAYED_IMPORTS)

    def _names(self, directory: int, entry_size: int, name_offset: int) -> set[str]:
        address = self._number("<I", self._optional + DIRECTORIES_OFFSET + 8 * directory)
        if address == 0:
            return set()
        names = set()
        entry = self._file_offset(address)
        while name := self._number("<I", entry + name_offset):
            start = self._file_offset(name)
            names.add(self._content[start : self._content.index(b"\0", start)].decode("ascii").lower())
            entry += entry_size
        return names

    def _file_offset(self, address: int) -> int:
        for start, size, offset in self._sections:
            if start <= address < start + size:
                return offset + address - start
        raise ImageError(f"nothing is at {address:#x}")

    def _number(self, form: str, offset: int) -> int:
        return int(struct.unpack_from(form, self._content, offset)[0])
