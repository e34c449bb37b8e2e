#!/usr/bin/python3
"""Shows that run_case.py fails where it must.

A runner that overlooks something makes every case green. So each test here takes copies of cases that pass, spoils one
expectation, and asks for exit status 1 with a text that names what is wrong.
"""

from __future__ import annotations

import argparse
import json
import shutil
import subprocess
import sys
import tempfile
import unittest
from collections.abc import Callable
from pathlib import Path
from typing import Any

HERE = Path(__file__).resolve().parent
MAIL_CASE = "plain-displayed"
BOX_CASE = "outlook-not-available"

OPTIONS = argparse.Namespace()


def edit_json(path: Path, change: Callable[[Any], None]) -> None:
    data = json.loads(path.read_text("utf-8"))
    change(data)
    path.write_text(json.dumps(data), "utf-8")


def replace_in(path: Path, old: str, new: str) -> None:
    text = path.read_text("utf-8")
    assert old in text, f"{path} has no {old}"
    path.write_text(text.replace(old, new), "utf-8")


class RunnerFindsFaults(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="letterlift-faults-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def copy_of(self, case: str) -> Path:
        return Path(shutil.copytree(HERE / "cases" / case, self.folder / case))

    def run_case(self, case: Path, *more: str) -> tuple[int, str]:
        command = [sys.executable, "-B", HERE / "run_case.py", "--program", OPTIONS.program]
        command += ["--plugins", OPTIONS.plugins, "--platform", OPTIONS.platform, "--case", case, *more]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        return done.returncode, done.stdout

    def expect_fault(self, case: Path, text: str, *more: str) -> None:
        status, output = self.run_case(case, *more)
        self.assertEqual(status, 1, output)
        self.assertIn(text, output)

    def test_untouched_cases_pass(self) -> None:
        for name in (MAIL_CASE, BOX_CASE):
            status, output = self.run_case(self.copy_of(name))
            self.assertEqual(status, 0, output)

    def test_wrong_exit_status(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(exit=1))
        self.expect_fault(case, "exit status: expected 1, seen 0")

    def test_wrong_log_line(self) -> None:
        case = self.copy_of(MAIL_CASE)
        replace_in(case / "expected.log", "Displaying mail", "Sending mail")
        self.expect_fault(case, "-Sending mail\n+Displaying mail")

    def test_time_where_another_line_is_expected(self) -> None:
        case = self.copy_of(MAIL_CASE)
        replace_in(case / "expected.log", "run() elapsed = {ms} ms", "run() elapsed = 0 ms")
        self.expect_fault(case, "+run() elapsed = {ms} ms")

    def test_log_where_none_is_expected(self) -> None:
        case = self.copy_of(MAIL_CASE)
        (case / "expected.log").unlink()
        edit_json(case / "case.json", lambda data: data.update(log=False))
        self.expect_fault(case, "run log: none is expected")

    def test_expected_log_is_missing(self) -> None:
        case = self.copy_of(MAIL_CASE)
        (case / "expected.log").unlink()
        self.expect_fault(case, "expected.log tells otherwise")

    def test_wrong_journal_line(self) -> None:
        case = self.copy_of(MAIL_CASE)
        replace_in(case / "expected.journal.jsonl", '"member":"Display()"', '"member":"Send()"')
        self.expect_fault(case, "journal, seen")

    def test_journal_lines_in_another_order(self) -> None:
        case = self.copy_of(MAIL_CASE)
        path = case / "expected.journal.jsonl"
        lines = path.read_text("utf-8").splitlines(keepends=True)
        lines[3], lines[4] = lines[4], lines[3]
        path.write_text("".join(lines), "utf-8")
        self.expect_fault(case, "journal, seen")

    def test_journal_where_none_is_expected(self) -> None:
        case = self.copy_of(MAIL_CASE)
        (case / "expected.journal.jsonl").unlink()
        self.expect_fault(case, "journal: none is expected")

    def test_wrong_message_header(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "expected.messages.json", lambda data: data[0]["headers"].update(Subject="Other"))
        self.expect_fault(case, "messages, seen")

    def test_wrong_message_text(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "expected.messages.json", lambda data: data[0]["text"].append("one line more"))
        self.expect_fault(case, "one line more")

    def test_wrong_attachment(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "expected.messages.json", lambda data: data[0]["attachments"][0].update(text="Other"))
        self.expect_fault(case, "messages, seen")

    def test_header_that_the_expectation_forgets(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "expected.messages.json", lambda data: data[0]["headers"].pop("Bcc"))
        self.expect_fault(case, "says nothing of Bcc")

    def test_message_that_is_not_expected(self) -> None:
        case = self.copy_of(MAIL_CASE)
        (case / "expected.messages.json").unlink()
        self.expect_fault(case, "messages, seen")

    def test_wrong_box(self) -> None:
        for key, value in {"icon": "warning", "title": "Other", "text": "Other", "buttons": ["Other"]}.items():
            with self.subTest(key):
                case = self.copy_of(BOX_CASE)
                self.addCleanup(shutil.rmtree, case, ignore_errors=True)
                edit_json(case / "case.json", lambda data: data["boxes"][0].update({key: value}))
                self.expect_fault(case, "boxes, seen")
                shutil.rmtree(case)

    def test_box_that_is_not_expected(self) -> None:
        case = self.copy_of(BOX_CASE)
        edit_json(case / "case.json", lambda data: data.pop("boxes"))
        self.expect_fault(case, "boxes, seen")

    def test_box_that_does_not_come(self) -> None:
        case = self.copy_of(MAIL_CASE)
        box = {"icon": "critical", "title": "", "text": "Other", "buttons": ["OK"]}
        edit_json(case / "case.json", lambda data: data.update(boxes=[box]))
        self.expect_fault(case, "boxes, seen")

    def test_box_that_nobody_closes(self) -> None:
        case = self.copy_of(BOX_CASE)
        edit_json(case / "case.json", lambda data: data["boxes"][0].update(key="F9"))
        self.expect_fault(case, "The program does not end.", "--time-limit", "2")

    def test_file_that_the_case_does_not_know(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(files=["mail.vxm"]))
        self.expect_fault(case, "files, seen")

    def test_unknown_key(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(arguements=[]))
        self.expect_fault(case, 'unknown key "arguements"')

    def test_unknown_key_of_a_box_or_step(self) -> None:
        case = self.copy_of(BOX_CASE)
        edit_json(case / "case.json", lambda data: data["boxes"][0].update(colour="red"))
        self.expect_fault(case, "colour")
        edit_json(case / "case.json", lambda data: data["boxes"][0].pop("colour"))
        edit_json(case / "case.json", lambda data: data.update(setup=[{"directory": "x", "mode": 7}]))
        self.expect_fault(case, "unknown keys in a set-up step: mode")

    def test_unknown_word_for_dictionaries(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(dictionaries="some"))
        self.expect_fault(case, '"dictionaries" knows one value, "none"')

    def test_files_are_named_without_the_dictionaries(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(files=["files/note.txt", "letterlift.log", "mail.vxm"]))
        status, output = self.run_case(case)
        self.assertEqual(status, 0, output)

    def test_expectation_under_a_wrong_name(self) -> None:
        case = self.copy_of(MAIL_CASE)
        (case / "expected.journal.jsonl").rename(case / "expected.journal.json")
        self.expect_fault(case, "expected.journal.json")

    def test_case_for_another_platform(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(only={"platform": "other", "why": "Because."}))
        status, output = self.run_case(case)
        self.assertEqual((status, output), (77, f"Not on the platform {OPTIONS.platform}: Because.\n"))
        edit_json(case / "case.json", lambda data: data["only"].pop("why"))
        self.expect_fault(case, '"only" has a "platform" and a "why"')

    def test_variant_comes_before_the_expectation_for_all(self) -> None:
        case = self.copy_of(MAIL_CASE)
        own = f"expected.{OPTIONS.platform}.log"
        shutil.copyfile(case / "expected.log", case / own)
        self.expect_fault(case, f"files that no case has: {own}")
        edit_json(case / "case.json", lambda data: data.update(variants={OPTIONS.platform: ""}))
        self.expect_fault(case, "the reason is missing")
        edit_json(case / "case.json", lambda data: data.update(variants={OPTIONS.platform: "Because."}))
        replace_in(case / own, "Displaying mail", "Sending mail")
        self.expect_fault(case, "-Sending mail\n+Displaying mail")

    def test_variant_of_another_platform_is_not_looked_at(self) -> None:
        case = self.copy_of(MAIL_CASE)
        edit_json(case / "case.json", lambda data: data.update(variants={"other": "Because."}))
        (case / "expected.other.log").write_text("Other\n", "utf-8")
        status, output = self.run_case(case)
        self.assertEqual(status, 0, output)

    def test_observer_that_is_not_loaded(self) -> None:
        case = self.copy_of(MAIL_CASE)
        self.expect_fault(case, "has not loaded the box observer", "--plugins", str(self.folder))


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True)
    parser.add_argument("--plugins", required=True)
    parser.add_argument("--platform", default="linux")
    _, rest = parser.parse_known_args(namespace=OPTIONS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
