"""Writes catalogues for tests."""

from __future__ import annotations

from pathlib import Path

CONTENT_TYPE = "Content-Type: text/plain; charset=UTF-8"


def quoted(text: str) -> str:
    for raw, escaped in (("\\", "\\\\"), ('"', '\\"'), ("\n", "\\n"), ("\t", "\\t"), ("\r", "\\r")):
        text = text.replace(raw, escaped)
    return f'"{text}"'


def header(*fields: str) -> str:
    lines = "".join(quoted(field + "\n") + "\n" for field in (CONTENT_TYPE, *fields))
    return f'msgid ""\nmsgstr ""\n{lines}\n'


def message(number: int | str, source: str, text: str = "", before: str = "") -> str:
    """What stands before it are comments, each with its line feed."""
    context = f"#{number}" if isinstance(number, int) else number
    return f"{before}msgctxt {quoted(context)}\nmsgid {quoted(source)}\nmsgstr {quoted(text)}\n\n"


class Folder:
    """A dictionary's catalogues."""

    def __init__(self, path: Path, *fields: str, key: str = "number") -> None:
        self.path = path
        path.mkdir()
        self._template = header(f"X-Dictionary-Key: {key}", *fields)
        self._languages: dict[str, str] = {}
        self.write("template.pot", self._template)

    def entry(self, number: int | str, source: str, symbol: str = "", **translations: str) -> None:
        comment = f"#. symbol: {symbol}\n" if symbol else ""
        self.template(message(number, source, before=comment))
        for language, text in translations.items():
            self.add(language, message(number, source, text))

    def template(self, text: str) -> None:
        self._template += text
        self.write("template.pot", self._template)

    def add(self, language: str, text: str) -> None:
        self._languages[language] = self._languages.get(language, header(f"Language: {language}")) + text
        self.write(f"{language}.po", self._languages[language])

    def write(self, name: str, text: str | bytes) -> None:
        (self.path / name).write_bytes(text.encode("utf-8") if isinstance(text, str) else text)
