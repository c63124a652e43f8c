"""The name check finds what two sources of a folder both call their own."""

import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import check_names  # noqa: E402


class NamesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def write_sources(self, first, second, lists="orv_library(a)\n"):
        self.write("src/a/CMakeLists.txt", lists)
        self.write("src/a/First.cpp", f"namespace {{\n{first}\n}} // namespace\n")
        self.write("src/a/Second.cpp", f"namespace {{\n{second}\n}} // namespace\n")

    def test_finds_functions_that_take_different_arguments(self):
        self.write_sources("int side(int a)\n{\n}", "std::string side(const char *text)\n{\n}")

        messages = check_names.check_tree(self.root)

        self.assertEqual(1, len(messages), messages)
        self.assertIn("side is in First.cpp and Second.cpp", messages[0])

    def test_finds_constants(self):
        self.write_sources("constexpr int kSide = 1;", "const std::array<int, 2> kSide = {1, 2};")

        messages = check_names.check_tree(self.root)

        self.assertEqual(1, len(messages), messages)

    def test_leaves_alone_what_is_compiled_alone(self):
        self.write_sources("int side(int a)", "int side()", "orv_compile_alone(X.cpp\n  Second.cpp)\n")

        messages = check_names.check_tree(self.root)

        self.assertEqual([], messages)

    def test_leaves_alone_calls_tests_and_what_is_not_a_sources_own(self):
        self.write_sources("TEST(Side, is)\n{\n    side(1);\n}", "TEST(Side, was)\n{\n    side(1);\n}")
        self.write("src/a/Third.cpp", "int side(int a)\n{\n}\n")
        self.write("src/b/CMakeLists.txt", "")
        self.write("src/b/First.cpp", "namespace {\nint other(int a)\n{\n}\n} // namespace\n")

        messages = check_names.check_tree(self.root)

        self.assertEqual([], messages)

    def test_holds_for_this_tree(self):
        self.assertEqual([], check_names.check_tree(ROOT))


if __name__ == "__main__":
    unittest.main()
