#!/usr/bin/env python3
"""Checks the project's own catalogues: by gettext, for completeness, and for what the program relies on."""

from __future__ import annotations

import argparse
import re
import subprocess
import sys
import unittest
from pathlib import Path

from dictionaryfile import CATALOGUES, LETTERS, DictionaryFile

COMPLETE = "DEAFSI"
DICTIONARIES = ["mng", "msg"]
FIRST_LANGUAGE_NAME = 950
INDIVIDUAL = "123"
# The source texts under which the program may have the old name or the new one.
RENAMED = [896, 931, 938, 939]
# Truth values and errors.
ASKED_FOR = [531, 532, 201, 329, 1111, 1123]

OPTIONS = argparse.Namespace()


class Catalogues(unittest.TestCase):
    def setUp(self) -> None:
        self.gui = DictionaryFile.read(OPTIONS.files / "mng.dat.0")
        self.messages = DictionaryFile.read(OPTIONS.files / "msg.dat.0")

    def test_there_is_one_for_each_language(self) -> None:
        for dictionary in DICTIONARIES:
            names = sorted(path.stem for path in (OPTIONS.catalogues / dictionary).glob("*.po"))
            self.assertEqual(names, sorted(CATALOGUES))

    def test_gettext_has_no_complaint(self) -> None:
        for path in sorted(OPTIONS.catalogues.glob("*/*.po")):
            command = [OPTIONS.msgfmt, "-c", "-o", "/dev/null", path]
            done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
            self.assertEqual((done.returncode, done.stdout), (0, ""), path)

    def test_compiler_has_no_complaint(self) -> None:
        for dictionary in DICTIONARIES:
            command = [OPTIONS.compiler, "check", OPTIONS.catalogues / dictionary]
            done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
            self.assertEqual((done.returncode, done.stdout), (0, ""))

    def test_all_catalogues_have_the_entries_of_the_template(self) -> None:
        for dictionary in DICTIONARIES:
            folder = OPTIONS.catalogues / dictionary
            expected = entries(folder / "template.pot")
            for path in sorted(folder.glob("*.po")):
                self.assertEqual(entries(path), expected, f"{path}: tools/dictionaries brings it up to date")

    def test_columns(self) -> None:
        for file in (self.gui, self.messages):
            self.assertEqual(file.columns, len(LETTERS) + 1)

    def test_complete_languages(self) -> None:
        for file in (self.gui, self.messages):
            self.assertGreater(len(file.numbers()), 0)
            without = [(number, letter) for number in file.numbers() for letter in COMPLETE if not is_translated(file, number, letter)]
            self.assertEqual(without, [])

    def test_renamed_texts(self) -> None:
        for number in RENAMED:
            self.assertIn("vexa ERP", self.gui.source(number))
            for index in range(len(LETTERS)):
                self.assertNotIn("vexa ERP", self.gui.text(number, index))

    def test_numbers_that_the_program_asks_for(self) -> None:
        for number in ASKED_FOR:
            self.assertNotEqual(self.messages.source(number), "")
            self.assertNotEqual(self.messages.symbol(number), "")

    def test_truth_values_differ(self) -> None:
        for index in range(len(LETTERS)):
            self.assertNotEqual(self.messages.text(531, index), self.messages.text(532, index))

    def test_language_names_in_all_languages(self) -> None:
        for named, letter in enumerate(LETTERS):
            number = FIRST_LANGUAGE_NAME + named
            if letter in INDIVIDUAL:
                texts = {self.messages.text(number, index) for index in range(-1, len(LETTERS))}
                self.assertEqual(texts, {f"Individ.{letter}"})
                continue
            for reader in LETTERS:
                self.assertEqual(is_translated(self.messages, number, reader), reader not in INDIVIDUAL, (letter, reader))

    def test_language_names_are_unambiguous(self) -> None:
        """The program looks for a name in all languages at once."""
        meaning: dict[str, int] = {}
        for named in range(len(LETTERS)):
            for reader in range(len(LETTERS)):
                name = self.messages.text(FIRST_LANGUAGE_NAME + named, reader).casefold()
                self.assertEqual(meaning.setdefault(name, named), named, name)

    def test_some_texts(self) -> None:
        self.assertEqual(self.gui.text_in(1, "A"), "Vexa")
        self.assertEqual([self.messages.text_in(531, letter) for letter in "DEAFSI7"], ["Ja", "Yes", "Yes", "Oui", "Sí", "Sì", "はい"])
        self.assertEqual([self.messages.text_in(950, letter) for letter in "DEFSI"], ["Deutsch", "German", "allemand", "alemán", "tedesco"])
        self.assertEqual(self.messages.text_in(981, "7"), "日本語")
        self.assertEqual(self.messages.symbol(981), "LANGUAGE_7")


def is_translated(file: DictionaryFile, number: int, letter: str) -> bool:
    """The system takes the source text for a German one as well, so in German it has to be told by the offset."""
    own = letter != "D" or file.offset(number, LETTERS.index("D")) != file.offset(number, -1)
    return own and file.has_text(number, letter)


def entries(path: Path) -> list[tuple[str, str]]:
    """The contexts and source texts, in the lines of the file."""
    return re.findall(r'^msgctxt "(.*)"\nmsgid ((?:".*"\n)+)', path.read_text("utf-8"), re.MULTILINE)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--compiler", type=Path, required=True)
    parser.add_argument("--msgfmt", required=True)
    parser.add_argument("--catalogues", type=Path, required=True, help="the folder of the dictionaries' folders")
    parser.add_argument("--files", type=Path, required=True, help="the folder of the compiled files")
    _, rest = parser.parse_known_args(namespace=OPTIONS)
    unittest.main(argv=[sys.argv[0], *rest])


if __name__ == "__main__":
    main()
