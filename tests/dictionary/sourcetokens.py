"""Takes C++ apart, as far as the search for literals needs it."""

from __future__ import annotations

import re
from dataclasses import dataclass

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
