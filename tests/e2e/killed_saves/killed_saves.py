"""Kills a program that draws and saves, at random moments, and opens what it has left.

Usage: killed_saves.py PROGRAM [KILLS [SEED]]. Each restart has to bring back all that the last
completed save held, whole, with nothing set aside.
"""

import pathlib
import random
import select
import signal
import subprocess
import sys
import tempfile
import time

LONGEST_LIFE = 0.5
LONGEST_START = 30.0


class Failure(Exception):
    pass


class Run:
    """One life of the program."""

    def __init__(self, program, home):
        self.process = subprocess.Popen([program, home], stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)
        self.unread = b""

    def first_line(self):
        deadline = time.monotonic() + LONGEST_START
        while b"\n" not in self.unread:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self.process.stdout], [], [], left)[0]:
                self.kill()
                raise Failure("the program did not come up")
            piece = self.process.stdout.read1(65536)
            if not piece:
                raise Failure("the program ended: " + self.kill()[1])
            self.unread += piece
        line, self.unread = self.unread.split(b"\n", 1)
        return line.decode()

    def kill(self):
        """All that it still said, whole lines only, and what it logged as an error."""
        self.process.kill()
        out, err = self.process.communicate()
        lines = (self.unread + out).decode().split("\n")[:-1]
        log = err.decode(errors="replace")
        if self.process.returncode != -signal.SIGKILL:
            return lines, log
        return lines, "\n".join(line for line in log.split("\n") if "[ERROR]" in line)


def last_saved(lines, before):
    saved = [int(line.split()[1]) for line in lines if line.startswith("saved ")]
    return saved[-1] if saved else before


def check_opened(line, saved, kill):
    words = line.split()
    if words[0] != "opened":
        raise Failure(f"after kill {kill}: {line}")
    first, last, count = (int(word) for word in words[1:])
    # A save may be complete before it could be told of.
    if last not in (saved, saved + 1):
        raise Failure(f"after kill {kill}: {saved} was saved, {last} came back")
    if count != (last - first + 1 if last else 0):
        raise Failure(f"after kill {kill}: {count} strokes from {first} to {last}")


def play(program, kills, chance, home):
    saved = 0
    saves = 0
    for kill in range(kills + 1):
        run = Run(program, home)
        opened = run.first_line()
        try:
            check_opened(opened, saved, kill)
            # What came back counts as saved, told of or not.
            saved = int(opened.split()[2])
            if kill < kills:
                time.sleep(chance.uniform(0.0, LONGEST_LIFE))
        finally:
            lines, complaints = run.kill()
        if complaints or run.process.returncode != -signal.SIGKILL:
            raise Failure(f"in run {kill}: {complaints}")
        saves += sum(line.startswith("saved ") for line in lines)
        saved = last_saved(lines, saved)
    aside = [path.name for path in pathlib.Path(home, "data").iterdir() if "damaged" in path.name]
    if aside:
        raise Failure(f"set aside: {aside}")
    if saves < kills:
        raise Failure(f"{saves} saves only: the kills came before there was anything to lose")
    return saves


def main():
    program = sys.argv[1]
    kills = int(sys.argv[2]) if len(sys.argv) > 2 else 40
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else random.SystemRandom().randrange(2**32)
    print(f"seed {seed}", flush=True)
    with tempfile.TemporaryDirectory(prefix="orv-killed-") as home:
        try:
            saves = play(program, kills, random.Random(seed), home)
        except Failure as failure:
            sys.exit(f"{failure} (seed {seed})")
    print(f"{kills} kills, {saves} saves, nothing lost")


main()
