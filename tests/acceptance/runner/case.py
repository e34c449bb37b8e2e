"""What a case directory says: case.json, the expectations beside it, and where the input comes from."""

from __future__ import annotations

import json
from dataclasses import asdict, dataclass, field
from pathlib import Path
from typing import Any

from runner.steps import Step, read_steps

CASE_FILE = "case.json"
SCENARIO_FILE = "scenario.json"
INPUT_FOLDER = "input"
EXPECTED_LOG = "expected.log"
EXPECTED_JOURNAL = "expected.journal.jsonl"
EXPECTED_MESSAGES = "expected.messages.json"

# The expectations that a platform can have a variant of, such as expected.wine.log.
EXPECTED_FILES = [EXPECTED_LOG, EXPECTED_JOURNAL, EXPECTED_MESSAGES]

REPOSITORY = Path(__file__).resolve().parents[3]

# A file under another name would be an expectation that nobody looks at.
KNOWN_FILES = {CASE_FILE, SCENARIO_FILE, INPUT_FOLDER, *EXPECTED_FILES}

REQUIRED_KEYS = {"about": str, "arguments": list, "exit": int, "log": bool}
OPTIONAL_KEYS = {
    "as": str,
    "boxes": list,
    "dictionaries": str,
    "environment": dict,
    "files": list,
    "input": str,
    "logDirectory": str,
    "only": dict,
    "setup": list,
    "variants": dict,
}


class CaseError(Exception):
    """The case itself is wrong, whatever the program does."""


class CaseSkipped(Exception):
    """The case is for another platform; the text says why."""


@dataclass(frozen=True)
class Box:
    """A message box, with the key that closes it."""

    icon: str
    title: str
    text: str
    buttons: list[str]
    key: str = "Return"

    def as_json(self) -> dict[str, Any]:
        return asdict(self)


@dataclass(frozen=True)
class Case:
    directory: Path
    arguments: list[str]
    exit: int
    log: bool
    log_directory: str = "."
    boxes: list[Box] = field(default_factory=list)
    environment: dict[str, str] = field(default_factory=dict)
    files: list[str] | None = None
    input: Path | None = None
    setup: list[Step] = field(default_factory=list)
    unprivileged: bool = False
    # Whether the directory of the run has the dictionaries of the build.
    dictionaries: bool = True
    # The platform whose own expectations come before those for all.
    variant: str | None = None

    @property
    def name(self) -> str:
        return self.directory.name

    @property
    def scenario(self) -> Path | None:
        path = self.directory / SCENARIO_FILE
        return path if path.exists() else None

    def expectation(self, name: str) -> Path:
        """The file that holds it, which need not exist."""
        if self.variant:
            own = self.directory / variant_name(name, self.variant)
            if own.exists():
                return own
        return self.directory / name


def variant_name(name: str, platform: str) -> str:
    return name.replace("expected.", f"expected.{platform}.")


def load_case(directory: Path, platform: str) -> Case:
    """Raises CaseSkipped if the case is not for the platform."""
    data = read_json(directory / CASE_FILE)
    _check_keys(data)
    try:
        variants = _variants(data)
        known_files = KNOWN_FILES | {variant_name(name, variant) for name in EXPECTED_FILES for variant in variants}
        unknown_files = sorted(entry.name for entry in directory.iterdir() if entry.name not in known_files)
        if unknown_files:
            raise ValueError(f"files that no case has: {', '.join(unknown_files)}")
        _check_platform(data, platform)
        return _case(directory, data, platform if platform in variants else None)
    except (KeyError, TypeError, ValueError) as error:
        raise CaseError(f"{directory / CASE_FILE}: {error}") from error


def read_json(path: Path) -> Any:
    try:
        return json.loads(path.read_text("utf-8"))
    except (OSError, ValueError) as error:
        raise CaseError(f"{path}: {error}") from error


def write_json(path: Path, data: Any) -> None:
    path.write_text(json.dumps(data, indent=4, ensure_ascii=False) + "\n", "utf-8", newline="\n")


def _check_keys(data: Any) -> None:
    if not isinstance(data, dict):
        raise CaseError(f"{CASE_FILE}: an object is expected")
    allowed = REQUIRED_KEYS | OPTIONAL_KEYS
    for key, value in data.items():
        if key not in allowed:
            raise CaseError(f'{CASE_FILE}: unknown key "{key}"')
        if type(value) is not allowed[key]:
            raise CaseError(f'{CASE_FILE}: "{key}" has to be of the type {allowed[key].__name__}')
    missing = sorted(REQUIRED_KEYS.keys() - data.keys())
    if missing:
        raise CaseError(f"{CASE_FILE}: missing: {', '.join(missing)}")


def _variants(data: dict[str, Any]) -> set[str]:
    variants: dict[str, Any] = data.get("variants", {})
    for platform, why in variants.items():
        if not isinstance(why, str) or not why:
            raise ValueError(f'"variants": the reason is missing for "{platform}"')
    return set(variants)


def _check_platform(data: dict[str, Any], platform: str) -> None:
    if "only" not in data:
        return
    if data["only"].keys() != {"platform", "why"}:
        raise ValueError('"only" has a "platform" and a "why"')
    if data["only"]["platform"] != platform:
        raise CaseSkipped(f"Not on the platform {platform}: {data['only']['why']}")


def _case(directory: Path, data: dict[str, Any], variant: str | None) -> Case:
    if data.get("as", "unprivileged") != "unprivileged":
        raise ValueError('"as" knows one value, "unprivileged"')
    if data.get("dictionaries", "none") != "none":
        raise ValueError('"dictionaries" knows one value, "none"')
    return Case(
        directory=directory,
        arguments=data["arguments"],
        exit=data["exit"],
        log=data["log"],
        log_directory=data.get("logDirectory", "."),
        boxes=[Box(**box) for box in data.get("boxes", [])],
        environment=data.get("environment", {}),
        files=data.get("files"),
        input=_input(directory, data),
        setup=read_steps(data.get("setup", [])),
        unprivileged="as" in data,
        dictionaries="dictionaries" not in data,
        variant=variant,
    )


def _input(directory: Path, data: dict[str, Any]) -> Path | None:
    own = directory / INPUT_FOLDER
    if "input" not in data:
        return own if own.exists() else None
    if own.exists():
        raise ValueError(f'"input" beside a folder {INPUT_FOLDER}')
    path = REPOSITORY / data["input"]
    if not path.is_dir():
        raise ValueError(f'"input": {path} is no folder')
    return path
