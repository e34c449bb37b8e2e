"""Tests the compiler of dictionaries through its command line, and reads what it makes with a reader of its own."""

from __future__ import annotations

import argparse
import resource
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import IO

from catalogue import Folder
from dictionaryfile import DictionaryFile

OPTIONS = argparse.Namespace()


class Case(unittest.TestCase):
    def setUp(self) -> None:
        place = tempfile.TemporaryDirectory(prefix="letterlift-s3dictc-")
        self.addCleanup(place.cleanup)
        self.place = Path(place.name)
        self.file = self.place / "out.dat.0"

    def folder(self, *fields: str, name: str = "dic", key: str = "number") -> Folder:
        return Folder(self.place / name, *fields, key=key)

    def run_compiler(
        self, *arguments: str | Path, limit: int | None = None, stdout: IO[bytes] | int = subprocess.PIPE
    ) -> subprocess.CompletedProcess[str]:
        def limit_files() -> None:
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))

        return subprocess.run(
            [OPTIONS.compiler, *arguments],
            stdout=stdout,
            stderr=subprocess.PIPE,
            text=True,
            cwd=self.place,
            preexec_fn=limit_files,
            # The signal of the limit stays ignored, as Python has it, so that writing fails.
            restore_signals=False,
        )

    def compile(self, folder: Folder, *options: str) -> DictionaryFile:
        done = self.run_compiler("compile", *options, folder.path, self.file)
        self.assertEqual((done.returncode, done.stderr if not options else ""), (0, ""), done.stderr)
        return DictionaryFile.read(self.file)

    def dump(self, file: Path, name: str = "dumped") -> Path:
        done = self.run_compiler("dump", file, self.place / name)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return self.place / name

    def assert_defects(self, folder: Folder, *defects: str, fatal: bool) -> None:
        """That they are what is told, and that they keep a file from being made, the fatal ones in any case."""
        checked = self.run_compiler("check", folder.path)
        self.assertEqual((checked.returncode, checked.stderr.splitlines()), (1, list(defects)))
        refused = self.run_compiler("compile", folder.path, self.file)
        self.assertEqual(refused.returncode, 1)
        self.assertEqual(refused.stderr.splitlines()[:-1], list(defects))
        self.assertEqual(sorted(self.place.glob("out*")), [])
        self.assertEqual(self.run_compiler("compile", "--lenient", folder.path, self.file).returncode, int(fatal))
        self.assertEqual(self.file.exists(), not fatal)


def run_tests(description: str | None) -> None:
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--compiler", type=Path, required=True)
    parser.add_argument("--catalogues", type=Path, required=True, help="the folder of the project's dictionaries")
    _, rest = parser.parse_known_args(namespace=OPTIONS)
    unittest.main(argv=[sys.argv[0], *rest])
