"""Reads the messages of a store back, with a parser that has nothing in common with their writer."""

from __future__ import annotations

import hashlib
import re
from email import policy
from email.message import EmailMessage
from email.parser import BytesParser
from pathlib import Path
from typing import Any

FOLDERS = ["drafts", "sent"]

# All that a mail item can leave in a message's header. An expectation has to speak of each, be it as absent.
HEADERS = [
    "From",
    "Sender",
    "To",
    "Cc",
    "Bcc",
    "Reply-To",
    "Subject",
    "Importance",
    "X-Priority",
    "Disposition-Notification-To",
    "Return-Receipt-To",
    "X-Unsent",
]

MESSAGE_ID = re.compile(r"<[^<>@\s]+@[^<>@\s]+>")
LONGEST_TEXT_ATTACHMENT = 400


def read_messages(store: Path) -> list[dict[str, Any]]:
    """In the form of expected.messages.json."""
    paths = [path for folder in FOLDERS for path in sorted((store / folder).glob("*"))]
    return [{"folder": path.parent.name} | describe_message(path.read_bytes()) for path in paths]


def message_faults(store: Path) -> list[str]:
    """What is wrong with the messages as messages, whatever they are about."""
    faults = []
    for path in sorted(path for folder in FOLDERS for path in (store / folder).glob("*")):
        faults += [f"{path.parent.name}/{path.name}: {fault}" for fault in _faults(path.read_bytes())]
    return faults


def expectation_faults(expected: list[dict[str, Any]]) -> list[str]:
    """A header that an expectation leaves out would be a header that nobody looks at."""
    faults = []
    for number, message in enumerate(expected, 1):
        named = set(message.get("headers", {})) | set(message.get("absent", []))
        missing = [header for header in HEADERS if header not in named]
        if missing:
            faults.append(f"expected message {number} says nothing of {', '.join(missing)}")
    return faults


def describe_message(content: bytes) -> dict[str, Any]:
    message = _parsed(content)
    parts = list(message.iter_parts()) if message.is_multipart() else [message]
    body, *attachments = parts
    return {
        "headers": {name: str(message[name]) for name in HEADERS if message[name] is not None},
        "absent": [name for name in HEADERS if message[name] is None],
        "html" if body.get_content_type() == "text/html" else "text": body.get_content()
        .replace("\r\n", "\n")
        .split("\n"),
        "attachments": [_attachment(part) for part in attachments],
    }


def _attachment(part: EmailMessage) -> dict[str, Any]:
    content = part.get_payload(decode=True)
    assert isinstance(content, bytes)
    described: dict[str, Any] = {"filename": part.get_filename(), "type": part.get_content_type()}
    if part.get_content_maintype() == "text" and len(content) <= LONGEST_TEXT_ATTACHMENT:
        return described | {"text": content.decode("utf-8")}
    return described | {"size": len(content), "sha256": hashlib.sha256(content).hexdigest()}


def _faults(content: bytes) -> list[str]:
    faults = []
    if not content.endswith(b"\r\n"):
        faults.append("the last line has no line end")
    if re.search(rb"[\r\n]", content.replace(b"\r\n", b"")):
        faults.append("a line ends in something else than CRLF")
    message = _parsed(content)
    if message["Date"] is None or message["Date"].datetime is None:
        faults.append(f"the date {message['Date']} is none")
    if message["Message-ID"] is None or not MESSAGE_ID.fullmatch(str(message["Message-ID"])):
        faults.append(f"the message id {message['Message-ID']} is none")
    for part in message.walk():
        faults += [f"{defect!r}" for defect in part.defects]
        faults += [f"{name}: {defect!r}" for name, value in part.items() for defect in value.defects]
    return faults


def _parsed(content: bytes) -> EmailMessage:
    message = BytesParser(policy=policy.default).parsebytes(content)
    assert isinstance(message, EmailMessage)
    return message
