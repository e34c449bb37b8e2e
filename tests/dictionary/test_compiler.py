#!/usr/bin/env python3
"""Tests what the compiler of dictionaries makes, and which catalogues it refuses."""

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

    def test_suffix_in_another_case(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja", fr="Oui")
        folder.write("fr.PO", header("Language: fr") + message(1, "Ja", "Non"))
        self.assert_defects(folder, 'dic/fr.PO: The name of a catalogue ends in ".po".', fatal=True)

    def test_what_is_no_file(self) -> None:
        folder = self.folder()
        (folder.path / "es.po").mkdir()
        (folder.path / "fr.po").symlink_to("none")
        os.mkfifo(folder.path / "it.po")
        defects = [f"dic/{name}.po: It is no file." for name in ("es", "fr", "it")]
        self.assert_defects(folder, *defects, fatal=True)

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
        folder.entry(4, "%1 %", fr="% %1", es="100 % %x %%1", it="%L %L1")
        self.assertEqual(self.run_compiler("check", folder.path).returncode, 0)

    def test_placeholders_of_two_digits(self) -> None:
        folder = self.folder()
        folder.entry(4, "%1 %12", fr="%01 %123", es="%12 %010", it="%0 %L01 %12", pl="%1 %12 %00")
        self.assert_defects(
            folder,
            "dic/it.po: #4: %0 is there 1 times instead of 0.",
            "dic/pl.po: #4: %0 is there 1 times instead of 0.",
            fatal=False,
        )

    def test_duplicate_source(self) -> None:
        folder = self.folder(key="source")
        folder.entry(1, "Ja")
        folder.entry(2, "Ja")
        self.assert_defects(folder, "dic/template.pot: #2: #1 has the same source text.", fatal=False)

    def test_duplicate_source_by_the_second_spelling(self) -> None:
        for number in (896, 931, 938, 939):
            with self.subTest(number):
                folder = self.folder(name=f"dic{number}", key="source")
                folder.entry(1, "Vexa und Vexa")
                folder.entry(number, "vexa ERP und vexa ERP")
                folder.entry(940, "Vexa und Vexa")
                self.assert_defects(
                    folder,
                    f"dic{number}/template.pot: #{number}: #1 has the same source text as its second spelling.",
                    f"dic{number}/template.pot: #940: #1 has the same source text.",
                    fatal=False,
                )
                self.file.unlink()

    def test_only_four_numbers_have_a_second_spelling(self) -> None:
        folder = self.folder(key="source")
        folder.entry(1, "Vexa")
        folder.entry(895, "vexa ERP")
        folder.entry(939, "Vexa ERP")
        self.assertEqual(self.run_compiler("check", folder.path).returncode, 0)

    def test_second_spelling_is_taken(self) -> None:
        folder = self.folder(key="source")
        folder.entry(896, "vexa ERP")
        folder.entry(940, "Vexa")
        self.assert_defects(folder, "dic/template.pot: #940: #896 has the same source text.", fatal=False)

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

    def test_translation_that_is_the_placeholder(self) -> None:
        folder = self.folder()
        folder.entry(12, "zwölf", fr="*** 12 ***", es="*** 13 ***", it="*** 12 *** ")
        self.assert_defects(folder, "dic/fr.po: #12: The translation says that there is none.", fatal=False)

    def test_no_template(self) -> None:
        folder = self.folder()
        (folder.path / "template.pot").unlink()
        self.assert_defects(folder, "dic/template.pot: No such file or directory", fatal=True)

    def test_broken_template_is_no_fault_of_the_entries(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja", fr="Oui")
        folder.add("es", message("one", "Ja", "Sí"))
        folder.write("xx.po", "")
        folder.write("template.pot", header("X-Dictionary-Key: number").replace("UTF-8", "UTF-8\0"))
        self.assert_defects(
            folder,
            "dic/template.pot:3: The character U+0000 would end the text.",
            'dic/es.po: one: The context of "Ja" is no number such as "#1204".',
            'dic/xx.po: There is no language "xx".',
            fatal=True,
        )

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

    def test_syntax_error_is_told_once(self) -> None:
        folder = self.folder()
        folder.write("fr.po", header("Language: fr") + "msgwhat msgwhat msgwhat\n")
        lines = self.run_compiler("check", folder.path).stderr.splitlines()
        self.assertGreater(len(lines), 0)
        self.assertEqual(len(set(lines)), len(lines), lines)

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

    def test_invalid_utf_8_that_gettext_lets_pass(self) -> None:
        for name, text in {
            "escaped": message(1, "Ja", "O?ui").replace("?", r"\xff"),
            "in octal": message(1, "Ja", "O?ui").replace("?", r"\377"),
            "in a comment": message(1, "Ja", "Oui", before="# caf?\n"),
        }.items():
            with self.subTest(name):
                folder = self.folder(name=name)
                folder.entry(1, "Ja")
                folder.write("fr.po", (header("Language: fr") + text).encode("utf-8").replace(b"?", b"\xff"))
                self.assert_defects(folder, f"{name}/fr.po: #1: A text is no valid UTF-8.", fatal=True)

    def test_invalid_utf_8_in_the_template(self) -> None:
        folder = self.folder()
        folder.template(message(1, "J?a").replace("?", r"\xff"))
        self.assert_defects(folder, "dic/template.pot: #1: A text is no valid UTF-8.", fatal=True)

    def test_byte_order_mark(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        folder.write("fr.po", "\ufeff" + header("Language: fr"))
        reason = "The file begins with a byte order mark, which gettext takes for text."
        self.assert_defects(folder, f"dic/fr.po:1: {reason}", fatal=True)

    def test_other_encoding(self) -> None:
        folder = self.folder()
        text = header("Language: fr").replace(CONTENT_TYPE, "Content-Type: text/plain; charset=ISO-8859-1")
        folder.write("fr.po", text)
        self.assert_defects(folder, 'dic/fr.po: The header doesn\'t say "charset=UTF-8".', fatal=True)

    def test_zero_character(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        for zero in ("\0", r"\0", r"\000", r"\x00", r"\400", r"\x100", r"\x1234567800"):
            with self.subTest(zero.encode()):
                folder.write("fr.po", header("Language: fr") + message(1, "Ja", "O?ui").replace("?", zero))
                self.assert_defects(folder, "dic/fr.po:8: The character U+0000 would end the text.", fatal=True)

    def test_what_only_looks_like_a_zero_character(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        text = message(1, "Ja", "?", before="# A comment on \\0.\n").replace("?", r"\\0 0 \060 \\x00 \x1234567841")
        obsolete = '#~ msgctxt "#2"\n#~ msgid "Nein"\n#~ msgstr "N\\0n"\n\n'
        folder.write("fr.po", header("Language: fr") + obsolete + text)
        self.assertEqual(self.compile(folder).text_in(1, "F"), r"\0 0 0 \x00 A")

    def test_zero_character_in_a_comment(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        folder.add("fr", message(1, "Ja", "Oui", before="# A\0B\n"))
        self.assert_defects(folder, "dic/fr.po:6: The character U+0000 would end the comment.", fatal=True)

    def test_contradicting_marks(self) -> None:
        folder = self.folder()
        folder.entry(1, "Ja")
        folder.add("fr", message(1, "Ja", "Oui", before="# s3dictc: empty\n"))
        self.assert_defects(folder, "dic/fr.po: #1: The comment of s3dictc contradicts the rest.", fatal=True)

    def test_misspelt_marks(self) -> None:
        for index, mark in enumerate(("s3dictc:empty", "S3dictc: Empty", "s3dictc: german", " s3dictc: empty", "s3dictc: empty.")):
            with self.subTest(mark):
                folder = self.folder(name=f"dic{index}")
                folder.entry(1, "Ja")
                folder.add("fr", message(1, "Ja", before=f"# A comment.\n# {mark}\n"))
                reason = f'The comment "{mark.strip()}" is none that s3dictc knows.'
                self.assert_defects(folder, f"dic{index}/fr.po: #1: {reason}", fatal=True)

    def test_misspelt_symbol(self) -> None:
        for index, mark in enumerate(("symbol:YES", "Symbol: YES", "symbol:", " symbol: YES")):
            with self.subTest(mark):
                folder = self.folder(name=f"dic{index}")
                folder.template(message(1, "Ja", before=f"#. {mark}\n"))
                reason = f'The comment "{mark.strip()}" is none that s3dictc knows.'
                self.assert_defects(folder, f"dic{index}/template.pot: #1: {reason}", fatal=True)

    def test_comments_that_are_no_marks(self) -> None:
        folder = self.folder()
        folder.template(message(1, "Ja", before="#. The symbol: of truth.\n"))
        folder.add("fr", message(1, "Ja", "Oui", before="# What s3dictc: empty means.\n# s3dictc\n"))
        self.assertEqual(self.compile(folder).symbol(1), "")

    def test_all_defects_of_all_folders_are_told(self) -> None:
        good, bad, worse = self.folder(name="good"), self.folder(name="bad"), self.folder(name="worse")
        bad.add("xx", "")
        worse.add("yy", "")
        checked = self.run_compiler("check", good.path, bad.path, worse.path)
        self.assertEqual(checked.returncode, 1)
        self.assertEqual(len(checked.stderr.splitlines()), 2)


if __name__ == "__main__":
    run_tests(__doc__)
