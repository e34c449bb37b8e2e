"""Reads a dictionary file as the system does, with nothing in common with the compiler that makes them."""

from __future__ import annotations

import struct
from pathlib import Path

LETTERS = "DEFSIPRUCT123AOBNMXYLWGQHZKVJ987"
CATALOGUES = (
    "de en fr es it pl ru hu cs tr individual-1 individual-2 individual-3 en_US ro id nl mk bg sr sl sk pt zh_CN zh_TW "
    "el th ar fa vi ur ja"
).split()
HEADER_SIZE = 19
RECORD_SIZE = 18


def placeholder(number: int) -> str:
    return f"*** {number} ***"


class DictionaryFile:
    def __init__(self, content: bytes) -> None:
        self.content = content
        version, columns, count, charset, pool, second_pool = struct.unpack_from(">3s2s5sc2I", content)
        assert (version, charset) == (b"004", b"U"), (version, charset)
        self.columns = int(columns)
        self.text_count = int(count)
        self.records = HEADER_SIZE + (self.text_count + 1) * self.columns * 4
        self.text_pool = self.records + self.text_count * RECORD_SIZE
        self.symbol_pool = self.text_pool + pool + second_pool

    @classmethod
    def read(cls, path: Path) -> DictionaryFile:
        return cls(path.read_bytes())

    def offset(self, number: int, language: int) -> int | None:
        """The language as its index, -1 for the source text."""
        if not 1 <= number <= self.text_count or not 0 <= language + 1 < self.columns:
            return None
        place = HEADER_SIZE + (number * self.columns + language + 1) * 4
        return int(struct.unpack_from(">I", self.content, place)[0])

    def text(self, number: int, language: int) -> str:
        offset = self.offset(number, language)
        if offset is None:
            return placeholder(number)
        start = end = self.text_pool + offset
        while self.content[end : end + 2] != b"\0\0":
            assert end + 2 <= self.symbol_pool, "A text doesn't end."
            end += 2
        return self.content[start:end].decode("utf-16-le")

    def text_in(self, number: int, letter: str) -> str:
        return self.text(number, LETTERS.index(letter))

    def source(self, number: int) -> str:
        text = self.text(number, -1) if self.offset(number, -1) is not None else ""
        return "" if text == placeholder(number) else text

    def has_text(self, number: int, letter: str) -> bool:
        offset = self.offset(number, LETTERS.index(letter))
        if offset is None or self.text_in(number, letter) == placeholder(number):
            return False
        for shared in "DA":
            if letter == shared:
                return True
            if offset == self.offset(number, LETTERS.index(shared)):
                return False
        return True

    def symbol(self, number: int) -> str:
        place = self.records + number * RECORD_SIZE - 4
        start = self.symbol_pool + int(struct.unpack_from(">I", self.content, place)[0])
        return self.content[start : self.content.index(b"\0", start)].decode("utf-8")

    def numbers(self) -> list[int]:
        return [number for number in range(1, self.text_count + 1) if self.source(number)]
