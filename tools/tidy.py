#!/usr/bin/env python3
"""Runs clang-tidy over this tree's sources, leaving out what is as it was when it last passed.

A source passes again without being read when its text, the texts of all headers of this tree that
it includes, its compile command, .clang-tidy and the tool itself are the same: the digests of what
passed are the names of empty files in build/tidy-cache.
Usage: tidy.py BUILD_FOLDER... (each with a compile_commands.json; the first that has a source wins)
"""

import hashlib
import json
import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import check_floors

TIDY = "clang-tidy-14"
# The analyzer looks at one function at a time: a second a file instead of many.
ANALYZER = ("-Xclang", "-analyzer-config", "-Xclang", "mode=shallow")
EXTRA = tuple(f"--extra-arg={word}" for word in ("-Wno-unknown-warning-option", *ANALYZER))
# Tests are held by warnings, format and the sanitizers; to read them too would double the time.
READ_FOLDERS = tuple(folder for folder in check_floors.OWN_FOLDERS if folder != "tests")
ROOT = Path(__file__).resolve().parent.parent


class Tree:
    """The texts of a tree and what they include, each read once."""

    def __init__(self, root):
        self.root = root
        self.digests = {}
        self.includes = {}

    def digest(self, path):
        if path not in self.digests:
            self.digests[path] = hashlib.sha256((self.root / path).read_bytes()).hexdigest()
        return self.digests[path]

    def with_headers(self, path):
        """A source and every header of the tree that it includes, directly or not."""
        found, open_ends = {path}, [path]
        while open_ends:
            for target in self.targets(open_ends.pop()):
                if target not in found:
                    found.add(target)
                    open_ends.append(target)
        return sorted(found)

    def targets(self, path):
        if path not in self.includes:
            read = check_floors.read_includes(self.root, path)
            self.includes[path] = [include.target for include in read if include.target]
        return self.includes[path]


def read_commands(root, folders):
    """Source, relative to the root, to (build folder, compile command); what is read only."""
    commands = {}
    for folder in folders:
        database = json.loads((Path(folder) / "compile_commands.json").read_text(encoding="utf-8"))
        for entry in database:
            path = Path(entry["file"])
            if path.is_relative_to(root):
                name = path.relative_to(root).as_posix()
                if name.startswith(tuple(f"{own}/" for own in READ_FOLDERS)):
                    commands.setdefault(name, (folder, entry["command"]))
    return commands


def settings_digest(root):
    """Of all that is the same for every source."""
    version = subprocess.run([TIDY, "--version"], capture_output=True, text=True, check=True).stdout
    files = sorted(root.glob(".clang-tidy")) + sorted(root.glob("*/.clang-tidy"))
    texts = [version, *EXTRA, *(f"{f.relative_to(root)}\n{f.read_text(encoding='utf-8')}" for f in files)]
    return hashlib.sha256("\0".join(texts).encode()).hexdigest()


def source_digest(tree, settings, path, command):
    """Changes with anything that could change what clang-tidy says about a source."""
    parts = [settings, command]
    parts += [f"{name} {tree.digest(name)}" for name in tree.with_headers(path)]
    return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def run_tidy(root, path, folder):
    result = subprocess.run(
        [TIDY, "-p", folder, "--quiet", *EXTRA, str(root / path)],
        capture_output=True,
        text=True,
        check=False,
    )
    return result.returncode == 0, result.stdout


def check_sources(root, commands, cache):
    """How many sources were read; prints what is wrong with each that fails, and counts these."""
    cache.mkdir(parents=True, exist_ok=True)
    tree, settings = Tree(root), settings_digest(root)
    digests = {
        path: source_digest(tree, settings, path, command)
        for path, (_, command) in sorted(commands.items())
    }
    passed = {entry.name for entry in cache.iterdir()}
    for stale in passed - set(digests.values()):
        (cache / stale).unlink()
    due = [path for path in digests if digests[path] not in passed]
    due.sort(key=lambda path: (root / path).stat().st_size, reverse=True)
    failed = 0
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, (good, text) in zip(
            due, pool.map(lambda path: run_tidy(root, path, commands[path][0]), due)
        ):
            if good:
                (cache / digests[path]).touch()
            else:
                failed += 1
                print(f"{path}: clang-tidy\n{text}", flush=True)
    return len(due), failed


def main(arguments):
    if not arguments:
        print(__doc__, file=sys.stderr)
        return 2
    commands = read_commands(ROOT, arguments)
    read, failed = check_sources(ROOT, commands, ROOT / "build" / "tidy-cache")
    print(f"{len(commands)} sources, {read} read, {failed} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
