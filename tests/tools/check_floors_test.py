"""The floor check finds each kind of broken rule in a small tree made for it, and nothing else."""

import contextlib
import io
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import check_floors  # noqa: E402


class FloorsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        rules = (ROOT / "tools" / "floors.txt").read_text(encoding="utf-8")
        self.write("tools/floors.txt", rules)
        self.write("src/platform/values/Point.h", "#include <string>\n")
        self.write("src/platform/ports/Files.h", '#include "platform/values/Point.h"\n')
        self.write("src/platform/views/View.h", '#include "platform/ports/Files.h"\n')
        self.write("src/channels/Logger.h", '#include "OrvAnnotation/Records.h"\n')
        self.write("src/canvas/Annotation.h", '#include "platform/views/View.h"\n')
        self.write("src/canvas/AnnotationsView.h", '#include "channels/Logger.h"\n')
        self.write("src/session/Session.h", '#include "canvas/AnnotationsView.h"\n')
        self.write("src/channels/controller/Controller.h", '#include "session/Session.h"\n')
        self.write("include/OrvAnnotation/Records.h", "#include <array>\n")
        self.write("include/OrvAnnotation/DesktopPlatform.h", "#include <memory>\n")
        self.write("src/platform/raster/Painter.h", "#include <QPainter>\n")
        self.write("src/platform/posix/PosixFiles.h", '#include "platform/ports/Files.h"\n')
        self.write("src/platform/virtual/Desk.h", '#include "platform/raster/Painter.h"\n')

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def check(self):
        return check_floors.check_tree(self.root)

    def assert_broken(self, path, text, *parts):
        self.write(path, text)

        messages = self.check()

        self.assertEqual(1, len(messages), messages)
        for part in (f"{path}:1: #include ", "Way out: ", *parts):
            self.assertIn(part, messages[0])

    def test_a_tree_that_keeps_the_rules_passes(self):
        self.assertEqual([], self.check())

    def test_a_floor_may_not_include_a_higher_one(self):
        self.assert_broken(
            "src/canvas/Bad.h",
            '#include "session/Session.h"\n',
            "src/canvas is a lower floor than src/session",
            "abstract class",
        )

    def test_values_lie_below_the_ports(self):
        self.assert_broken("src/platform/values/Bad.h", '#include "platform/ports/Files.h"\n')

    def test_channels_lie_below_their_own_controller(self):
        self.assert_broken(
            "src/channels/Bad.cpp",
            '#include "channels/controller/Controller.h"\n',
            "src/channels is a lower floor than src/channels/controller",
        )

    def test_an_angle_bracket_hides_no_own_header(self):
        self.assert_broken("src/canvas/Bad.h", "#include <session/Session.h>\n")

    def test_a_header_of_the_same_folder_is_found_without_its_path(self):
        self.write("src/channels/Logger.cpp", '#include "Logger.h"\n')
        self.assertEqual([], self.check())

    def test_an_adapter_may_not_include_the_views(self):
        self.assert_broken(
            "src/platform/raster/Bad.cpp",
            '#include "platform/views/View.h"\n',
            "the adapter src/platform/raster may not know src/platform/views",
        )

    def test_the_raster_may_not_include_another_adapter(self):
        self.assert_broken(
            "src/platform/raster/Bad.cpp", '#include "platform/virtual/Desk.h"\n', "is an adapter"
        )

    def test_the_logic_may_not_include_an_adapter(self):
        self.assert_broken(
            "src/session/Bad.cpp",
            '#include "platform/posix/PosixFiles.h"\n',
            "is an adapter",
            "src/platform/ports",
        )

    def test_programs_and_tests_may_include_adapters(self):
        self.write("apps/replay/main.cpp", '#include "platform/virtual/Desk.h"\n')
        self.write("tests/session/a_test.cpp", '#include "platform/virtual/Desk.h"\n')
        self.assertEqual([], self.check())

    def test_of_the_canvas_annotations_include_the_base_alone(self):
        self.write("src/annotations/Shape.h", '#include "canvas/Annotation.h"\n')
        self.assert_broken(
            "src/annotations/Bad.h", '#include "canvas/AnnotationsView.h"\n', "Annotation.h"
        )

    def test_only_raster_and_desktop_include_qt(self):
        self.assert_broken("src/platform/virtual/Bad.cpp", "#include <QImage>\n", "toolkit")

    def test_x11_counts_as_a_toolkit(self):
        self.assert_broken("src/canvas/Bad.cpp", "#include <xcb/xcb.h>\n", "toolkit")

    def test_a_small_q_is_no_toolkit(self):
        self.write("src/canvas/Fine.cpp", "#include <queue>\n")
        self.assertEqual([], self.check())

    def test_a_public_header_includes_no_internal_one(self):
        self.assert_broken(
            "include/OrvAnnotation/Bad.h", '#include "platform/values/Point.h"\n', "public header"
        )

    def test_a_public_header_includes_no_library_of_others(self):
        self.assert_broken(
            "include/OrvAnnotation/Bad.h", "#include <fmt/format.h>\n", "standard library"
        )

    def test_the_platform_includes_no_public_header(self):
        self.assert_broken("src/platform/views/Bad.h", '#include "OrvAnnotation/Records.h"\n')

    def test_the_desktop_includes_its_own_public_header_alone(self):
        self.write(
            "src/platform/desktop/Desktop.cpp", '#include "OrvAnnotation/DesktopPlatform.h"\n'
        )
        self.assert_broken("src/platform/desktop/Bad.cpp", '#include "OrvAnnotation/Records.h"\n')

    def test_two_files_that_include_each_other_are_found(self):
        self.write("src/effects/A.h", '#include "effects/B.h"\n')
        self.write("src/effects/B.h", '#include "effects/A.h"\n')

        messages = self.check()

        self.assertEqual(1, len(messages), messages)
        self.assertIn("src/effects/A.h -> src/effects/B.h -> src/effects/A.h", messages[0])

    def test_a_round_of_three_is_found_in_the_tests_too(self):
        self.write("tests/support/A.h", '#include "support/B.h"\n')
        self.write("tests/support/B.h", '#include "support/C.h"\n')
        self.write("tests/support/C.h", '#include "support/A.h"\n')

        self.assertIn("a round of includes", self.check()[0])

    def test_an_exception_lets_one_include_of_one_file_through(self):
        with (self.root / "tools/floors.txt").open("a", encoding="utf-8") as rules:
            rules.write("src/canvas/Odd.h: session/Session.h it is odd\n")
        self.write("src/canvas/Odd.h", '#include "session/Session.h"\n')
        self.assert_broken("src/canvas/Other.h", '#include "session/Session.h"\n')

    def test_an_exception_without_a_reason_is_refused(self):
        with (self.root / "tools/floors.txt").open("a", encoding="utf-8") as rules:
            rules.write("src/canvas/Odd.h: session/Session.h\n")
        with self.assertRaisesRegex(check_floors.RulesError, "gives no reason"):
            self.check()

    def test_the_program_prints_what_it_found_and_fails(self):
        self.write("src/canvas/Bad.h", '#include "session/Session.h"\n')
        output = io.StringIO()

        with contextlib.redirect_stdout(output):
            status = check_floors.main([str(self.root)])

        self.assertEqual(1, status)
        self.assertIn("src/canvas/Bad.h:1", output.getvalue())


if __name__ == "__main__":
    unittest.main()
