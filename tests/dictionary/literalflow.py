"""Follows literals to the variables of a file that they reach, by name alone."""

from __future__ import annotations

import re

from sourcetokens import Token, arguments_of

LOOK_UP = "translate"
MARK = "s3KeyText"
OPENING = {"(": ")", "{": "}", "[": "]"}


def counterpart(tokens: list[Token], start: int) -> int:
    """The index of the bracket that closes the one at the start."""
    depth = 0
    for index in range(start, len(tokens)):
        if tokens[index].kind != "other":
            continue
        depth += (tokens[index].text in OPENING) - (tokens[index].text in OPENING.values())
        if depth == 0:
            return index
    return len(tokens)


def parts_of(tokens: list[Token]) -> list[list[Token]]:
    """What the commas outside of brackets divide."""
    parts: list[list[Token]] = [[]]
    index = 0
    while index < len(tokens):
        end = counterpart(tokens, index) if tokens[index].kind == "other" and tokens[index].text in OPENING else index
        if tokens[index].kind == "other" and tokens[index].text == ",":
            parts.append([])
        else:
            parts[-1] += tokens[index : end + 1]
        index = end + 1
    return [part for part in parts if part]


def is_group(tokens: list[Token]) -> bool:
    return tokens[0].text == "{" and counterpart(tokens, 0) == len(tokens) - 1


def has_mark(tokens: list[Token]) -> bool:
    return any(token.kind == "name" and token.text == MARK for token in tokens)


def has_words(token: Token) -> bool:
    """A text such as "%1" is the same in all languages."""
    return re.search(r"[^\W\d_]", re.sub(r"%L?\d+", "", token.value or token.text)) is not None


def unmarked_in(tokens: list[Token]) -> list[Token]:
    """The literals outside of calls that see to them, and outside of rows' columns that aren't looked up."""
    found: list[Token] = []
    index = 0
    while index < len(tokens):
        token = tokens[index]
        end = index
        if token.kind == "name" and token.text in (LOOK_UP, MARK):
            end = counterpart(tokens, index + 1)
        elif token.kind == "other" and token.text == "{":
            end = counterpart(tokens, index)
            found += unmarked_in_rows(parts_of(tokens[index + 1 : end]))
        elif token.kind == "literal" and has_words(token):
            found.append(token)
        index = end + 1
    return found


def unmarked_in_rows(parts: list[list[Token]]) -> list[Token]:
    if not parts or not all(is_group(part) for part in parts):
        return [token for part in parts for token in unmarked_in(part)]
    rows = [parts_of(part[1:-1]) for part in parts]
    columns = {column for row in rows for column, cell in enumerate(row) if has_mark(cell)}
    return [token for row in rows for column in columns if column < len(row) for token in unmarked_in(row[column])]


class Flow:
    def __init__(self, tokens: list[Token]) -> None:
        self._sources: dict[str, list[list[Token]]] = {}
        for index in range(1, len(tokens) - 1):
            if tokens[index].kind == "name":
                source = self._source(tokens, index)
                if source:
                    self._sources.setdefault(tokens[index].text, []).append(source)

    def reaching(self, name: str) -> tuple[bool, list[Token]]:
        """Whether marked literals reach the variable, and the unmarked ones that do."""
        marked = False
        unmarked: list[Token] = []
        seen: set[str] = set()
        names = [name]
        while names:
            name = names.pop()
            if name in seen:
                continue
            seen.add(name)
            for source in self._sources.get(name, []):
                marked = marked or has_mark(source)
                unmarked += unmarked_in(source)
                names += self._names_in(source)
        return marked, unmarked

    @staticmethod
    def _source(tokens: list[Token], index: int) -> list[Token]:
        """What the variable gets here, if it does."""
        following, second = tokens[index + 1].text, tokens[index + 2].text if index + 2 < len(tokens) else ""
        is_declared = tokens[index - 1].kind == "name" or tokens[index - 1].text in (">", "&", "*")
        if following == "=" and second != "=" or following == "+" and second == "=":
            return Flow._until_end(tokens, index + 2)
        if following == ":" and second != ":" and is_declared and tokens[index - 1].text != "case":
            return Flow._until_end(tokens, index + 2)
        if following in ("{", "(") and is_declared and tokens[index - 1].text not in ("return", "else", "case"):
            return tokens[index + 1 : counterpart(tokens, index + 1) + 1]
        return []

    @staticmethod
    def _until_end(tokens: list[Token], start: int) -> list[Token]:
        index = start
        while index < len(tokens):
            token = tokens[index]
            if token.kind == "other" and token.text in (";", ",", ")", "}", "]"):
                break
            index = counterpart(tokens, index) + 1 if token.kind == "other" and token.text in OPENING else index + 1
        return tokens[start:index]

    @staticmethod
    def _names_in(tokens: list[Token]) -> list[str]:
        """Those whose values may be the result, which an argument's seldom is."""
        names: list[str] = []
        index = 0
        while index < len(tokens):
            token = tokens[index]
            if token.kind == "name":
                names.append(token.text)
                if index + 1 < len(tokens) and tokens[index + 1].text == "(":
                    index += 1 + len(arguments_of(tokens, index + 2)) + 1
            index += 1
        return names
