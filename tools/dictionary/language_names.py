#!/usr/bin/python3
"""Prints the names of all languages in one of them, as Unicode's CLDR has them, in the form of a catalogue.

tools/dictionaries hands it to msgmerge, which takes from it what a catalogue doesn't have yet. CLDR's data come with ICU
and not with a copy in here.
"""

from __future__ import annotations

import argparse
import re
from pathlib import Path

import icu

FIRST_NUMBER = 950
ENTRY = re.compile(r'^msgctxt "#(\d+)"\nmsgid "([^"\\]*)"$', re.MULTILINE)

# Under the catalogues' names. A name is asked for in the country's form of the language, and asked of is the language
# as such where there are no two of them.
LOCALES = {
    "de": "de_DE", "en": "en_GB", "fr": "fr_FR", "es": "es_ES", "it": "it_IT", "pl": "pl_PL", "ru": "ru_RU",
    "hu": "hu_HU", "cs": "cs_CZ", "tr": "tr_TR", "individual-1": None, "individual-2": None, "individual-3": None,
    "en_US": "en_US", "ro": "ro_RO", "id": "id_ID", "nl": "nl_NL", "mk": "mk_MK", "bg": "bg_BG", "sr": "sr_RS",
    "sl": "sl_SI", "sk": "sk_SK", "pt": "pt_PT", "zh_CN": "zh_CN", "zh_TW": "zh_TW", "el": "el_GR", "th": "th_TH",
    "ar": "ar_EG", "fa": "fa_IR", "vi": "vi_VN", "ur": "ur_PK", "ja": "ja_JP",
}  # fmt: skip
SPECIAL_NAMES = {"zh_CN": "zh_Hans", "zh_TW": "zh_Hant"}


def name_of(language: str, reader: str) -> str:
    return str(icu.Locale(SPECIAL_NAMES.get(language, language)).getDisplayName(icu.Locale(LOCALES[reader])))


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("template", type=Path, help="the template of the message dictionary")
    parser.add_argument("language", choices=LOCALES, help="the language of the names")
    options = parser.parse_args()

    print('msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n')
    sources = {int(number): source for number, source in ENTRY.findall(options.template.read_text("utf-8"))}
    for number, language in enumerate(LOCALES, FIRST_NUMBER):
        if LOCALES[language] and LOCALES[options.language]:
            name = name_of(language, options.language)
            print(f'msgctxt "#{number}"\nmsgid "{sources[number]}"\nmsgstr "{name}"\n')


if __name__ == "__main__":
    main()
