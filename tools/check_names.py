#!/usr/bin/env python3
"""Holds that sources which are compiled as one have no function or constant of the same name.

The compiler refuses a name that is defined twice, but chooses silently between two functions that
take different arguments. Sources in a folder's `orv_compile_alone` may use any name.
Usage: check_names.py [ROOT]
"""

import re
import sys
from collections import defaultdict
from pathlib import Path

FOLDERS = ("src", "apps", "tests")
ALONE = re.compile(r"orv_compile_alone\(([^)]*)\)")
OPENS = re.compile(r"^namespace \{$")
CLOSES = re.compile(r"^\} ?// namespace$")
FUNCTION = re.compile(r"^(?!TEST|INSTANTIATE|MATCHER|using |struct |class |enum )[A-Za-z_].*?[\s*&](\w+)\(")
CONSTANT = re.compile(r"^(?:static |inline )?const(?:expr)? .*?\b(k[A-Z]\w*)\b")


def own_names(lines):
    """Functions and constants that only this source knows; they stand at the beginning of a line."""
    names, inside = set(), False
    for line in lines:
        if OPENS.match(line) or CLOSES.match(line):
            inside = bool(OPENS.match(line))
        elif inside:
            found = CONSTANT.match(line) or FUNCTION.match(line)
            if found:
                names.add(found[1])
    return names


def check_folder(folder):
    """A line of text for each name that more than one source of the folder has."""
    words = ALONE.findall((folder / "CMakeLists.txt").read_text(encoding="utf-8"))
    alone = set(" ".join(words).split())
    owners = defaultdict(list)
    for path in sorted(folder.glob("*.cpp")):
        if path.name not in alone:
            for name in own_names(path.read_text(encoding="utf-8").splitlines()):
                owners[name].append(path.name)
    return [
        f"{folder}: {name} is in {' and '.join(paths)}: choose another name, share it by a header, "
        "or name a source in orv_compile_alone"
        for name, paths in sorted(owners.items())
        if len(paths) > 1
    ]


def check_tree(root):
    lists = [path for name in FOLDERS for path in sorted((root / name).rglob("CMakeLists.txt"))]
    return [message for path in lists for message in check_folder(path.parent)]


def main(arguments):
    root = Path(arguments[0]) if arguments else Path(__file__).resolve().parent.parent
    messages = check_tree(root)
    print("\n".join(messages), end="\n" if messages else "")
    return 1 if messages else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
