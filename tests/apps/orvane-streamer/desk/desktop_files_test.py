#!/usr/bin/env python3
"""What is installed beside the streamer is what desktops, manual readers and service managers take.

Usage: desktop_files_test.py FOLDER PROGRAM [TEST...]
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

NAME = "com.orvane.Orvane-Streamer"


def run(*words, **options):
    """A tool that is missing is an error of the test."""
    return subprocess.run(
        words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=60, **options
    )


class DesktopFiles(unittest.TestCase):
    def assert_quiet(self, result):
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_the_menu_entry_is_valid(self):
        self.assert_quiet(run("desktop-file-validate", str(FOLDER / f"{NAME}.desktop")))

    def test_the_menu_entry_names_what_there_is(self):
        entry = (FOLDER / f"{NAME}.desktop").read_text()

        icon = re.search(r"^Icon=(.*)$", entry, re.M)[1]
        calls = re.findall(r"^Exec=(.*)$", entry, re.M)

        self.assertTrue((FOLDER / f"{icon}.svg").is_file(), icon)
        self.assertEqual({call.split()[0] for call in calls}, {"orvane-streamer"})
        known = run(PROGRAM, "--help").stdout
        for option in re.findall(r"--[a-z]+", " ".join(calls)):
            self.assertIn(option, known)

    def test_the_manual_is_valid(self):
        self.assert_quiet(run("mandoc", "-T", "lint", str(FOLDER / "orvane-streamer.1")))
        pages = run(
            "man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z",
            str(FOLDER / "orvane-streamer.1"),
            env={**os.environ, "LC_ALL": "C.UTF-8"},
        )
        self.assertEqual(pages.returncode, 0, pages.stdout)
        self.assertNotIn("warning", pages.stdout)

    def test_the_manual_has_the_options_that_the_program_has(self):
        manual = (FOLDER / "orvane-streamer.1").read_text().replace("\\-", "-")
        described = set(re.findall(r"^\.BI? (--[a-z]+)", manual, re.M))

        known = set(re.findall(r"--[a-z]+", run(PROGRAM, "--help").stdout))

        self.assertLessEqual({"--bind", "--diagnose"}, known)
        self.assertEqual(described, known)

    def test_the_service_is_valid(self):
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            program = folder / "orvane-streamer"
            program.write_text("#!/bin/sh\n")
            program.chmod(0o755)
            text = (FOLDER / "orvane-streamer.service.in").read_text()
            unit = folder / "orvane-streamer.service"
            unit.write_text(text.replace("@CMAKE_INSTALL_FULL_BINDIR@", name))
            self.assertIn(f"ExecStart={name}/orvane-streamer\n", unit.read_text())
            result = run(
                "systemd-analyze", "verify", "--user", "--man=no", str(unit),
                env={**os.environ, "XDG_RUNTIME_DIR": name},
            )
        about_it = [line for line in result.stdout.splitlines() if "orvane-streamer" in line]
        self.assertEqual((result.returncode, about_it), (0, []), result.stdout)

    def test_the_icon_is_a_square_picture_of_its_own(self):
        icon = xml.parse(FOLDER / f"{NAME}.svg").getroot()

        left, top, width, height = map(float, icon.get("viewBox").split())

        self.assertEqual((left, top, width), (0, 0, height))
        references = [
            value
            for element in icon.iter()
            for key, value in element.attrib.items()
            if key.endswith("href")
        ]
        self.assertEqual(references, [])

    def test_the_description_for_software_centres_is_valid(self):
        result = run("appstreamcli", "validate", "--no-net", str(FOLDER / f"{NAME}.metainfo.xml"))
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertNotRegex(result.stdout, r"(?m)^[EW]: ")


if __name__ == "__main__":
    FOLDER = Path(sys.argv.pop(1))
    PROGRAM = sys.argv.pop(1)
    unittest.main()
