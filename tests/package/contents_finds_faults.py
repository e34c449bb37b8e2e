#!/usr/bin/env python3
"""Shows that check_contents.py finds what can be wrong with a package, by spoiling a good one."""

from __future__ import annotations

import sys
import tempfile
import unittest
import zipfile
from collections.abc import Callable
from pathlib import Path

from check_contents import check_package, read_package
from imports import Image

# The number of the subsystem, IMAGE_SUBSYSTEM_WINDOWS_CUI.
CONSOLE = 3

Files = dict[str, bytes]


class Faults(unittest.TestCase):
    package: Path

    def complaints(self, spoil: Callable[[Files], object], folder: str | None = None) -> list[str]:
        files, _ = read_package(self.package)
        spoil(files)
        with tempfile.TemporaryDirectory(prefix="letterlift-package-") as place:
            path = Path(place) / self.package.name
            with zipfile.ZipFile(path, "w") as package:
                for name, content in files.items():
                    package.writestr(f"{folder or path.stem}/{name}", content)
            return check_package(path)

    def test_good_package(self) -> None:
        self.assertEqual(self.complaints(lambda files: None), [])

    def test_missing_library_of_the_program(self) -> None:
        complaints = self.complaints(lambda files: files.pop("Qt6Widgets.dll"))
        self.assertIn("letterlift.exe needs qt6widgets.dll, which isn't in the package", complaints)
        self.assertIn("styles/qwindowsvistastyle.dll needs qt6widgets.dll, which isn't in the package", complaints)

    def test_missing_library_of_a_library(self) -> None:
        complaints = self.complaints(lambda files: files.pop("libwinpthread-1.dll"))
        self.assertIn("Qt6Core.dll needs libwinpthread-1.dll, which isn't in the package", complaints)

    def test_library_that_nothing_needs(self) -> None:
        complaints = self.complaints(lambda files: files.update({"Qt6Network.dll": files["Qt6Gui.dll"]}))
        self.assertEqual(complaints, ["Nothing needs Qt6Network.dll"])

    def test_missing_plugin(self) -> None:
        complaints = self.complaints(lambda files: files.pop("platforms/qwindows.dll"))
        self.assertEqual(complaints, ["There is no platforms/qwindows.dll"])

    def test_missing_dictionary(self) -> None:
        complaints = self.complaints(lambda files: files.pop("data/msg.dat.0"))
        self.assertEqual(complaints, ["There is no data/msg.dat.0"])

    def test_missing_program(self) -> None:
        self.assertIn("There is no letterlift.exe", self.complaints(lambda files: files.pop("letterlift.exe")))

    def test_missing_licences(self) -> None:
        def spoil(files: Files) -> None:
            for name in [name for name in files if name.startswith("licences/")]:
                del files[name]

        self.assertEqual(
            self.complaints(spoil), ["There is no licences/Letterlift.txt", "There is nothing in licences"]
        )

    def test_broken_library(self) -> None:
        complaints = self.complaints(lambda files: files.update({"Qt6Core.dll": b"<html>"}))
        self.assertEqual(complaints, ["Qt6Core.dll: no Windows image"])

    def test_other_file(self) -> None:
        complaints = self.complaints(lambda files: files.update({"outlook.tlb": b"x"}))
        self.assertEqual(complaints, ["outlook.tlb has no place in the package"])

    def test_file_in_another_folder(self) -> None:
        complaints = self.complaints(lambda files: files.update({"imageformats/qjpeg.dll": b"x"}))
        self.assertEqual(complaints, ["imageformats/qjpeg.dll has no place in the package"])

    def test_console_program(self) -> None:
        def spoil(files: Files) -> None:
            program = bytearray(files["letterlift.exe"])
            program[Image(bytes(program)).subsystem_offset] = CONSOLE
            files["letterlift.exe"] = bytes(program)

        self.assertEqual(self.complaints(spoil), ["letterlift.exe opens a console"])

    def test_other_folder(self) -> None:
        complaints = self.complaints(lambda files: None, folder="letterlift")
        self.assertIn("letterlift/letterlift.exe lies outside the folder " + self.package.stem, complaints)


if __name__ == "__main__":
    Faults.package = Path(sys.argv.pop())
    unittest.main()
