#!/usr/bin/env python3
"""Shows that literals.py finds each literal, and complains of what it can't follow."""

from __future__ import annotations

import unittest

from literals import literals_in


class Literals(unittest.TestCase):
    def found(self, source: str) -> list[str]:
        literals, complaints = literals_in("a.cpp", source)
        self.assertEqual(complaints, [])
        return [literal.text for literal in literals]

    def complaint(self, source: str) -> str:
        literals, complaints = literals_in("a.cpp", source)
        self.assertEqual(literals, [])
        self.assertEqual(len(complaints), 1, complaints)
        return complaints[0]

    def assert_complaint(self, source: str, expected: str) -> None:
        self.assertEqual(literals_in("a.cpp", source)[1], [expected])

    def test_literal(self) -> None:
        self.assertEqual(self.found('x = translate(u"Datei nicht gefunden"_s);'), ["Datei nicht gefunden"])

    def test_literal_in_pieces(self) -> None:
        self.assertEqual(self.found('translate(u"Datei "\n    u"%1"_s)'), ["Datei %1"])

    def test_escapes(self) -> None:
        self.assertEqual(self.found(r'translate(u"a\n\"b\"\\"_s)'), ['a\n"b"\\'])

    def test_parenthesis_in_the_literal(self) -> None:
        self.assertEqual(self.found('f(translate(u"%1 in %2()"_s), translate(u")"_s))'), ["%1 in %2()", ")"])

    def test_qualified_call(self) -> None:
        self.assertEqual(self.found('::translate ( u"Ja"_s )'), ["Ja"])

    def test_marked_literals_and_a_variable(self) -> None:
        source = 'QString a = s3KeyText(u"Eins"_s), b = s3KeyText(u"Zwei"_s); translate(a); translate(*b);'
        self.assertEqual(self.found(source), ["Eins", "Zwei"])

    def test_declaration(self) -> None:
        self.assertEqual(self.found("QString translate(const QString &sourceText);"), [])

    def test_comments_and_other_texts(self) -> None:
        self.assertEqual(self.found('// translate(x + y)\n/* translate(u"a") */ f("translate(b + c)"); f(\'"\');'), [])

    def test_other_function(self) -> None:
        self.assertEqual(self.found('translateText(a + b); mistranslate("x"); p.translate(1, 2); p->translate(1, 2);'), [])

    def test_comparison(self) -> None:
        self.assertEqual(self.found('a > translate(u"Ja"_s)'), ["Ja"])
        self.assertEqual(self.found('a = b->c() > translate(u"Ja"_s)'), ["Ja"])

    def test_unmarked_variable(self) -> None:
        self.assertEqual(
            self.complaint("\ntranslate(format)"),
            "a.cpp:2: format is looked up, but no literal that is marked by s3KeyText() reaches it",
        )

    def test_variable_that_no_mark_of_the_file_reaches(self) -> None:
        source = 'QString a = s3KeyText(u"Eins"_s); translate(a);\nQString b = c; translate(b);'
        self.assert_complaint(source, "a.cpp:2: b is looked up, but no literal that is marked by s3KeyText() reaches it")

    def test_unmarked_literal_that_reaches_a_variable(self) -> None:
        for source in (
            'QString a = s3KeyText(u"Eins"_s);\nif (b) a = u"Zwei"_s; translate(a);',
            'QString a = b ? s3KeyText(u"Eins"_s) :\nu"Zwei"_s; translate(a);',
            'QString a{s3KeyText(u"Eins"_s)}; a +=\nu"Zwei"_s; translate(a);',
            'QStringList list{s3KeyText(u"Eins"_s),\nu"Zwei"_s}; for (const QString &a : list) translate(a);',
            'QHash<int, QString> h{{1, s3KeyText(u"Eins"_s)},\n{2, u"Zwei"_s}}; const QString a = h.value(1); translate(a);',
            'QHash<int, QString> h = {{1, s3KeyText(u"Eins"_s)}}; auto a = h.value(1,\nu"Zwei"_s); translate(a);',
            'QHash<int, Row> h{{1, {s3KeyText(u"Eins"_s),\nu"Zwei"_s}}}; auto a = h.value(1); translate(a);',
        ):
            with self.subTest(source):
                self.assert_complaint(source, 'a.cpp:2: u"Zwei"_s reaches a without s3KeyText()')

    def test_literals_that_are_not_looked_up(self) -> None:
        source = """
            static const QHash<QString, QString> texts{{u"Permission denied"_s, s3KeyText(u"Eins"_s)},
                                                       {u"%1"_s, u"%1"_s}, {u"No", s3KeyText(u"Zwei"_s)}};
            const QString text = u"other"_s;
            const auto a = texts.constFind(text);
            return a == texts.cend() ? text : translate(*a);"""
        self.assertEqual(self.found(source), ["Eins", "Zwei"])

    def test_look_up_as_a_value(self) -> None:
        for source in ("auto f = translate;", "std::transform(a, b, c, translate);", "f = &translate;", "f = s3KeyText;"):
            with self.subTest(source):
                self.assertIn("isn't called, so what it gets isn't known", self.complaint(source))

    def test_expression(self) -> None:
        for argument in ('u"a"_s + b', 'flag ? u"a"_s : u"b"_s', "texts.at(1)", "", 'tr("a")'):
            with self.subTest(argument):
                self.assertIn("has neither a literal nor a variable", self.complaint(f"translate({argument})"))

    def test_expression_in_a_mark(self) -> None:
        self.assertIn("has neither a literal", self.complaint("s3KeyText(text)"))

    def test_unknown_form(self) -> None:
        for literal in ('"a"', 'u"a"', 'u8"a"', '"a"_L1', 'u"a"_qs', 'uR"(a)"_s', r'u"\x41"_s', r'u"\u00e4"_s', '"a" u"b"_s'):
            with self.subTest(literal):
                self.assertIn("the form of this literal isn't known", self.complaint(f"translate({literal})"))


if __name__ == "__main__":
    unittest.main()
