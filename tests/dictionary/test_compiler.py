#!/usr/bin/env python3
"""Tests what the compiler of dictionaries makes, and what it refuses to make."""

from __future__ import annotations

import os
import struct

from catalogue import CONTENT_TYPE, header, message
from compilercase import Case, run_tests
from dictionaryfile import CATALOGUES, LETTERS


class Compile(Case):
    def test_texts_and_symbols(self) -> None:
        folder = self.folder()
        folder.entry(7, "Ja", "YES", de="Ja.", en="Yes", en_US="Yeah", ja="はい")
        folder.entry(2, "Größe 😀\n\t\"%1\"", fr="Taille %1")
        file = self.compile(folder)
        self.assertEqual((file.columns, file.text_count), (33, 7))
        self.assertEqual(file.source(7), "Ja")
        self.assertEqual([file.text_in(7, letter) for letter in "DEA7"], ["Ja.", "Yes", "Yeah", "はい"])
        self.assertEqual((file.symbol(7), file.symbol(2), file.symbol(1)), ("YES", "", ""))
        self.assertEqual(file.source(2), "Größe 😀\n\t\"%1\"")
        self.assertEqual(file.text_in(2, "F"), "Taille %1")

    def test_header(self) -> None:
        folder = self.folder()
        folder.entry(12, "a")
        content = self.compile(folder).content
        self.assertEqual(content[:11], b"0043300012U")
        pool, second_pool = struct.unpack_from(">2I", content, 11)
        self.assertEqual(second_pool, 0)
        # One symbol, the empty one.
        self.assertEqual(len(content), 19 + 13 * 33 * 4 + 12 * 18 + pool + 1)

    def test_every_language_has_its_column(self) -> None:
        folder = self.folder()
        folder.entry(1, "x", **{name: f"text in {name}" for name in CATALOGUES})
        file = self.compile(folder)
        self.assertEqual([file.text(1, index) for index in range(32)], [f"text in {name}" for name in CATALOGUES])
        self.assertTrue(all(file.has_text(1, letter) for letter in LETTERS))

    def test_unused_numbers_read_as_placeholders(self) -> None:
        folder = self.folder()
        folder.entry(3, "a")
        file = self.compile(folder)
        self.assertEqual([file.source(number) for number in (1, 2, 3)], ["", "", "a"])
        self.assertEqual([file.text_in(2, letter) for letter in LETTERS], ["*** 2 ***"] * 32)

    def test_empty_dictionary(self) -> None:
        file = self.compile(self.folder())
        self.assertEqual((file.text_count, file.numbers()), (0, []))

    def test_without_a_translation_the_second_language_is_shared(self) -> None:
        folder = self.folder()
        folder.entry(1, "Quelle", de="Deutsch", en_US="American", fr="French")
        file = self.compile(folder)
        for letter in LETTERS:
            own = {"D": "Deutsch", "A": "American", "F": "French"}.get(letter)
            self.assertEqual(file.text_in(1, letter), own or "American")
            self.assertEqual(file.has_text(1, letter), own is not None)
        self.assertEqual(file.offset(1, LETTERS.index("S")), file.offset(1, LETTERS.index("A")))

    def test_without_the_second_language_the_first_one_is_shared(self) -> None:
        folder = self.folder()
        folder.entry(1, "Quelle", de="Deutsch", fr="French")
        file = self.compile(folder)
        self.assertEqual({file.text_in(1, letter) for letter in LETTERS if letter != "F"}, {"Deutsch"})
        self.assertEqual([letter for letter in LETTERS if file.has_text(1, letter)], ["D", "F"])

    def test_without_any_translation_the_source_is_shared(self) -> None:
        folder = self.folder()
        folder.entry(1, "Quelle")
        file = self.compile(folder)
        self.assertEqual({file.offset(1, index) for index in range(-1, 32)}, {file.offset(1, -1)})
        self.assertEqual(file.text_in(1, "V"), "Quelle")

    def test_equal_texts_are_translations_all_the_same(self) -> None:
        folder = self.folder()
        folder.entry(1, "Details", de="Details", en="Details", en_US="Details")
        file = self.compile(folder)
        self.assertEqual([letter for letter in LETTERS if file.has_text(1, letter)], ["D", "E", "A"])

    def test_fuzzy_entries_are_untranslated(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja", en_US="Yes")
        folder.add("fr", message(1, "Ja", "Non", before="#, fuzzy\n"))
        file = self.compile(folder)
        self.assertEqual((file.text_in(1, "F"), file.has_text(1, "F")), ("Yes", False))

    def test_obsolete_entries_are_left_out(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja", fr="Oui")
        folder.add("fr", '#~ msgctxt "#2"\n#~ msgid "Nein"\n#~ msgstr "Non"\n')
        self.assertEqual(self.compile(folder).numbers(), [1])

    def test_highest_number(self) -> None:
        folder = self.folder()
        folder.entry(99999, "last", fr="dernier")
        file = self.compile(folder)
        self.assertEqual((file.text_count, file.text_in(99999, "F")), (99999, "dernier"))

    def test_text_count_above_the_last_number(self) -> None:
        folder = self.folder("X-Dictionary-Text-Count: 12")
        folder.entry(5, "a")
        self.assertEqual(self.compile(folder).text_count, 12)

    def test_same_catalogues_same_bytes(self) -> None:
        first, second = self.folder(name="first"), self.folder(name="second")
        for folder in (first, second):
            folder.entry(1, "Ja", "YES", fr="Oui", de="Ja")
            folder.entry(2, "Nein", "NO", fr="Non")
        self.assertEqual(self.compile(first).content, self.compile(second).content)


class Defects(Case):
    def test_unknown_language(self) -> None:
        folder = self.folder()
        folder.add("tlh", "")
        self.assert_defects(folder, 'dic/tlh.po: There is no language "tlh".', fatal=True)

    def test_other_language_in_the_header(self) -> None:
        folder = self.folder()
        folder.write("fr.po", header("Language: es"))
        self.assert_defects(folder, 'dic/fr.po: The header\'s language is "es" instead of "fr".', fatal=False)

    def test_placeholder_counts(self) -> None:
        folder = self.folder()
        folder.entry(4, "%1 nach %2", fr="%1 vers %1", es="%2 %1", it="%L1 a %2 %3")
        self.assert_defects(
            folder,
            "dic/fr.po: #4: %1 is there 2 times instead of 1, %2 is there 0 times instead of 1.",
            "dic/it.po: #4: %3 is there 1 times instead of 0.",
            fatal=False,
        )

    def test_placeholder_beside_a_percent_sign(self) -> None:
        folder = self.folder()
        folder.entry(4, "%1 %", fr="% %1", es="100 % %0 %1")
        self.assertEqual(self.run_compiler("check", folder.path).returncode, 0)

    def test_duplicate_source(self) -> None:
        folder = self.folder(key="source")
        folder.entry(1, "Ja")
        folder.entry(2, "Ja")
        self.assert_defects(folder, "dic/template.pot: #2: #1 has the same source text.", fatal=False)

    def test_duplicate_source_where_numbers_count(self) -> None:
        folder = self.folder(key="number")
        folder.entry(1, "Ja")
        folder.entry(2, "Ja")
        self.assertEqual(self.run_compiler("check", folder.path).returncode, 0)

    def test_duplicate_symbol(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja", "YES")
        folder.entry(2, "Jawohl", "YES")
        self.assert_defects(folder, "dic/template.pot: #2: #1 has the same symbol.", fatal=False)

    def test_two_symbols(self) -> None:
        folder = self.folder()
        folder.template(message(1, "Ja", before="#. symbol: A\n#. symbol: B\n"))
        self.assert_defects(folder, "dic/template.pot: #1: There is more than one symbol.", fatal=True)

    def test_duplicate_number(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        folder.entry(1, "Nein")
        self.assert_defects(folder, "dic/template.pot: #1: The number is there twice.", fatal=True)

    def test_duplicate_entry(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja", fr="Oui")
        folder.add("fr", message(1, "Ja", "Si"))
        checked = self.run_compiler("check", folder.path)
        self.assertEqual(checked.returncode, 1)
        self.assertRegex(checked.stderr, r"^dic/fr\.po:\d+: duplicate message definition")

    def test_number_above_the_limit(self) -> None:
        folder = self.folder()
        folder.entry(100000, "too many")
        self.assert_defects(folder, "dic/template.pot: #100000: The number is above 99999.", fatal=True)

    def test_context_that_is_no_number(self) -> None:
        for index, context in enumerate(["12", "#", "#0", "#01", "#-1", "#1a", "menu", "#１"]):
            with self.subTest(context):
                folder = self.folder(name=f"dic{index}")
                folder.entry(context, "Ja")
                reason = 'The context of "Ja" is no number such as "#1204".'
                self.assert_defects(folder, f"dic{index}/template.pot: {context}: {reason}", fatal=True)

    def test_entry_without_a_context(self) -> None:
        folder = self.folder()
        folder.template('msgid "Ja"\nmsgstr ""\n')
        reason = 'The context of "Ja" is no number such as "#1204".'
        self.assert_defects(folder, f"dic/template.pot: {reason}", fatal=True)

    def test_entry_that_the_template_does_not_have(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        folder.add("fr", message(2, "Nein", "Non"))
        reason = "dic/template.pot has no such text; msgmerge brings the two together."
        self.assert_defects(folder, f"dic/fr.po: #2: {reason}", fatal=True)

    def test_entry_of_another_source_text(self) -> None:
        folder = self.folder()
        folder.entry(1, "Jawohl")
        folder.add("fr", message(1, "Ja", "Oui"))
        reason = "dic/template.pot has no such text; msgmerge brings the two together."
        self.assert_defects(folder, f"dic/fr.po: #1: {reason}", fatal=True)

    def test_plural_forms(self) -> None:
        folder = self.folder()
        folder.template('msgctxt "#1"\nmsgid "a"\nmsgid_plural "b"\nmsgstr[0] ""\nmsgstr[1] ""\n')
        self.assert_defects(folder, "dic/template.pot: #1: There are no plural forms in a dictionary.", fatal=True)

    def test_translation_in_the_template(self) -> None:
        folder = self.folder()
        folder.template(message(1, "Ja", "Yes"))
        self.assert_defects(folder, "dic/template.pot: #1: There is a translation in the template.", fatal=False)

    def test_empty_source(self) -> None:
        folder = self.folder()
        folder.entry(1, "")
        self.assert_defects(folder, "dic/template.pot: #1: The source text is empty.", fatal=False)

    def test_source_that_is_the_placeholder(self) -> None:
        folder = self.folder()
        folder.entry(12, "*** 12 ***")
        folder.entry(13, "*** 12 ***")
        self.assert_defects(folder, "dic/template.pot: #12: The source text says that there is none.", fatal=False)

    def test_no_template(self) -> None:
        folder = self.folder()
        (folder.path / "template.pot").unlink()
        self.assert_defects(folder, "dic/template.pot: No such file or directory", fatal=True)

    def test_template_without_a_key(self) -> None:
        folder = self.folder(key="letter")
        reason = 'The header\'s "X-Dictionary-Key" has to be "number" or "source".'
        self.assert_defects(folder, f"dic/template.pot: {reason}", fatal=True)

    def test_bad_text_count(self) -> None:
        for index, count in enumerate(["many", "-1", "100000"]):
            with self.subTest(count):
                folder = self.folder(f"X-Dictionary-Text-Count: {count}", name=f"dic{index}")
                reason = 'The header\'s "X-Dictionary-Text-Count" is no number up to 99999.'
                self.assert_defects(folder, f"dic{index}/template.pot: {reason}", fatal=True)

    def test_syntax_error(self) -> None:
        folder = self.folder()
        folder.write("fr.po", header("Language: fr") + 'msgctxt "#1\n')
        checked = self.run_compiler("check", folder.path)
        self.assertEqual(checked.returncode, 1)
        self.assertRegex(checked.stderr, r"^dic/fr\.po:\d+: end-of-line within string\n")

    def test_more_syntax_errors_than_are_told(self) -> None:
        folder = self.folder()
        folder.write("fr.po", header("Language: fr") + "msgwhat\n" * 100)
        folder.write("xx.po", "")
        checked = self.run_compiler("check", folder.path)
        self.assertEqual(checked.returncode, 1)
        # The other catalogues are looked at nevertheless.
        self.assertIn('dic/xx.po: There is no language "xx".', checked.stderr)

    def test_invalid_utf_8(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        for name, spoilt in {"byte": b"\xff", "surrogate": b"\xed\xa0\x80", "cut": b"\xc3"}.items():
            with self.subTest(name):
                text = header("Language: fr") + message(1, "Ja", "O?ui")
                folder.write("fr.po", text.encode("utf-8").replace(b"?", spoilt))
                checked = self.run_compiler("check", folder.path)
                self.assertEqual(checked.returncode, 1)
                self.assertRegex(checked.stderr, r"(?i)^dic/fr\.po:.*(invalid multibyte|no valid UTF-8)")

    def test_other_encoding(self) -> None:
        folder = self.folder()
        text = header("Language: fr").replace(CONTENT_TYPE, "Content-Type: text/plain; charset=ISO-8859-1")
        folder.write("fr.po", text)
        self.assert_defects(folder, 'dic/fr.po: The header doesn\'t say "charset=UTF-8".', fatal=True)

    def test_zero_character(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        for zero in ("\0", r"\0", r"\000", r"\x00", r"\400", r"\x100"):
            with self.subTest(zero.encode()):
                folder.write("fr.po", header("Language: fr") + message(1, "Ja", "O?ui").replace("?", zero))
                self.assert_defects(folder, "dic/fr.po:8: The character U+0000 would end the text.", fatal=True)

    def test_what_only_looks_like_a_zero_character(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        text = message(1, "Ja", "?", before="# A comment on \\0.\n").replace("?", r"\\0 0 \060 \\x00")
        folder.write("fr.po", header("Language: fr") + text)
        self.assertEqual(self.compile(folder).text_in(1, "F"), r"\0 0 0 \x00")

    def test_contradicting_marks(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        folder.add("fr", message(1, "Ja", "Oui", before="# s3dictc: empty\n"))
        self.assert_defects(folder, "dic/fr.po: #1: The comment of s3dictc contradicts the rest.", fatal=True)

    def test_all_defects_of_all_folders_are_told(self) -> None:
        good, bad, worse = self.folder(name="good"), self.folder(name="bad"), self.folder(name="worse")
        bad.add("xx", "")
        worse.add("yy", "")
        checked = self.run_compiler("check", good.path, bad.path, worse.path)
        self.assertEqual(checked.returncode, 1)
        self.assertEqual(len(checked.stderr.splitlines()), 2)


class Writing(Case):
    def test_refused_catalogues_leave_the_file_as_it_is(self) -> None:
        folder = self.folder()
        folder.add("xx", "")
        self.file.write_bytes(b"before")
        self.assertEqual(self.run_compiler("compile", folder.path, self.file).returncode, 1)
        self.assertEqual(self.file.read_bytes(), b"before")

    def test_failed_write_leaves_the_file_as_it_is(self) -> None:
        folder = self.folder()
        folder.entry(500, "a" * 1000)
        self.file.write_bytes(b"before")
        done = self.run_compiler("compile", folder.path, self.file, limit=4096)
        self.assertEqual(done.returncode, 1)
        self.assertIn("can't be written", done.stderr)
        self.assertEqual(self.file.read_bytes(), b"before")
        self.assertEqual(sorted(path.name for path in self.place.iterdir()), ["dic", "out.dat.0"])

    def test_folder_that_does_not_exist(self) -> None:
        done = self.run_compiler("compile", self.folder().path, self.place / "none" / "out")
        self.assertEqual(done.returncode, 1)
        self.assertIn("can't be written", done.stderr)

    def test_failed_dump_leaves_nothing(self) -> None:
        folder = self.folder()
        folder.entry(1, "a" * 10000)
        self.compile(folder)
        done = self.run_compiler("dump", self.file, self.place / "dumped", limit=4096)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(sorted(path.name for path in self.place.iterdir()), ["dic", "out.dat.0"])

    def test_dump_does_not_touch_what_is_there(self) -> None:
        folder = self.folder()
        self.compile(folder)
        done = self.run_compiler("dump", self.file, folder.path)
        self.assertEqual((done.returncode, done.stderr), (1, f"s3dictc: {folder.path} is there already.\n"))
        self.assertEqual(os.listdir(folder.path), ["template.pot"])

    def test_dump_into_an_empty_folder(self) -> None:
        self.compile(self.folder())
        (self.place / "dumped").mkdir()
        self.assertEqual(len(os.listdir(self.dump(self.file))), 33)


class CommandLine(Case):
    def test_wrong_use(self) -> None:
        for arguments in ([], ["compile"], ["compile", "a"], ["dump", "a", "b", "c"], ["check"], ["mend", "a"], ["--what"],
                          ["dump", "--lenient", "a", "b"], ["stats", "--by-source", "a"]):  # fmt: skip
            with self.subTest(arguments):
                done = self.run_compiler(*arguments)
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertNotEqual(done.stderr, "")

    def test_help(self) -> None:
        done = self.run_compiler("--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("s3dictc compile", done.stdout)

    def test_stats(self) -> None:
        folder = self.folder()
        folder.entry(1, "eins", de="eins", en_US="one", fr="un")
        folder.entry(2, "zwei", de="zwei", fr="deux")
        folder.entry(3, "drei", fr="trois")
        folder.entry(4, "vier", en_US="four")
        folder.add("fr", message(4, "vier", "quatre", before="#, fuzzy\n"))
        done = self.run_compiler("stats", folder.path)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        lines = done.stdout.splitlines()
        self.assertEqual(lines[0], f"{folder.path}: 4 texts")
        counts = {line.split()[1]: [int(count) for count in line.split()[2:]] for line in lines[2:]}
        self.assertEqual(list(counts), CATALOGUES)
        self.assertEqual(counts["de"], [2, 0, 2])
        self.assertEqual(counts["en_US"], [2, 1, 1])
        self.assertEqual(counts["fr"], [3, 1, 0])
        self.assertEqual(counts["ja"], [0, 3, 1])


if __name__ == "__main__":
    run_tests(__doc__)
