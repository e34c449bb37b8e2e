#!/usr/bin/env python3
"""Tests that a dictionary file and its catalogues say the same, and that what catalogues can't say is refused."""

from __future__ import annotations

import struct
from pathlib import Path

from catalogue import message
from compilercase import OPTIONS, Case, run_tests
from dictionaryfile import LETTERS, DictionaryFile, placeholder

D, E, F, A, LAST = (LETTERS.index(letter) for letter in "DEFA7")


class Builder:
    """Makes a file as another compiler might, byte by byte."""

    def __init__(self, columns: int = 33) -> None:
        self.columns = columns
        self.rows: dict[int, list[int]] = {}
        self.symbols: dict[int, int] = {}
        self.text_pool = b""
        self.symbol_pool = b""
        self.second_pool = b""
        self.filler = b"\0"

    def text(self, text: str | bytes) -> int:
        offset = len(self.text_pool)
        self.text_pool += text if isinstance(text, bytes) else text.encode("utf-16-le") + b"\0\0"
        return offset

    def symbol(self, number: int, symbol: bytes) -> None:
        self.symbols[number] = len(self.symbol_pool)
        self.symbol_pool += symbol

    def row(self, number: int, source: int, others: int, **own: int) -> None:
        """The offsets of the source text, of all languages, and of those that have another one."""
        cells = [own.get(letter, others) for letter in LETTERS] + [others] * 20
        self.rows[number] = [source, *cells][: self.columns]

    def file(self, count: int | None = None) -> bytes:
        count = max(self.rows, default=0) if count is None else count
        unused = {number: self.text(placeholder(number)) for number in range(1, count + 1) if number not in self.rows}
        symbol_pool = self.symbol_pool + b"\0"
        content = f"004{self.columns:02}{count:05}U".encode("ascii")
        content += struct.pack(">2I", len(self.text_pool), len(self.second_pool))
        for number in range(count + 1):
            cells = self.rows.get(number, [unused.get(number, 0)] * self.columns)
            content += struct.pack(f">{self.columns}I", *cells)
        for number in range(1, count + 1):
            content += self.filler * 14 + struct.pack(">I", self.symbols.get(number, len(symbol_pool) - 1))
        return content + self.text_pool + self.second_pool + symbol_pool


class RoundTrip(Case):
    def assert_same_bytes(self, folder: Path, name: str = "same") -> None:
        files = [self.place / f"{name}-1", self.place / f"{name}-2"]
        for file in files:
            done = self.run_compiler("compile", "--lenient", folder, file)
            self.assertEqual(done.returncode, 0, done.stderr)
            folder = self.dump(file, name=f"dump-of-{file.name}")
        self.assertEqual(files[0].read_bytes(), files[1].read_bytes())
        dumps = [self.place / f"dump-of-{file.name}" for file in files]
        for path in dumps[0].iterdir():
            self.assertEqual(
                path.read_text("utf-8").replace(dumps[0].name, dumps[1].name),
                (dumps[1] / path.name).read_text("utf-8"),
            )

    def assert_read_alike(self, content: bytes) -> Path:
        """The file and what becomes of it by way of catalogues: all that the system reads is the same."""
        original = self.place / "original"
        original.write_bytes(content)
        folder = self.dump(original)
        done = self.run_compiler("compile", "--lenient", folder, self.file)
        self.assertEqual(done.returncode, 0, done.stderr)
        before, after = DictionaryFile(content), DictionaryFile.read(self.file)
        self.assertEqual(after.text_count, before.text_count)
        for number in range(1, before.text_count + 1):
            self.assertEqual(after.source(number), before.source(number))
            self.assertEqual(after.symbol(number), before.symbol(number))
            for language, letter in enumerate(LETTERS):
                if language + 1 < before.columns:
                    self.assertEqual(after.text(number, language), before.text(number, language), (number, letter))
                    self.assertEqual(after.has_text(number, letter), before.has_text(number, letter), (number, letter))
        self.assert_same_bytes(folder)
        return folder

    def assert_refused(self, content: bytes, reason: str) -> None:
        self.file.write_bytes(content)
        done = self.run_compiler("dump", self.file, self.place / "dumped")
        self.assertEqual((done.returncode, done.stderr), (1, f"s3dictc: {self.file}: {reason}\n"))
        self.assertEqual([path.name for path in self.place.iterdir()], [self.file.name])

    def test_project(self) -> None:
        for name in ("mng", "msg"):
            with self.subTest(name):
                self.assert_same_bytes(OPTIONS.catalogues / name, name)

    def test_all_kinds_of_entries(self) -> None:
        folder = self.folder("X-Dictionary-Text-Count: 50")
        folder.entry(1, "Ja", "YES", de="Ja", en_US="Yes", fr="Oui")
        folder.entry(3, "nur Deutsch", de="nur Deutsch")
        folder.entry(4, "gar nichts")
        folder.entry(5, "Details", "DETAILS", en="Details", en_US="Details")
        folder.entry(9, "Zeile\nZeile\tTab \"q\" \\ 😀 \u2028\ufeff%1 \x01 \r\n", fr="%1 " + "sehr lang " * 500)
        folder.add("es", message(1, "Ja", before="# s3dictc: empty\n"))
        folder.add("it", message(1, "Ja", before="# s3dictc: as German\n"))
        file = self.compile(folder, "--lenient")
        self.assertEqual((file.text_in(1, "S"), file.has_text(1, "S")), ("", True))
        self.assertEqual((file.text_in(1, "I"), file.has_text(1, "I")), ("Ja", False))
        self.assert_same_bytes(folder.path)

    def test_byte_order_mark_at_the_start_of_a_text(self) -> None:
        folder = self.folder()
        folder.entry(1, "\ufeffJa", "\ufeffYES", fr="\ufeff\ufeffOui")
        file = self.compile(folder)
        self.assertEqual((file.source(1), file.symbol(1), file.text_in(1, "F")), ("\ufeffJa", "\ufeffYES", "\ufeff\ufeffOui"))
        self.assert_same_bytes(folder.path)

    def test_empty_dictionary(self) -> None:
        self.assert_same_bytes(self.folder().path)

    def test_foreign_sharing(self) -> None:
        builder = Builder()
        source, german, american, french = (builder.text(text) for text in ("Quelle", "Deutsch", "American", "French"))
        # The rest shares German, which it wouldn't do here; E has the source's cell, which is a translation to the system.
        builder.row(1, source, german, A=american, F=french, S=american, E=source)
        builder.row(2, source, american, D=german, A=american)
        builder.row(3, source, source)
        builder.row(4, source, french, D=german, A=german)
        self.assert_read_alike(builder.file())

    def test_foreign_empty_texts(self) -> None:
        builder = Builder()
        empty, text = builder.text(""), builder.text("Text")
        builder.row(1, text, text, F=empty, A=empty)
        builder.row(2, empty, text)
        builder.row(3, text, text, D=empty)
        self.assert_read_alike(builder.file())

    def test_foreign_placeholders(self) -> None:
        builder = Builder()
        texts = [builder.text(placeholder(number)) for number in (1, 2)]
        french = builder.text("French")
        builder.row(1, texts[0], texts[0], F=french)
        builder.row(2, texts[0], texts[1])
        builder.row(3, texts[1], texts[1])
        self.assert_read_alike(builder.file(count=9))

    def test_foreign_symbol_of_an_unused_number(self) -> None:
        builder = Builder()
        builder.row(1, *[builder.text(placeholder(1))] * 2)
        builder.symbol(1, b"KEPT\0")
        folder = self.assert_read_alike(builder.file())
        self.assertIn("#. symbol: KEPT\n", (folder / "template.pot").read_text("utf-8"))

    def test_foreign_file_with_more_columns(self) -> None:
        builder = Builder(columns=40)
        builder.row(2, builder.text("Quelle"), builder.text("others"), **{"7": builder.text("Japanese")})
        self.assert_read_alike(builder.file())

    def test_foreign_file_without_a_column_for_the_last_language(self) -> None:
        builder = Builder(columns=32)
        builder.row(2, builder.text("Quelle"), builder.text("others"), D=builder.text("Deutsch"))
        self.assert_read_alike(builder.file())
        # What the program reads in this language is the one thing that the way over catalogues changes.
        before, after = DictionaryFile(builder.file()), DictionaryFile.read(self.file)
        self.assertEqual((before.text_in(2, "7"), after.text_in(2, "7")), (placeholder(2), "others"))
        self.assertEqual((before.has_text(2, "7"), after.has_text(2, "7")), (False, False))

    def test_what_nobody_reads_is_skipped(self) -> None:
        builder = Builder()
        builder.filler = b"\xff"
        builder.second_pool = b"second pool"
        builder.row(1, *[builder.text("Text")] * 2)
        builder.symbol(1, "SÝMBOL\0".encode())
        self.assert_read_alike(builder.file())

    def test_looked_up_by_source(self) -> None:
        folder = self.folder()
        self.compile(folder)
        for option, key in ((["--by-source"], "source"), ([], "number")):
            self.assertEqual(self.run_compiler("dump", *option, self.file, self.place / key).returncode, 0)
            self.assertIn(f"X-Dictionary-Key: {key}", (self.place / key / "template.pot").read_text("utf-8"))

    def test_file_that_does_not_exist(self) -> None:
        done = self.run_compiler("dump", "none", "dumped")
        self.assertEqual((done.returncode, done.stderr), (1, "s3dictc: none can't be read: No such file or directory\n"))

    def test_directory(self) -> None:
        self.file.mkdir()
        self.assertEqual(self.run_compiler("dump", self.file, "dumped").returncode, 1)

    def test_broken_headers(self) -> None:
        good = Builder().file()
        for content, reason in (
            (b"", "The file is shorter than a header."),
            (good[:18], "The file is shorter than a header."),
            (b"003" + good[3:], 'The version isn\'t "004".'),
            (good[:10] + b"A" + good[11:], "The texts aren't marked as UTF-16."),
            (good[:3] + b"31" + good[5:], "There are 31 columns, and at least 32 are needed."),
            (good[:3] + b"3x" + good[5:], "The header has something else than digits at offset 3."),
            (good[:5] + b"-0001" + good[10:], "The header has something else than digits at offset 5."),
            (good[:5] + b"00001" + good[10:], "The file ends before its tables and pools do."),
            (good[:11] + b"\xff" + good[12:], "The file ends before its tables and pools do."),
            (good[:15] + b"\xff" + good[16:], "The file ends before its tables and pools do."),
        ):
            with self.subTest(reason):
                self.assert_refused(content, reason)

    def test_broken_texts(self) -> None:
        for text, reason in (
            (b"\x00\xd8\x00\x00", "It is no valid UTF-16."),
            (b"\x00\xdc\x00\x00", "It is no valid UTF-16."),
            (b"a\x00b", "It doesn't end within the text pool."),
        ):
            for letter in "FDA":
                with self.subTest((text, letter)):
                    builder = Builder()
                    good = builder.text("good")
                    builder.row(1, good, good, **{letter: builder.text(text)})
                    self.assert_refused(builder.file(), f"Text 1: {reason}")

    def test_text_outside_the_pool(self) -> None:
        builder = Builder()
        builder.row(1, 0xFFFFFFFF, builder.text("good"))
        self.assert_refused(builder.file(), "Text 1: It doesn't end within the text pool.")

    def test_broken_symbols(self) -> None:
        for symbol, reason in (
            (b"\xff\0", "Its symbol is no valid UTF-8."),
            (b"A\nB\0", "Its symbol has white space that a catalogue has no room for."),
            (b" A\0", "Its symbol has white space that a catalogue has no room for."),
        ):
            with self.subTest(symbol):
                builder = Builder()
                builder.row(1, *[builder.text("good")] * 2)
                builder.symbol(1, symbol)
                self.assert_refused(builder.file(), f"Text 1: {reason}")

    def test_symbol_outside_the_pool(self) -> None:
        builder = Builder()
        builder.row(1, *[builder.text("good")] * 2)
        builder.symbols[1] = 0xFFFF
        self.assert_refused(builder.file(), "Text 1: Its symbol doesn't end within the file.")


if __name__ == "__main__":
    run_tests(__doc__)
