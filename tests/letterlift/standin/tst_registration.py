#!/usr/bin/python3
"""Shows what the stand-in for Outlook writes into the registry under Wine, and that it stays away from another Outlook.

It needs the prefix that tools/windows/test makes, with the stand-in registered, and leaves it so.
"""

from __future__ import annotations

import argparse
import subprocess
import sys
import unittest
from pathlib import Path

WINE = Path(__file__).resolve().parents[3] / "tools" / "windows" / "wine"

CLASSES = "HKEY_LOCAL_MACHINE\\Software\\Classes\\"
PROG_ID = CLASSES + "Outlook.Application"
USER_PROG_ID = "HKEY_CURRENT_USER\\Software\\Classes\\Outlook.Application"
# As letterlift/standin/identifiers.h has them.
CLASS_ID = "{BF525BBA-8541-4528-8F61-AA77CB98FF2A}"
LIBRARY_ID = "{EDA83F38-59C9-41BD-892D-DF2AB53E375F}"
CLASS = CLASSES + "CLSID\\" + CLASS_ID
TYPE_LIBRARY = CLASSES + "TypeLib\\" + LIBRARY_ID

OTHER_CLASS_ID = "{11111111-2222-3333-4444-555555555555}"

OPTIONS = argparse.Namespace()


def wine(*arguments: str | Path) -> subprocess.CompletedProcess[str]:
    command = [WINE, *arguments]
    return subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, errors="replace")


def stand_in(option: str) -> subprocess.CompletedProcess[str]:
    return wine(OPTIONS.program, option)


def entries(key: str) -> str:
    """All below the key, or nothing if there is no such key."""
    done = wine("reg", "query", key, "/s")
    return done.stdout if done.returncode == 0 else ""


class Registration(unittest.TestCase):
    def setUp(self) -> None:
        self.assertEqual(stand_in("/UnregServer").returncode, 0)

    def tearDown(self) -> None:
        for key in PROG_ID, USER_PROG_ID:
            wine("reg", "delete", key, "/f")
        self.assertEqual(stand_in("/RegServer").returncode, 0)

    def test_leaves_nothing_behind(self) -> None:
        self.assertEqual(stand_in("/RegServer").returncode, 0)
        self.assertIn(CLASS_ID, entries(PROG_ID))
        self.assertIn("outlook-stand-in.exe", entries(CLASS + "\\LocalServer32"))
        self.assertIn("outlook-stand-in.exe", entries(TYPE_LIBRARY))
        self.assertEqual(stand_in("/UnregServer").returncode, 0)
        self.assertEqual([entries(key) for key in (PROG_ID, CLASS, TYPE_LIBRARY)], ["", "", ""])

    def test_twice_is_as_once(self) -> None:
        self.assertEqual(stand_in("/UnregServer").returncode, 0)
        self.assertEqual(stand_in("/RegServer").returncode, 0)
        once = entries(CLASS)
        self.assertEqual(stand_in("/RegServer").returncode, 0)
        self.assertEqual(entries(CLASS), once)

    def test_another_outlook_stays(self) -> None:
        wine("reg", "add", PROG_ID + "\\CLSID", "/ve", "/d", OTHER_CLASS_ID, "/f")
        before = entries(PROG_ID)
        self.assertIn(OTHER_CLASS_ID, before)
        refused = stand_in("/RegServer")
        self.assertEqual(refused.returncode, 1)
        self.assertIn(f"Another Outlook is registered on this machine: {OTHER_CLASS_ID}", refused.stderr)
        self.assertEqual([entries(key) for key in (PROG_ID, CLASS, TYPE_LIBRARY)], [before, "", ""])
        self.assertEqual(stand_in("/UnregServer").returncode, 0)
        self.assertEqual(entries(PROG_ID), before)

    def test_another_outlook_of_the_user(self) -> None:
        wine("reg", "add", USER_PROG_ID + "\\CLSID", "/ve", "/d", OTHER_CLASS_ID, "/f")
        refused = stand_in("/RegServer")
        self.assertEqual(refused.returncode, 1)
        self.assertIn(f"Another Outlook is registered on this machine: {OTHER_CLASS_ID}", refused.stderr)
        self.assertEqual([entries(key) for key in (PROG_ID, CLASS, TYPE_LIBRARY)], ["", "", ""])
        self.assertIn(OTHER_CLASS_ID, entries(USER_PROG_ID))

    def test_stand_in_of_the_user_is_no_other(self) -> None:
        wine("reg", "add", USER_PROG_ID + "\\CLSID", "/ve", "/d", CLASS_ID, "/f")
        self.assertEqual(stand_in("/RegServer").returncode, 0)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True, help="the stand-in")
    _, rest = parser.parse_known_args(namespace=OPTIONS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
