#!/usr/bin/env python3
"""Holds what a text of this tree may not contain, whatever kind of file it stands in.

Prints one line for each find, with the way out, and ends with 1.
Usage: check_words.py [ROOT]
"""

import os
import re
import sys
from pathlib import Path

SKIPPED_FOLDERS = re.compile(r"^(\.git|build.*|node_modules|__pycache__|\.cache)$")
CODE = (".cpp", ".h", ".py", ".sh", ".cmake", ".in", "CMakeLists.txt", "run", "test")
DOCUMENT = re.compile(r"(?<![\w./-])(?:[\w-]+/|\.\./)*([\w-]+\.md)\b")

# The brackets keep a pattern from finding itself here.
WORDS = (
    (re.compile(r"\b(?:TO[D]O|FIX[M]E|X[X]X|HAC[K])\b"), "do it now, or leave the remark out"),
    (
        re.compile(r"(?<![\w.}])/(?:hom[e]|roo[t])/\w"),
        "no path of one machine: use one that is relative to the tree",
    ),
)
BANNERS = (
    re.compile(r"^\s*(?://|/\*|\*|#|--)\s*[-=*#~_+/]{8,}"),
    re.compile(r"^\s*(?://|/\*|\*|#)\s*([-=*#~])\1{2,}\s*\w.*\1{3,}"),
)


def texts(root):
    """Each text file with its lines; what holds a zero byte is no text."""
    for folder, folders, files in os.walk(root):
        folders[:] = sorted(f for f in folders if not SKIPPED_FOLDERS.match(f))
        for name in sorted(files):
            path = Path(folder) / name
            data = path.read_bytes() if path.is_file() else b"\0"
            if b"\0" not in data:
                yield path, data.decode("utf-8", errors="replace").splitlines()


def check_line(line, is_code, documents):
    """What is wrong with one line: pairs of the find and the way out."""
    for pattern, way_out in WORDS:
        if match := pattern.search(line):
            yield match[0], way_out
    for match in DOCUMENT.finditer(line):
        if match[1] not in documents:
            yield match[0], "no such document in the tree: say here what it would say"
    if is_code and any(banner.match(line) for banner in BANNERS):
        yield line.strip()[:24], "a banner comment: a header says in a sentence what the class is for"


def check_tree(root):
    """All finds as lines of text, in the order of the files."""
    found = list(texts(root))
    documents = {path.name for path, _ in found if path.suffix == ".md"}
    messages = []
    for path, lines in found:
        is_code = path.name.endswith(CODE)
        for number, line in enumerate(lines, 1):
            for find, way_out in check_line(line, is_code, documents):
                messages.append(
                    f'{path.relative_to(root)}:{number}: "{find}". Way out: {way_out}.'
                )
    return messages


def main(arguments):
    root = Path(arguments[0]) if arguments else Path(__file__).resolve().parent.parent
    messages = check_tree(root)
    for message in messages:
        print(message)
    return 1 if messages else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
