#!/usr/bin/env python3
"""Finds the literals that the program looks up in its dictionary, and tells which of them the dictionary doesn't have.

A literal is looked up when it stands in translate(...), or in s3KeyText(...) where it reaches translate() by way of a
variable. What this can't follow is a complaint, too: an argument that is neither a literal nor a variable in a file that
marks its literals, or a literal in a form that isn't known here.
"""

from __future__ import annotations

import argparse
import re
import sys
from dataclasses import dataclass
from pathlib import Path

from dictionaryfile import DictionaryFile

FOLDERS = ["libraries/core/src", "letterlift"]
LOOK_UP = "translate"
MARK = "s3KeyText"

TOKEN = re.compile(
    r"""(?P<space>\s+|//[^\n]*|/\*.*?\*/)
      | (?P<literal>(?P<prefix>u8|u|U|L)?(?P<raw>R)?"(?P<text>(?:[^"\\\n]|\\.)*)"(?P<suffix>\w*))
      | (?P<character>(?:u8|u|U|L)?'(?:[^'\\\n]|\\.)+'\w*)
      | (?P<name>\w+)
      | (?P<other>.)""",
    re.VERBOSE | re.DOTALL,
)
ESCAPES = {"n": "\n", "t": "\t", '"': '"', "'": "'", "\\": "\\"}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    line: int
    # Of a literal: its value, or nothing if its form isn't known here.
    value: str | None = None


@dataclass(frozen=True)
class Literal:
    place: str
    text: str


def tokens_of(source: str) -> list[Token]:
    tokens = []
    line = 1
    for match in TOKEN.finditer(source):
        kind = match.lastgroup or ""
        if match["literal"] is not None:
            tokens.append(Token("literal", match[0], line, value_of(match)))
        elif match["space"] is None:
            tokens.append(Token(kind, match[0], line))
        line += match[0].count("\n")
    return tokens


def value_of(match: re.Match[str]) -> str | None:
    """Only u"..."_s is known, as the project writes its texts; what is put together from pieces has it at the last."""
    if match["prefix"] != "u" or match["raw"] or match["suffix"] not in ("", "_s"):
        return None
    parts = re.split(r"\\(.)", match["text"], flags=re.DOTALL)
    if any(escape not in ESCAPES for escape in parts[1::2]):
        return None
    return "".join(ESCAPES[part] if index % 2 else part for index, part in enumerate(parts))


def arguments_of(tokens: list[Token], start: int) -> list[Token]:
    """The tokens from behind the opening parenthesis to its counterpart."""
    depth = 1
    for end in range(start, len(tokens)):
        depth += {"(": 1, ")": -1}.get(tokens[end].text, 0) if tokens[end].kind == "other" else 0
        if depth == 0:
            return tokens[start:end]
    return tokens[start:]


def literals_in(name: str, source: str) -> tuple[list[Literal], list[str]]:
    """The literals, and the complaints."""
    literals: list[Literal] = []
    complaints: list[str] = []
    variables: list[str] = []
    marked = False
    tokens = tokens_of(source)
    for index in range(len(tokens) - 1):
        token = tokens[index]
        if token.kind != "name" or token.text not in (LOOK_UP, MARK) or tokens[index + 1].text != "(":
            continue
        # A member of something else, such as QPainter's.
        if tokens[index - 1].text in (".", ">"):
            continue
        place = f"{name}:{token.line}"
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
            marked = marked or token.text == MARK
        elif token.text == LOOK_UP and re.fullmatch(r"\*?\w+", text):
            variables.append(f"{place}: {text} is looked up, but no literal in this file is marked by {MARK}()")
        else:
            complaints.append(f"{place}: {token.text}() has neither a literal nor a variable: {text}")
    if not marked:
        complaints += variables
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
