#!/usr/bin/env python3
"""The streamer on a real X server: a remote client, the first lesson, the end by a signal.

Usage: streamer_e2e.py [--without-lesson] PROGRAM [TEST...]
"""

import os
import re
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib
from pathlib import Path

from remote_client import ANSWER, SWITCH_MODE, UNDO, RemoteClient, pair, record

WITHOUT_LESSON = "--without-lesson" in sys.argv
SECONDS = 60


def png_pixel(data, x, y):
    """Red, green and blue of one pixel of a PNG of eight bits a channel, not interlaced."""
    packed, place = b"", 8
    while place < len(data):
        length, kind = struct.unpack_from(">I4s", data, place)
        body = data[place + 8 : place + 8 + length]
        if kind == b"IHDR":
            width, _, depth, colours, _, _, interlace = struct.unpack(">IIBBBBB", body)
            assert depth == 8 and colours in (2, 6) and interlace == 0
            step = 4 if colours == 6 else 3
        elif kind == b"IDAT":
            packed += body
        place += length + 12
    rows = zlib.decompress(packed)
    above = bytearray(width * step)
    for row in range(y + 1):
        start = row * (width * step + 1)
        way, line = rows[start], bytearray(rows[start + 1 : start + 1 + width * step])
        for i in range(len(line)):
            left = line[i - step] if i >= step else 0
            corner = above[i - step] if i >= step else 0
            if way == 4:
                towards = left + above[i] - corner
                distances = [(abs(towards - v), n) for n, v in enumerate((left, above[i], corner))]
                guess = (left, above[i], corner)[min(distances)[1]]
            else:
                guess = (0, left, above[i], (left + above[i]) // 2)[way]
            line[i] = (line[i] + guess) & 0xFF
        above = line
    return tuple(above[x * step : x * step + 3])


class Streamer:
    """The program with a home of its own, and what it prints."""

    def __init__(self, folder, *arguments):
        environment = {
            name: value
            for name, value in os.environ.items()
            if not name.startswith("XDG_") and name != "QT_QPA_PLATFORM"
        }
        runtime = Path(folder) / "runtime"
        runtime.mkdir(mode=0o700, exist_ok=True)
        environment |= {"HOME": str(folder), "XDG_RUNTIME_DIR": str(runtime)}
        self.process = subprocess.Popen(
            [PROGRAM, *arguments], env=environment, stdout=subprocess.PIPE, text=True
        )
        self.lines = []

    def wait_for(self, pattern):
        for line in self.process.stdout:
            self.lines.append(line.rstrip("\n"))
            if match := re.search(pattern, line):
                return match
        raise AssertionError(f"no line like {pattern!r} in:\n" + "\n".join(self.lines))

    def finish(self):
        """The exit status, after the rest of the output was read."""
        self.lines += [line.rstrip("\n") for line in self.process.stdout]
        return self.process.wait(SECONDS)

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.process.stdout.close()


class StreamerTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def start(self, *arguments):
        streamer = Streamer(self.folder, *arguments)
        self.addCleanup(streamer.close)
        return streamer

    def serve(self, *arguments):
        streamer = self.start("--port", "0", *arguments)
        found = streamer.wait_for(r"http://127\.0\.0\.1:(\d+)/\?code=(\w+)")
        return streamer, int(found[1]), found[2]

    def connect(self, port, cookie):
        client = RemoteClient(port, cookie)
        self.addCleanup(client.close)
        return client

    def saved_files(self):
        data = self.folder / ".local" / "share"
        return [path for path in data.rglob("*") if path.is_file()]

    def test_a_client_draws_and_the_work_is_saved_at_the_end(self):
        streamer, port, code = self.serve()
        client = self.connect(port, pair(port, code))

        client.send(record(SWITCH_MODE, 0, b"\x01"))
        client.wait_for(ANSWER, 0, b"\x01\x00\x01\x01")
        client.stroke((300, 300), (420, 340), (600, 300))
        client.wait_for(UNDO, 0, struct.pack("<HH", 1, 0))
        client.send(record(UNDO, 1))
        client.wait_for(UNDO, 0, struct.pack("<HH", 0, 1))
        client.send(record(UNDO, 2))
        client.wait_for(UNDO, 0, struct.pack("<HH", 1, 0))
        client.stroke((50, 50), (90, 60))
        client.wait_for(UNDO, 0, struct.pack("<HH", 2, 0))
        streamer.process.send_signal(signal.SIGINT)

        client.wait_for(ANSWER, 0, b"\x00\x00\x00\x01")
        self.assertIsNone(client.read())
        self.assertEqual(streamer.finish(), 0)
        self.assertTrue(
            any(path.stat().st_size > 1000 for path in self.saved_files()), self.saved_files()
        )

    def test_a_client_that_is_lost_leaves_a_whole_stroke(self):
        streamer, port, code = self.serve()
        cookie = pair(port, code)
        first = self.connect(port, cookie)
        first.send(record(SWITCH_MODE, 0, b"\x01"))
        first.wait_for(ANSWER, 0, b"\x01")
        first.send(first.mouse(5, 200, 200), first.mouse(10, 400, 300))
        first.close()
        streamer.wait_for("nobody has the pen")

        second = self.connect(port, cookie)
        second.wait_for(UNDO, 0, struct.pack("<HH", 1, 0))
        second.stroke((500, 500), (600, 600))

        second.wait_for(UNDO, 0, struct.pack("<HH", 2, 0))
        streamer.process.send_signal(signal.SIGTERM)
        self.assertEqual(streamer.finish(), 0)

    def test_a_browser_comes_back_after_a_new_start(self):
        streamer, port, code = self.serve()
        cookie = pair(port, code)
        streamer.process.send_signal(signal.SIGTERM)
        self.assertEqual(streamer.finish(), 0)

        again = self.start("--port", str(port))
        found = again.wait_for(r"http://127\.0\.0\.1:(\d+)/\?code=(\w+)")

        self.assertEqual(int(found[1]), port)
        self.assertNotEqual(found[2], code)
        self.connect(port, cookie)
        again.process.send_signal(signal.SIGTERM)
        self.assertEqual(again.finish(), 0)

    def test_an_idle_streamer_ends_by_a_signal(self):
        streamer, _, _ = self.serve()

        streamer.process.send_signal(signal.SIGTERM)

        self.assertEqual(streamer.finish(), 0)

    def test_a_port_that_is_taken_is_an_error(self):
        with socket.create_server(("127.0.0.1", 0)) as taken:
            port = str(taken.getsockname()[1])
            streamer = self.start("--port", port)
            self.assertEqual(streamer.finish(), 1)

    def test_where_other_machines_reach_it_the_streamer_says_so(self):
        streamer = self.start("--port", "0", "--bind", "0.0.0.0")

        streamer.wait_for("Other machines can reach this address")

        streamer.wait_for("nothing is encrypted")
        streamer.process.send_signal(signal.SIGTERM)
        self.assertEqual(streamer.finish(), 0)

    @unittest.skipIf(WITHOUT_LESSON, "the program is too slow to play it in real time")
    def test_the_first_lesson_plays_to_its_end(self):
        streamer = self.start("--demo", "--out", str(self.folder / "pictures"))

        self.assertEqual(streamer.finish(), 0, streamer.lines)

        printed = "\n".join(streamer.lines)
        self.assertRegex(printed, r"(?m)^\d+\.\d{3} s  undo and redo: 18 to undo, 0 to redo$")
        self.assertIn("the lesson is over", printed)
        names = ("first-lesson-theorem.png", "first-lesson-tools.png", "first-lesson-end.png")
        for name in names:
            self.assertIn(f"picture of the screen: {self.folder}/pictures/{name}", printed)
        theorem = self.colour_at(names[0], 600, 700)
        self.assertEqual(theorem, (0x00, 0x90, 0xFF))
        self.assertNotEqual(self.colour_at(names[1], 600, 700), theorem)
        self.assertEqual(self.colour_at(names[1], 300, 380), (0x00, 0x90, 0xFF))
        self.assertNotEqual(self.colour_at(names[1], 480, 382), self.colour_at(names[2], 480, 382))
        self.assertEqual(self.colour_at(names[2], 855, 634)[1], 0xD5)

    def colour_at(self, name, x, y):
        picture = self.folder / "pictures" / name
        return png_pixel(picture.read_bytes(), x, y)

    def test_a_lesson_is_left_early_by_a_signal(self):
        streamer = self.start("--demo", "--out", str(self.folder))
        streamer.wait_for("undo and redo: 1 to undo")

        streamer.process.send_signal(signal.SIGINT)

        self.assertEqual(streamer.finish(), 0)
        self.assertTrue(self.saved_files())


if __name__ == "__main__":
    if WITHOUT_LESSON:
        sys.argv.remove("--without-lesson")
    PROGRAM = sys.argv.pop(1)
    unittest.main(verbosity=2)
