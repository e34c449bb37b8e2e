"""All that a run has left behind, in the form in which a case expects it."""

from __future__ import annotations

import difflib
import hashlib
import json
import re
from dataclasses import dataclass, replace
from pathlib import Path
from typing import Any

from runner import case as cases
from runner.case import Box, Case
from runner.messages import expectation_faults, message_faults, read_messages
from runner.platforms import Platform
from runner.program import ProgramRun, Workplace

LOG_NAME = "letterlift.log"
JOURNAL_NAME = "journal.jsonl"
DICTIONARY_FOLDER = "data"

# Two places behind the point below ten milliseconds, without zeros at the end, and none from there on.
RUN_TIME = re.compile(r"(?m)^(run\(\) elapsed = )(?:\d(?:\.\d?[1-9])?|[1-9]\d+)( ms)$")
LOOK_UP_TIME = re.compile(r"(?m)^(getPrimarySmtpAddressForAliasAddress\(.*, elapsed = )\d+( ms)$")


@dataclass(frozen=True)
class Observation:
    exit: int
    boxes: list[Box]
    log: str | None
    journal: str | None
    messages: list[dict[str, Any]]
    faults: list[str]


class Places:
    """The names that stand for the directories of a run, and for the program's usage, in expectations."""

    def __init__(self, workplace: Workplace, program: Path, platform: Platform) -> None:
        named = {
            "{dir}": workplace.directory,
            "{store}": workplace.store,
            "{scenario}": workplace.scenario,
            "{program}": program,
        }
        self._names = [(spelling, name) for name, path in named.items() for spelling in platform.spellings(path)]
        # The one text that a system's Qt has a hand in. It holds the program's name, which is replaced before.
        self._names.append((platform.usage, "{usage}"))

    def named(self, text: str) -> str:
        for spelling, name in self._names:
            text = text.replace(spelling, name)
        return text


def snapshot(directory: Path) -> dict[str, str]:
    """Each file below the directory, with a digest of its content."""
    files = [path for path in directory.rglob("*") if path.is_file()]
    return {path.relative_to(directory).as_posix(): hashlib.sha256(path.read_bytes()).hexdigest() for path in files}


def observe(
    run: ProgramRun, case: Case, workplace: Workplace, before: dict[str, str], places: Places, platform: Platform
) -> Observation:
    log = workplace.directory / case.log_directory / LOG_NAME
    journal = workplace.store / JOURNAL_NAME
    return Observation(
        exit=platform.returned_value(run.exit_status),
        boxes=[replace(box, text=places.named(box.text)) for box in run.boxes],
        log=without_times(places.named(platform.log_text(log.read_bytes()))) if log.exists() else None,
        journal=places.named(journal.read_text("utf-8")) if journal.exists() else None,
        messages=read_messages(workplace.store),
        faults=message_faults(workplace.store)
        + _file_faults(case, before, snapshot(workplace.directory))
        + _store_faults(workplace.store),
    )


def without_times(log: str) -> str:
    return LOOK_UP_TIME.sub(r"\1{ms}\2", RUN_TIME.sub(r"\1{ms}\2", log))


def differences(case: Case, seen: Observation) -> list[str]:
    """One text for each thing that isn't as the case expects it."""
    found = list(seen.faults)
    if seen.exit != case.exit:
        found.append(f"exit status: expected {case.exit}, seen {seen.exit}")
    found += _diff("boxes", _pretty([box.as_json() for box in case.boxes]), _pretty([b.as_json() for b in seen.boxes]))
    if case.log != case.expectation(cases.EXPECTED_LOG).exists():
        found.append(f'"log" is {str(case.log).lower()}, but {cases.EXPECTED_LOG} tells otherwise')
    found += _compare_file("run log", case.expectation(cases.EXPECTED_LOG), seen.log)
    found += _compare_file("journal", case.expectation(cases.EXPECTED_JOURNAL), seen.journal)
    messages_file = case.expectation(cases.EXPECTED_MESSAGES)
    expected = cases.read_json(messages_file) if messages_file.exists() else []
    found += expectation_faults(expected)
    found += _diff("messages", _pretty(expected), _pretty(seen.messages))
    return found


def write_expectations(case: Case, seen: Observation) -> None:
    data = cases.read_json(case.directory / cases.CASE_FILE)
    changes: dict[str, Any] = {"exit": seen.exit, "log": seen.log is not None}
    if seen.boxes or case.boxes:
        changes["boxes"] = [box.as_json() for box in seen.boxes]
    if any(data.get(key) != value for key, value in changes.items()):
        cases.write_json(case.directory / cases.CASE_FILE, data | changes)
    _update(case, cases.EXPECTED_LOG, seen.log)
    _update(case, cases.EXPECTED_JOURNAL, seen.journal)
    _update(case, cases.EXPECTED_MESSAGES, _pretty(seen.messages) if seen.messages else None)


def _file_faults(case: Case, before: dict[str, str], after: dict[str, str]) -> list[str]:
    """The program changes no file but the run log, and makes no other."""
    log = (Path(case.log_directory) / LOG_NAME).as_posix()
    default = sorted((before.keys() - {log}) | ({log} if case.log else set()))
    # The runner puts the dictionaries there, so that no case has to name them.
    dictionaries = {name for name in before if case.dictionaries and name.startswith(DICTIONARY_FOLDER + "/")}
    expected = dictionaries.union(case.files) if case.files is not None else default
    faults = _diff("files", "\n".join(sorted(expected)) + "\n", "\n".join(sorted(after)) + "\n")
    changed = sorted(name for name in before.keys() & after.keys() if name != log and before[name] != after[name])
    return faults + [f"{name} was changed" for name in changed]


def _store_faults(store: Path) -> list[str]:
    known = {JOURNAL_NAME, "drafts", "sent"}
    strangers = sorted(path.name for path in store.glob("*") if path.name not in known)
    return [f"the store has {', '.join(strangers)}"] if strangers else []


def _compare_file(what: str, path: Path, seen: str | None) -> list[str]:
    expected = path.read_bytes().decode("utf-8") if path.exists() else None
    if expected is None and seen is not None:
        return [f"{what}: none is expected, but there is one:\n{seen}"]
    if expected is not None and seen is None:
        return [f"{what}: there is none"]
    return _diff(what, expected or "", seen or "")


def _diff(what: str, expected: str, seen: str) -> list[str]:
    if expected == seen:
        return []
    lines = difflib.unified_diff(
        _lines(expected), _lines(seen), f"{what}, expected", f"{what}, seen", lineterm="", n=5
    )
    return ["\n".join(lines)]


def _lines(text: str) -> list[str]:
    """Split at line feeds alone, with other characters that could hide made visible."""
    lines = text.split("\n")
    end = lines.pop()
    shown = [line.replace("\r", "\\r").replace("\0", "\\0") for line in lines]
    return shown + ([end + "\\ no line feed at the end"] if end else [])


def _pretty(data: Any) -> str:
    return json.dumps(data, indent=4, ensure_ascii=False) + "\n"


def _update(case: Case, name: str, text: str | None) -> None:
    """A platform's own expectation is written only if it differs from the one for all."""
    common = case.directory / name
    if case.variant is None:
        _write_or_remove(common, text)
        return
    same = text == (common.read_bytes().decode("utf-8") if common.exists() else None)
    _write_or_remove(case.directory / cases.variant_name(name, case.variant), None if same else text)


def _write_or_remove(path: Path, text: str | None) -> None:
    if text is None:
        path.unlink(missing_ok=True)
    else:
        path.write_text(text, "utf-8", newline="\n")
