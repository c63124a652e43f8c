#!/usr/bin/env python3
"""Measures each way of drawing on the present X display, one after the other, in several rounds.

Usage: run.py BUILD_FOLDER [CASE...]; run.sh gives it an X server of its own.
"""

import contextlib
import json
import os
import re
import selectors
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROUNDS = 6
STROKES_A_ROUND = 4
START_SECONDS = 120
MEASURE_SECONDS = 300
SETTLED = 1000

GROMIT_PEN = '"red Pen" = PEN (size=5 color="red");\n"default" = "red Pen";\n'

XOURNAL_PAGE = """<?xml version="1.0" standalone="no"?>
<xournal creator="bench" fileversion="4"><title>bench</title>
<page width="1920" height="1080"><background type="solid" color="#ffffffff" style="plain"/>
<layer/></page></xournal>
"""


class Failed(Exception):
    """A program did not do what the measurement needs; the text says which and what."""


class Home:
    """An empty home, and the environment of a program that lives there."""

    def __init__(self, folder):
        self.folder = Path(folder)
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        self.environment = {
            name: value for name, value in os.environ.items() if not name.startswith("XDG_")
        } | {"HOME": str(folder), "XDG_RUNTIME_DIR": str(runtime), "GDK_BACKEND": "x11"}

    def write(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return str(path)


def line_like(process, pattern):
    """What matches in the output, read without waiting longer than a start may take."""
    end = time.monotonic() + START_SECONDS
    seen = ""
    with selectors.DefaultSelector() as selector:
        selector.register(process.stdout, selectors.EVENT_READ)
        while selector.select(max(0, end - time.monotonic())):
            piece = os.read(process.stdout.fileno(), 4096).decode(errors="replace")
            seen += piece
            if match := re.search(pattern, seen):
                return match
            if not piece:
                break
    raise Failed(f"{process.args[0]} did not get ready; it printed:\n{seen}")


@contextlib.contextmanager
def started(home, *command):
    if shutil.which(command[0]) is None:
        is_own = "/" in command[0]
        way = "build with ORV_BUILD_BENCH" if is_own else f"apt-get install {command[0]}"
        raise Failed(f"{command[0]} is missing: {way}")
    process = subprocess.Popen(
        command, env=home.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL
    )
    try:
        yield process
    finally:
        process.send_signal(signal.SIGTERM)
        try:
            process.wait(20)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
        process.stdout.close()


def wait_for_window(name):
    """The window's number, once a window of that name or class is shown."""
    end = time.monotonic() + START_SECONDS
    while time.monotonic() < end:
        found = subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--name", name], capture_output=True, text=True
        ).stdout.split()
        if found:
            return found[-1]
        time.sleep(0.1)
    raise Failed(f"no window {name!r} came")


class Bench:
    def __init__(self, build):
        self.build = Path(build)

    def program(self, name):
        return str(self.build / "bench" / "screen" / name)

    def measure(self, process, *options):
        driver = [self.program("ink_latency"), "--strokes", str(STROKES_A_ROUND)]
        done = subprocess.run(
            [*driver, *options, str(process.pid)],
            stdout=subprocess.PIPE,
            timeout=MEASURE_SECONDS,
        )
        if done.returncode != 0:
            raise Failed(f"ink_latency ended with {done.returncode}")
        return json.loads(done.stdout)

    def floor(self, home):
        with started(home, self.program("floor_client")) as process:
            line_like(process, "ready")
            return self.measure(process)

    def mouse(self, home, strokes):
        with started(home, self.program("ink_host"), str(strokes)) as process:
            line_like(process, "ready")
            return self.measure(process)

    def records(self, home, strokes):
        with started(home, self.program("ink_host"), str(strokes), "--records") as process:
            port = line_like(process, r"ready (\d+)\n")[1]
            return self.measure(process, "--records", port)

    def streamer(self, home, strokes):
        streamer = str(self.build / "apps" / "orvane-streamer" / "orvane-streamer")
        with started(home, streamer, "--port", "0") as process:
            address = line_like(process, r"http://127\.0\.0\.1:(\d+)/\?code=(\w+)")
            return self.measure(process, "--remote", address[1], address[2], str(strokes))

    def gromit(self, home):
        home.write(".config/gromit-mpx.cfg", GROMIT_PEN)
        with started(home, "gromit-mpx", "--active") as process:
            wait_for_window("gromit-mpx|Gromit")
            return self.measure(process)

    def xournal(self, home):
        page = home.write("page.xopp", XOURNAL_PAGE)
        with started(home, "xournalpp", page) as process:
            window = wait_for_window("page.xopp|Xournal")
            subprocess.run(["xdotool", "windowactivate", "--sync", window, "key", "F5"], check=True)
            return self.measure(process, "--area", "200", "200", "1500", "700")

    def cases(self):
        return {
            "floor": ("raw X client", self.floor),
            "mouse": ("library, mouse, empty canvas", lambda home: self.mouse(home, 0)),
            "mouse1000": ("library, mouse, 1,000 strokes", lambda home: self.mouse(home, SETTLED)),
            "records1000": (
                "library, records over a socket, 1,000 strokes",
                lambda home: self.records(home, SETTLED),
            ),
            "streamer1000": (
                "streamer with its live picture, records, 1,000 strokes",
                lambda home: self.streamer(home, SETTLED),
            ),
            "gromit": ("gromit-mpx, mouse", self.gromit),
            "xournal": ("xournalpp, mouse", self.xournal),
        }


def summary(rounds):
    times = [time for measured in rounds for time in measured["milliseconds"]]
    if len(times) < 100:
        raise Failed(f"only {len(times)} motions were seen on the screen")
    parts = statistics.quantiles(times, n=100, method="inclusive")
    spent = {
        who: statistics.mean(measured["microseconds"].get(who, 0.0) for measured in rounds)
        for who in ("process", "server", "compositor")
    }
    kept = statistics.mean(measured["kept"] for measured in rounds)
    lost = sum(measured["lost"] for measured in rounds)
    seen = {"p": [parts[49], parts[94], parts[98]], "count": len(times), "lost": lost}
    return seen | {"kept": kept} | spent


def row(name, found, floor):
    ratios = [value / base for value, base in zip(found["p"], floor["p"])]
    cells = [
        name,
        str(found["count"]),
        str(found["lost"]),
        f"{found['kept']:.0%}",
        *(f"{value:.2f} ms" for value in found["p"]),
        ", ".join(f"{ratio:.2f}" for ratio in ratios),
        f"{found['process']:.0f}",
        f"{found['process'] / floor['process']:.1f}",
        f"{found['server']:.0f}",
        f"{found['compositor']:.0f}",
    ]
    return "| " + " | ".join(cells) + " |"


def measure_all(bench, names):
    cases = bench.cases()
    measured = {name: [] for name in names}
    for turn in range(ROUNDS):
        for name in names:
            print(f"round {turn + 1}: {name}, load {os.getloadavg()[0]:.1f}", file=sys.stderr)
            with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
                measured[name].append(cases[name][1](Home(folder)))
    return measured


def main(arguments):
    bench = Bench(arguments[0])
    names = arguments[1:] or list(bench.cases())
    unknown = [name for name in names if name not in bench.cases()]
    if unknown:
        raise Failed(f"no such case: {', '.join(unknown)}; there are {', '.join(bench.cases())}")
    if "floor" not in names:
        names.insert(0, "floor")
    found = {name: summary(rounds) for name, rounds in measure_all(bench, names).items()}
    print(
        "| Drawing with | motions | unseen | in the ink | p50 | p95 | p99 | p50, p95, p99 of the floor's"
        " | µs a motion | of the floor's | µs, X server | µs, compositor |"
    )
    print("|---|" + "---:|" * 11)
    for name in names:
        print(row(bench.cases()[name][0], found[name], found["floor"]))
    if {"mouse", "gromit"} <= found.keys():
        ratio = found["mouse"]["process"] / found["gromit"]["process"]
        print(f"\nProcessor time a motion, library against gromit-mpx: {ratio:.2f}")


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(f"usage: {sys.argv[0]} BUILD_FOLDER [CASE...]")
    try:
        main(sys.argv[1:])
    except (Failed, subprocess.SubprocessError) as error:
        sys.exit(f"{sys.argv[0]}: {error}")
