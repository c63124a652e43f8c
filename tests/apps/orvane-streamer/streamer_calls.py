#!/usr/bin/env python3
"""How the streamer answers calls that cannot work, and where there is no display.

Usage: streamer_calls.py PROGRAM [TEST...]
"""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path


def call(*arguments):
    environment = {k: v for k, v in os.environ.items() if k != "QT_QPA_PLATFORM"}
    return subprocess.run(
        [PROGRAM, *arguments], env=environment, capture_output=True, text=True, timeout=60
    )


class StreamerCalls(unittest.TestCase):
    def expect(self, status, sentence, *arguments):
        result = call(*arguments)
        self.assertEqual(result.returncode, status, result.stderr)
        self.assertIn(sentence, result.stderr)
        self.assertEqual(len(result.stderr.splitlines()), 1, result.stderr)

    def lesson(self, *lines):
        file = tempfile.NamedTemporaryFile("w", suffix=".jsonl", delete=False)
        self.addCleanup(os.unlink, file.name)
        with file:
            file.write("\n".join(lines))
        return file.name

    def test_help(self):
        result = call("--help")
        self.assertEqual(result.returncode, 0)
        self.assertIn("usage: orvane-streamer", result.stdout)

    def test_bad_options(self):
        self.expect(2, 'There is no option "--fast".', "--fast")
        self.expect(2, "--plugin takes a number from 0 to 65535", "--plugin", "x")
        self.expect(2, "--port takes a number from 0 to 65535", "--port", "65536")
        self.expect(2, "--out needs a value after it.", "--demo", "--out")
        self.expect(2, "--demo and --diagnose exclude each other.", "--demo", "--diagnose")
        self.expect(2, "--lesson goes with --demo.", "--lesson", "x")
        self.expect(2, "--port is for serving the remote page", "--demo", "--port", "1")
        self.expect(2, "16, 17 and 18, not for 12", "--plugin", "12")
        self.expect(2, '--bind takes an address such as 192.168.1.5', "--bind", "nowhere")
        self.expect(2, 'The lesson "/nowhere" cannot be read.', "--demo", "--lesson", "/nowhere")

    def test_a_lesson_that_cannot_be_played(self):
        host = '{"host": {}}'
        for line, message in (
            ('{"mouse": "down", "at": [1, 2]}', '"mouse" has no meaning on a real desktop'),
            ('{"screenshot": "../x.png"}', '"screenshot" is not below'),
            ('{"screenshot": "x.png", "display": 1}', '"display"'),
            ('{"wait": -1}', '"wait" is outside'),
            (host, '"host" comes once'),
        ):
            name = self.lesson(host, "", line)
            self.expect(2, f"{name}:3: ", "--demo", "--lesson", name)
            self.expect(2, message, "--demo", "--lesson", name)
        name = self.lesson('{"note": "x"}')
        self.expect(2, f'{name}:1: "host" must come first', "--demo", "--lesson", name)
        name = self.lesson("# nothing")
        self.expect(2, 'no "host" line', "--demo", "--lesson", name)

    def test_no_display(self):
        self.expect(1, "display")
        self.expect(1, "display", "--demo")
        result = call("--diagnose")
        self.assertEqual(result.returncode, 1)
        self.assertIn("display", result.stdout)

    def test_version(self):
        result = call("--version")
        self.assertEqual(result.returncode, 0)
        self.assertRegex(result.stdout, r"^Orvane Streamer with OrvAnnotation \d+\.\d+")


if __name__ == "__main__":
    PROGRAM = str(Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
