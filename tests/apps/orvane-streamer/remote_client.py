"""The least of a remote page: pairs, opens the WebSocket, sends and gets records.

For the tests; all its input is trusted.
"""

import base64
import json
import os
import socket
import struct

SECONDS = 60
RECORD = struct.Struct("<HHII52s")

SWITCH_MODE, TOOL, UNDO, MOUSE = 0, 1, 17, 0xEFFD
ANSWER = 0x8000
PRESS, RELEASE, MOVE = 5, 6, 10

TEXT, BINARY, CLOSE, PING = 1, 2, 8, 9
RECORDS, PACKAGE, PICTURE = 1, 2, 3


def record(wparam, lparam, ext=b"", plugin=17):
    return RECORD.pack(plugin, 0, wparam, lparam, ext)


class Refused(Exception):
    """The server answered with another status than was asked for."""


def request(port, target, headers=()):
    """Status, headers and the connection, on which what follows can be read."""
    connection = socket.create_connection(("127.0.0.1", port), SECONDS)
    lines = [f"GET {target} HTTP/1.1", f"Host: 127.0.0.1:{port}", *headers, "", ""]
    connection.sendall("\r\n".join(lines).encode())
    head = b""
    while not head.endswith(b"\r\n\r\n"):
        byte = connection.recv(1)
        if not byte:
            raise Refused(f"the connection was closed after {head!r}")
        head += byte
    first, *rest = head.decode().split("\r\n")[:-2]
    found = {name.lower(): value.strip() for name, value in (line.split(":", 1) for line in rest)}
    return int(first.split()[1]), found, connection


def pair(port, code):
    """The cookie of a new browser."""
    status, headers, connection = request(port, f"/?code={code}", ["Connection: close"])
    connection.close()
    if status != 303:
        raise Refused(f"status {status}")
    return headers["set-cookie"].split(";")[0]


class RemoteClient:
    """Holds the pen when nobody else does."""

    def __init__(self, port, cookie, name="a test"):
        key = base64.b64encode(os.urandom(16)).decode()
        status, _, self.socket = request(
            port,
            "/link",
            [
                f"Origin: http://127.0.0.1:{port}",
                f"Cookie: {cookie}",
                "Connection: Upgrade",
                "Upgrade: websocket",
                "Sec-WebSocket-Version: 13",
                f"Sec-WebSocket-Key: {key}",
            ],
        )
        if status != 101:
            self.socket.close()
            raise Refused(f"status {status}")
        self.records = []
        self.say({"type": "hello", "name": name})
        self.display = self.hear("welcome")
        self.hear("clients")

    def say(self, message):
        self.frame(TEXT, json.dumps(message).encode())

    def send(self, *records):
        self.frame(BINARY, b"".join(records))

    def frame(self, kind, data):
        if len(data) < 126:
            length = struct.pack(">B", 0x80 | len(data))
        elif len(data) < 1 << 16:
            length = struct.pack(">BH", 0x80 | 126, len(data))
        else:
            length = struct.pack(">BQ", 0x80 | 127, len(data))
        mask = os.urandom(4)
        masked = bytes(byte ^ mask[i % 4] for i, byte in enumerate(data))
        self.socket.sendall(bytes([0x80 | kind]) + length + mask + masked)

    def mouse(self, action, x, y):
        """The record of a point in pixels of the display; x above 0."""
        scale = self.display["scale"]
        return record(MOUSE, action, struct.pack(">II", int(x * scale), int(y * scale)))

    def stroke(self, *points):
        self.send(
            self.mouse(PRESS, *points[0]),
            *(self.mouse(MOVE, *point) for point in points[1:]),
            self.mouse(RELEASE, *points[-1]),
        )

    def receive(self):
        """Kind and bytes of the next message that says something; None at the end."""
        while True:
            head = self.exactly(2)
            if head is None:
                return None
            kind, size = head[0] & 0x0F, head[1] & 0x7F
            if size == 126:
                (size,) = struct.unpack(">H", self.exactly(2))
            elif size == 127:
                (size,) = struct.unpack(">Q", self.exactly(8))
            data = self.exactly(size)
            if kind == CLOSE:
                return None
            if kind == PING:
                self.frame(10, data)
            elif kind in (TEXT, BINARY):
                return kind, data

    def exactly(self, size):
        data = b""
        while len(data) < size:
            piece = self.socket.recv(size - len(data))
            if not piece:
                return None
            data += piece
        return data

    def hear(self, kind):
        """The next text message of that type; pictures on the way are taken as shown."""
        while (message := self.receive()) is not None:
            if message[0] == TEXT and (text := json.loads(message[1]))["type"] == kind:
                return text
            self.keep(message)
        raise AssertionError(f"the connection ended before a message {kind!r}")

    def keep(self, message):
        kind, data = message
        if kind == BINARY and data[0] == RECORDS:
            body = data[1:]
            self.records += [body[i : i + 64] for i in range(0, len(body), 64)]
        elif kind == BINARY and data[0] == PICTURE:
            self.say({"type": "shown", "frame": struct.unpack_from("<I", data, 4)[0]})

    def read(self):
        """(wparam, lparam, ext) of the next record; None at the end of the connection."""
        while not self.records:
            message = self.receive()
            if message is None:
                return None
            self.keep(message)
        plugin, _, wparam, lparam, ext = RECORD.unpack(self.records.pop(0))
        assert plugin == 17, plugin
        return wparam, lparam, ext

    def wait_for(self, wparam, lparam, ext=b""):
        seen = []
        while (found := self.read()) is not None:
            seen.append(found)
            if found[:2] == (wparam, lparam) and found[2].startswith(ext):
                return found
        raise AssertionError(f"no record {wparam:#x} {lparam} {ext.hex()} among {seen}")

    def close(self):
        self.socket.close()
