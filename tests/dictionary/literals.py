#!/usr/bin/env python3
"""Finds the literals that the program looks up in its dictionary, and tells which of them the dictionary doesn't have.

A literal is looked up when it stands in translate(...), or in s3KeyText(...) where it reaches translate() by way of a
variable. What this can't follow is a complaint, too: an argument that is neither a literal nor a variable that marked
literals reach, a literal that reaches it without a mark or has a form that isn't known here, or translate() as a value.
"""

from __future__ import annotations

import argparse
import re
import sys
from dataclasses import dataclass
from pathlib import Path

from dictionaryfile import DictionaryFile
from literalflow import LOOK_UP, MARK, Flow
from sourcetokens import Token, arguments_of, tokens_of

FOLDERS = ["libraries/core/src", "letterlift"]

@dataclass(frozen=True)
class Literal:
    place: str
    text: str


def is_member(tokens: list[Token], index: int) -> bool:
    """Whether the name belongs to something else, such as a QPainter."""
    before = [token.text for token in tokens[max(index - 2, 0) : index]]
    return before[-1:] == ["."] or before == ["-", ">"]


def literals_in(name: str, source: str) -> tuple[list[Literal], list[str]]:
    """The literals, and the complaints."""
    literals: list[Literal] = []
    complaints: list[str] = []
    tokens = tokens_of(source)
    flow = Flow(tokens)
    for index, token in enumerate(tokens):
        if token.kind != "name" or token.text not in (LOOK_UP, MARK) or is_member(tokens, index):
            continue
        place = f"{name}:{token.line}"
        if index + 1 == len(tokens) or tokens[index + 1].text != "(":
            complaints.append(f"{place}: {token.text} isn't called, so what it gets isn't known")
            continue
        arguments = arguments_of(tokens, index + 2)
        # A declaration or a definition.
        if [argument.text for argument in arguments[:2]] in (["const", "QString"], ["QString", "german"]):
            continue
        text = "".join(argument.text for argument in arguments)
        if arguments and all(argument.kind == "literal" for argument in arguments):
            values = [argument.value for argument in arguments]
            if None in values or not arguments[-1].text.endswith("_s"):
                complaints.append(f"{place}: the form of this literal isn't known: {text}")
                continue
            literals.append(Literal(place, "".join(value or "" for value in values)))
        elif token.text == LOOK_UP and re.fullmatch(r"\*?\w+", text):
            marked, unmarked = flow.reaching(text.lstrip("*"))
            if not marked:
                complaints.append(f"{place}: {text} is looked up, but no literal that is marked by {MARK}() reaches it")
            complaints += [f"{name}:{found.line}: {found.text} reaches {text} without {MARK}()" for found in unmarked]
        else:
            complaints.append(f"{place}: {token.text}() has neither a literal nor a variable: {text}")
    return literals, complaints


def literals_below(root: Path) -> tuple[list[Literal], list[str]]:
    literals: list[Literal] = []
    complaints: list[str] = []
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in {".cpp", ".h"}:
                found = literals_in(path.relative_to(root).as_posix(), path.read_text("utf-8"))
                literals += found[0]
                complaints += found[1]
    return literals, complaints


def missing(literals: list[Literal], dictionary: DictionaryFile) -> list[str]:
    known = {dictionary.source(number) for number in dictionary.numbers()}
    return [f"{literal.place}: not in the dictionary: {literal.text!r}" for literal in literals if literal.text not in known]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--root", type=Path, required=True, help="the project's folder")
    parser.add_argument("--dictionary", type=Path, required=True, help="the compiled dictionary of texts by their source")
    options = parser.parse_args()
    literals, complaints = literals_below(options.root)
    if not literals:
        complaints.append("There is no literal at all.")
    complaints += missing(literals, DictionaryFile.read(options.dictionary))
    print("\n".join([*complaints, f"{len(literals)} literals, {len(complaints)} complaints"]))
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
