#!/usr/bin/env python3
"""The streamer on a real X server: a client over TCP, the first lesson, the end by a signal.

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

WITHOUT_LESSON = "--without-lesson" in sys.argv
SECONDS = 60
RECORD = struct.Struct("<HHII52s")

SWITCH_MODE, UNDO, MOUSE = 0, 17, 0xEFFD
ANSWER = 0x8000
PRESS, RELEASE, MOVE = 5, 6, 10


def record(wparam, lparam, ext=b"", plugin=17):
    return RECORD.pack(plugin, 0, wparam, lparam, ext)


def mouse(action, x, y):
    return record(MOUSE, action, struct.pack(">II", x, y))


def stroke(*points):
    first, last = points[0], points[-1]
    moves = b"".join(mouse(MOVE, *point) for point in points[1:])
    return mouse(PRESS, *first) + moves + mouse(RELEASE, *last)


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


class Client:
    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), SECONDS)
        self.buffer = b""

    def send_in_pieces(self, data, size):
        for start in range(0, len(data), size):
            self.socket.sendall(data[start : start + size])

    def read(self):
        """(wparam, lparam, ext) of the next record; None at the end of the connection."""
        while len(self.buffer) < RECORD.size:
            chunk = self.socket.recv(4096)
            if not chunk:
                return None
            self.buffer += chunk
        plugin, _, wparam, lparam, ext = RECORD.unpack(self.buffer[: RECORD.size])
        self.buffer = self.buffer[RECORD.size :]
        assert plugin == 17, plugin
        return wparam, lparam, ext

    def wait_for(self, wparam, lparam, ext=b""):
        seen = []
        while (found := self.read()) is not None:
            seen.append(found)
            if found[:2] == (wparam, lparam) and found[2].startswith(ext):
                return found
        raise AssertionError(f"no record {wparam:#x} {lparam} {ext.hex()} among {seen}")


class StreamerTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def start(self, *arguments):
        streamer = Streamer(self.folder, *arguments)
        self.addCleanup(streamer.close)
        return streamer

    def listen(self):
        streamer = self.start("--listen", "0")
        return streamer, int(streamer.wait_for(r"listening on 127\.0\.0\.1:(\d+)")[1])

    def connect(self, port):
        client = Client(port)
        self.addCleanup(client.socket.close)
        return client

    def saved_files(self):
        data = self.folder / ".local" / "share"
        return [path for path in data.rglob("*") if path.is_file()]

    def test_a_client_draws_and_the_work_is_saved_at_the_end(self):
        streamer, port = self.listen()
        client = self.connect(port)

        open_record = record(SWITCH_MODE, 0, b"\x01")
        client.send_in_pieces(open_record, 13)
        client.wait_for(ANSWER, 0, b"\x01\x00\x01\x01")
        client.send_in_pieces(stroke((300, 300), (420, 340), (600, 300)), 37)
        client.wait_for(UNDO, 0, struct.pack("<HH", 1, 0))
        client.send_in_pieces(record(UNDO, 1), 1)
        client.wait_for(UNDO, 0, struct.pack("<HH", 0, 1))
        client.send_in_pieces(record(UNDO, 2) + stroke((50, 50), (90, 60)), 64 + 3)
        client.wait_for(UNDO, 0, struct.pack("<HH", 2, 0))
        streamer.process.send_signal(signal.SIGINT)

        client.wait_for(ANSWER, 0, b"\x00\x00\x00\x01")
        self.assertIsNone(client.read())
        self.assertEqual(streamer.finish(), 0)
        self.assertTrue(
            any(path.stat().st_size > 1000 for path in self.saved_files()), self.saved_files()
        )

    def test_another_client_may_come_after_one_has_left(self):
        streamer, port = self.listen()
        first = self.connect(port)
        streamer.wait_for("a client has come")
        first.socket.sendall(record(SWITCH_MODE, 0, b"\x01")[:10])
        first.socket.close()
        streamer.wait_for(r"the client has left in the middle of a record \(10 bytes\)")

        second = self.connect(port)
        second.socket.sendall(record(SWITCH_MODE, 0, b"\x01"))

        second.wait_for(ANSWER, 0, b"\x01")
        streamer.process.send_signal(signal.SIGTERM)
        self.assertEqual(streamer.finish(), 0)

    def test_an_idle_streamer_ends_by_a_signal(self):
        streamer, _ = self.listen()

        streamer.process.send_signal(signal.SIGTERM)

        self.assertEqual(streamer.finish(), 0)

    def test_a_port_that_is_taken_is_an_error(self):
        with socket.create_server(("127.0.0.1", 0)) as taken:
            port = str(taken.getsockname()[1])
            streamer = self.start("--listen", port)
            self.assertEqual(streamer.finish(), 1)

    @unittest.skipIf(WITHOUT_LESSON, "the program is too slow to play it in real time")
    def test_the_first_lesson_plays_to_its_end(self):
        streamer = self.start("--out", str(self.folder / "pictures"))

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
        streamer = self.start("--out", str(self.folder))
        streamer.wait_for("undo and redo: 1 to undo")

        streamer.process.send_signal(signal.SIGINT)

        self.assertEqual(streamer.finish(), 0)
        self.assertTrue(self.saved_files())


if __name__ == "__main__":
    if WITHOUT_LESSON:
        sys.argv.remove("--without-lesson")
    PROGRAM = sys.argv.pop(1)
    unittest.main(verbosity=2)
