"""The word check finds what a text may not contain, and leaves ordinary text alone."""

import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import check_words  # noqa: E402


class WordsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text if isinstance(text, bytes) else text.encode())

    def assert_found(self, path, text, find):
        self.write(path, "\n" + text + "\n")

        messages = check_words.check_tree(self.root)

        self.assertEqual(1, len(messages), messages)
        self.assertTrue(messages[0].startswith(f"{path}:2: "), messages[0])
        self.assertIn(find, messages[0])
        self.assertIn("Way out: ", messages[0])

    def test_ordinary_text_passes(self):
        guide = "guide" + ".md"
        self.write(guide, f"| a | b |\n|-----------|----------|\nSee docs/{guide}.\n")
        self.write("src/A.h", "#pragma once\n/// The todos of a list; a/home/b.\n")
        self.assertEqual([], check_words.check_tree(self.root))

    def test_a_reminder_is_found(self):
        self.assert_found("src/A.cpp", "// TO" + "DO later", "TO" + "DO")

    def test_a_mend_me_is_found_in_a_script(self):
        self.assert_found("tools/a.sh", "# FIX" + "ME", "FIX" + "ME")

    def test_a_reference_to_a_missing_document_is_found(self):
        missing = "missing" + ".md"
        self.assert_found("src/A.h", f"// as {missing} tells", missing)

    def test_a_path_of_one_machine_is_found(self):
        self.assert_found("tools/a.sh", "cd /hom" + "e/ann", "/hom" + "e/")

    def test_a_banner_is_found(self):
        self.assert_found("src/A.cpp", "//" + "-" * 40, "//---")

    def test_a_titled_banner_is_found(self):
        self.assert_found("CMakeLists.txt", "# --" + "-- Tests --" + "--", "Tests")

    def test_binary_files_and_build_folders_are_left_alone(self):
        word = "TO" + "DO"
        self.write("fuzz/corpus/a", b"\0" + word.encode())
        self.write("build/asan/a.txt", word)
        self.assertEqual([], check_words.check_tree(self.root))


if __name__ == "__main__":
    unittest.main()
