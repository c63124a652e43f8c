"""A source is read again exactly when something changed that clang-tidy would see."""

import contextlib
import io
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import tidy  # noqa: E402


class TidyTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.write(".clang-tidy", "Checks: '*'\n")
        self.write("src/a/Low.h", "\n")
        self.write("src/a/High.h", '#include "a/Low.h"\n')
        self.write("src/a/One.cpp", '#include "a/High.h"\n')
        self.write("src/a/Two.cpp", "\n")
        self.commands = {"src/a/One.cpp": ("build", "g++ One"), "src/a/Two.cpp": ("build", "g++ Two")}
        self.bad = set()

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def run_sources(self):
        read = []

        def fake(root, path, folder):
            read.append(path)
            return path not in self.bad, "a finding"

        with mock.patch.object(tidy, "run_tidy", fake):
            with contextlib.redirect_stdout(io.StringIO()):
                _, failed = tidy.check_sources(self.root, self.commands, self.root / "cache")
        return sorted(read), failed

    def test_what_passed_is_not_read_again(self):
        self.assertEqual((["src/a/One.cpp", "src/a/Two.cpp"], 0), self.run_sources())
        self.assertEqual(([], 0), self.run_sources())

    def test_what_failed_is_read_again(self):
        self.bad = {"src/a/Two.cpp"}
        self.assertEqual(1, self.run_sources()[1])
        self.assertEqual((["src/a/Two.cpp"], 1), self.run_sources())

    def test_a_header_behind_a_header_counts(self):
        self.run_sources()
        self.write("src/a/Low.h", "// changed\n")
        self.assertEqual((["src/a/One.cpp"], 0), self.run_sources())

    def test_the_settings_count_for_all(self):
        self.run_sources()
        self.write(".clang-tidy", "Checks: '-*'\n")
        self.assertEqual(2, len(self.run_sources()[0]))

    def test_a_compile_command_counts_for_its_source(self):
        self.run_sources()
        self.commands["src/a/Two.cpp"] = ("build", "g++ -O2 Two")
        self.assertEqual((["src/a/Two.cpp"], 0), self.run_sources())


if __name__ == "__main__":
    unittest.main()
