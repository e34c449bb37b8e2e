#!/usr/bin/env python3
"""Tests where the compiler of dictionaries writes, what it leaves there if it fails, and its command line."""

from __future__ import annotations

import os
import stat

from catalogue import message
from compilercase import Case, run_tests
from dictionaryfile import CATALOGUES


class Writing(Case):
    def test_refused_catalogues_leave_the_file_as_it_is(self) -> None:
        folder = self.folder()
        folder.add("xx", "")
        self.file.write_bytes(b"before")
        self.assertEqual(self.run_compiler("compile", folder.path, self.file).returncode, 1)
        self.assertEqual(self.file.read_bytes(), b"before")

    def test_failed_write_leaves_the_file_as_it_is(self) -> None:
        folder = self.folder()
        folder.entry(500, "a" * 1000)
        self.file.write_bytes(b"before")
        done = self.run_compiler("compile", folder.path, self.file, limit=4096)
        self.assertEqual(done.returncode, 1)
        self.assertIn("can't be written", done.stderr)
        self.assertEqual(self.file.read_bytes(), b"before")
        self.assertEqual(sorted(path.name for path in self.place.iterdir()), ["dic", "out.dat.0"])

    def test_folder_that_does_not_exist(self) -> None:
        done = self.run_compiler("compile", self.folder().path, self.place / "none" / "out")
        self.assertEqual(done.returncode, 1)
        self.assertIn("can't be written", done.stderr)

    def test_failed_dump_leaves_nothing(self) -> None:
        folder = self.folder()
        folder.entry(1, "a" * 10000)
        self.compile(folder)
        done = self.run_compiler("dump", self.file, self.place / "dumped", limit=4096)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(sorted(path.name for path in self.place.iterdir()), ["dic", "out.dat.0"])

    def test_dump_does_not_touch_what_is_there(self) -> None:
        folder = self.folder()
        self.compile(folder)
        done = self.run_compiler("dump", self.file, folder.path)
        self.assertEqual((done.returncode, done.stderr), (1, f"s3dictc: {folder.path} is there already.\n"))
        self.assertEqual(os.listdir(folder.path), ["template.pot"])

    def test_dump_into_an_empty_folder(self) -> None:
        self.compile(self.folder())
        (self.place / "dumped").mkdir()
        self.assertEqual(len(os.listdir(self.dump(self.file))), 33)


    def test_dump_into_a_folder_with_a_slash_behind(self) -> None:
        self.compile(self.folder())
        for name in ("new/", "./other//"):
            done = self.run_compiler("dump", self.file, name)
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertEqual(len(os.listdir(self.place / name)), 33)
        self.assertIn("Project-Id-Version: new\\n", (self.place / "new/template.pot").read_text("utf-8"))
        self.assertEqual(sorted(path.name for path in self.place.iterdir()), ["dic", "new", "other", "out.dat.0"])

    def test_folder_that_cannot_be_made(self) -> None:
        self.compile(self.folder())
        (self.place / "link").symlink_to("nowhere")
        for name, reason in (
            ("none/dumped", "No such file or directory"),
            ("out.dat.0/dumped", "Not a directory"),
            ("link", "Not a directory"),
        ):
            with self.subTest(name):
                done = self.run_compiler("dump", self.file, name)
                self.assertEqual(done.returncode, 1)
                self.assertRegex(done.stderr, f"^s3dictc: {name} can't be made: .*{reason}\n$")

    def test_dumped_folder_has_the_rights_of_a_new_one(self) -> None:
        self.compile(self.folder())
        self.place.chmod(0o700)
        for mask in (0o022, 0o077, 0o002):
            with self.subTest(oct(mask)):
                before = os.umask(mask)
                try:
                    dumped = self.dump(self.file, name=f"dumped-{mask}")
                finally:
                    os.umask(before)
                self.assertEqual(stat.S_IMODE(dumped.stat().st_mode), 0o777 & ~mask)
                self.assertEqual(stat.S_IMODE((dumped / "fr.po").stat().st_mode), 0o666 & ~mask)


class CommandLine(Case):
    def test_wrong_use(self) -> None:
        for arguments in ([], ["compile"], ["compile", "a"], ["dump", "a", "b", "c"], ["check"], ["mend", "a"], ["--what"],
                          ["dump", "--lenient", "a", "b"], ["stats", "--by-source", "a"]):  # fmt: skip
            with self.subTest(arguments):
                done = self.run_compiler(*arguments)
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertNotEqual(done.stderr, "")

    def test_help(self) -> None:
        done = self.run_compiler("--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("s3dictc compile", done.stdout)

    def test_stats(self) -> None:
        folder = self.folder()
        folder.entry(1, "eins", de="eins", en_US="one", fr="un")
        folder.entry(2, "zwei", de="zwei", fr="deux")
        folder.entry(3, "drei", fr="trois")
        folder.entry(4, "vier", en_US="four")
        folder.add("fr", message(4, "vier", "quatre", before="#, fuzzy\n"))
        done = self.run_compiler("stats", folder.path)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        lines = done.stdout.splitlines()
        self.assertEqual(lines[0], f"{folder.path}: 4 texts")
        counts = {line.split()[1]: [int(count) for count in line.split()[2:]] for line in lines[2:]}
        self.assertEqual(list(counts), CATALOGUES)
        self.assertEqual(counts["de"], [2, 0, 2])
        self.assertEqual(counts["en_US"], [2, 1, 1])
        self.assertEqual(counts["fr"], [3, 1, 0])
        self.assertEqual(counts["ja"], [0, 3, 1])

    def test_output_that_cannot_be_written(self) -> None:
        folder = self.folder()
        for arguments in (["--help"], ["stats", folder.path]):
            with self.subTest(arguments[0]), open("/dev/full", "wb") as full:
                done = self.run_compiler(*arguments, stdout=full)
                self.assertEqual((done.returncode, done.stderr), (1, "s3dictc: Standard output can't be written.\n"))


if __name__ == "__main__":
    run_tests(__doc__)
