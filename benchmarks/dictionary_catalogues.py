#!/usr/bin/env python3
"""Makes catalogues of many texts, the same ones each time, for measuring look-ups.

Below FOLDER: "dictionary", with template and catalogues for s3dictc; "LANGUAGE.po", the same texts of one language without
contexts, from which msgfmt makes what gettext and Qt look up by the source text alone; and "keys.txt", the source texts, a
line each, in the order in which they are to be looked up.
"""

from __future__ import annotations

import argparse
import random
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tests" / "dictionary"))
from catalogue import header, message, quoted  # noqa: E402
from dictionaryfile import CATALOGUES  # noqa: E402

SEED = 4711
WORDS = (
    "Auftrag Lieferung Rechnung Kunde Artikel Menge Preis Lager Konto Buchung Beleg Datum nicht mehr wird wurde kann mit "
    "ohne für über größer kleiner Gültigkeit Überweisung"
).split()


def sources(count: int, generator: random.Random) -> list[str]:
    """All different, of two to twelve words, as messages are."""
    texts: dict[str, None] = {}
    while len(texts) < count:
        texts[" ".join(generator.choices(WORDS, k=generator.randint(2, 12)))] = None
    return list(texts)


def translation(source: str, language: str) -> str:
    return f"{language}: {source}"


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", type=Path)
    parser.add_argument("--texts", type=int, default=20000)
    parser.add_argument("--language", default="fr", help="of the catalogue without contexts")
    options = parser.parse_args()

    generator = random.Random(SEED)
    texts = sources(options.texts, generator)
    folder = options.folder / "dictionary"
    folder.mkdir(parents=True, exist_ok=True)
    template = [message(number, text) for number, text in enumerate(texts, 1)]
    (folder / "template.pot").write_text(header("X-Dictionary-Key: source") + "".join(template), "utf-8")
    for language in CATALOGUES:
        messages = [message(number, text, translation(text, language)) for number, text in enumerate(texts, 1)]
        (folder / f"{language}.po").write_text(header(f"Language: {language}") + "".join(messages), "utf-8")
    plain = [f"msgid {quoted(text)}\nmsgstr {quoted(translation(text, options.language))}\n\n" for text in texts]
    (options.folder / f"{options.language}.po").write_text(
        header(f"Language: {options.language}") + "".join(plain), "utf-8"
    )
    generator.shuffle(texts)
    (options.folder / "keys.txt").write_text("".join(text + "\n" for text in texts), "utf-8")


if __name__ == "__main__":
    main()
