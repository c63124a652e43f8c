#!/usr/bin/env python3
"""Holds the floors of the house: who may include whom, as tools/floors.txt tells.

Prints one line for each include that breaks a rule, with the way out, and ends with 1.
Usage: check_floors.py [ROOT]
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"(?P<own>[^"]+)"|<(?P<system>[^>]+)>)')
OWN_FOLDERS = ("src", "include", "apps", "tests", "bench", "fuzz")
SEARCH_FOLDERS = ("src", "include", "tests", "apps")
SUFFIXES = (".h", ".cpp")
PUBLIC = "include/OrvAnnotation"

WAY_OUT_UP = (
    "let {lower} own a small abstract class that names just what it needs (as "
    "canvas/CanvasSession.h does for the session) and implement it in {upper}"
)
WAY_OUT_ADAPTER = (
    "use the abstract class in src/platform/ports, reached through Platform::current(); only a "
    "program or a test picks an adapter"
)
WAY_OUT_TOOLKIT = (
    "say what is needed as an abstract class in src/platform/ports and implement it in an adapter"
)
WAY_OUT_PART = "put what is shared into {allowed}, or into an abstract class of src/canvas behind them"
WAY_OUT_PUBLIC = "hosts see only include/OrvAnnotation: forward-declare the class, or keep it behind a pointer"
WAY_OUT_CYCLE = "move what both need into a header of its own, or let one own an abstract class"


class RulesError(Exception):
    """floors.txt can't be read; the text names the line."""


@dataclass
class Rules:
    floors: list = field(default_factory=list)
    adapters: dict = field(default_factory=dict)
    adapter_users: list = field(default_factory=list)
    parts: list = field(default_factory=list)
    toolkit_names: list = field(default_factory=list)
    toolkit_folders: list = field(default_factory=list)
    exceptions: set = field(default_factory=set)

    def home(self, path):
        """The floor or adapter that a path belongs to; None for a folder without rules."""
        known = [f for f in [*self.floors, *self.adapters] if inside(path, f)]
        return max(known, key=len, default=None)


@dataclass(frozen=True)
class Include:
    path: str
    line: int
    name: str
    system: bool
    target: str | None


def inside(path, folder):
    return path == folder or path.startswith(folder + "/")


def read_rules(path):
    rules = Rules()
    section = None
    for number, raw in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        line = raw.strip()
        if not line or line.startswith("#"):
            continue
        if line.startswith("["):
            section = line
            continue
        try:
            read_rule(rules, section, line)
        except ValueError as error:
            raise RulesError(f"{path}:{number}: {error}") from error
    return rules


def read_rule(rules, section, line):
    if section == "[floors]":
        rules.floors.append(line)
    elif section == "[adapter users]":
        rules.adapter_users.append(line)
    else:
        head, colon, rest = line.partition(":")
        words = rest.split()
        if not colon or not words:
            raise ValueError(f'"{line}" is not "name: words"')
        if section == "[adapters]":
            rules.adapters[head] = words
        elif section == "[parts]":
            rules.parts.append((head, words[0], words[1:]))
        elif section == "[exceptions]":
            if len(words) < 2:
                raise ValueError(f'"{line}" gives no reason')
            rules.exceptions.add((head, words[0]))
        elif section == "[toolkits]" and head == "names":
            rules.toolkit_names = words
        elif section == "[toolkits]" and head == "in":
            rules.toolkit_folders = words
        else:
            raise ValueError(f'"{line}" stands in no known section')


def own_files(root):
    for folder in OWN_FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in SUFFIXES and path.is_file():
                yield path.relative_to(root).as_posix()


def resolve(root, path, name):
    """The file of this tree that an include means, relative to the root; None for a foreign one."""
    for folder in [(root / path).parent, *(root / f for f in SEARCH_FOLDERS)]:
        candidate = folder / name
        if candidate.is_file():
            return candidate.resolve().relative_to(root.resolve()).as_posix()
    return None


def read_includes(root, path):
    found = []
    text = (root / path).read_text(encoding="utf-8", errors="replace")
    for number, line in enumerate(text.splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            name = match["own"] or match["system"]
            found.append(
                Include(path, number, name, match["system"] is not None, resolve(root, path, name))
            )
    return found


def is_toolkit(name, prefixes):
    for prefix in prefixes:
        if prefix.endswith("*"):
            if re.match(re.escape(prefix[:-1]) + "[A-Z]", name):
                return True
        elif name.startswith(prefix):
            return True
    return False


def check_include(rules, include):
    """(what is wrong, the way out), or None."""
    path, target = include.path, include.target
    if (path, include.name) in rules.exceptions:
        return None
    if target is None:
        return check_foreign(rules, include)
    home, other = rules.home(path), rules.home(target)
    if inside(path, PUBLIC):
        if not inside(target, PUBLIC):
            return "a public header includes an internal one", WAY_OUT_PUBLIC
        return None
    for folder, part, allowed in rules.parts:
        if inside(path, folder) and rules.home(target) == part:
            if target not in [f"{part}/{header}" for header in allowed]:
                return (
                    f"{folder} includes of {part} only {', '.join(allowed)}",
                    WAY_OUT_PART.format(allowed=", ".join(allowed)),
                )
    if other in rules.adapters and other != home:
        return check_adapter_use(rules, path, home, target, other)
    if home in rules.adapters:
        return check_from_adapter(rules, home, target, other)
    if home is None:
        return None
    if other is None:
        return f"{home} includes {target}, which is no part of the system", WAY_OUT_TOOLKIT
    if rules.floors.index(other) > rules.floors.index(home):
        return (
            f"{home} is a lower floor than {other}",
            WAY_OUT_UP.format(lower=home, upper=other),
        )
    return None


def check_foreign(rules, include):
    if inside(include.path, PUBLIC) and not re.fullmatch(r"\w+", include.name):
        return "a public header includes more than the standard library", WAY_OUT_PUBLIC
    if not is_toolkit(include.name, rules.toolkit_names):
        return None
    if any(inside(include.path, folder) for folder in rules.toolkit_folders):
        return None
    return f"a toolkit's header outside {' '.join(rules.toolkit_folders)}", WAY_OUT_TOOLKIT


def check_adapter_use(rules, path, home, target, other):
    if any(inside(path, folder) for folder in rules.adapter_users):
        return None
    if home in rules.adapters and allowed_for_adapter(rules, home, target):
        return None
    return f"{other} is an adapter", WAY_OUT_ADAPTER


def check_from_adapter(rules, home, target, other):
    if other == home or allowed_for_adapter(rules, home, target):
        return None
    return (
        f"the adapter {home} may not know {other or target}",
        WAY_OUT_UP.format(lower="src/platform/ports", upper=home),
    )


def allowed_for_adapter(rules, home, target):
    return any(inside(target, folder) for folder in rules.adapters[home])


def find_cycles(graph):
    """Each cycle of the include graph once, as the list of its files in the order of the round."""
    state, stack, cycles = {}, [], []

    def visit(start):
        work = [(start, iter(graph.get(start, ())))]
        state[start] = "open"
        stack.append(start)
        while work:
            node, rest = work[-1]
            step = next(rest, None)
            if step is None:
                state[node] = "done"
                stack.pop()
                work.pop()
            elif state.get(step) == "open":
                cycles.append(stack[stack.index(step):])
            elif step not in state:
                state[step] = "open"
                stack.append(step)
                work.append((step, iter(graph.get(step, ()))))

    for name in sorted(graph):
        if name not in state:
            visit(name)
    return cycles


def check_tree(root):
    """All broken rules as lines of text, in the order of the files."""
    rules = read_rules(root / "tools" / "floors.txt")
    messages, graph, lines = [], {}, {}
    for path in own_files(root):
        includes = read_includes(root, path)
        for include in includes:
            problem = check_include(rules, include)
            if problem:
                messages.append(
                    f"{path}:{include.line}: #include {include.name}: {problem[0]}. "
                    f"Way out: {problem[1]}."
                )
            if include.target:
                graph.setdefault(path, []).append(include.target)
                lines[path, include.target] = include.line
    for cycle in find_cycles(graph):
        around = " -> ".join([*cycle, cycle[0]])
        line = lines[cycle[-1], cycle[0]]
        messages.append(
            f"{cycle[-1]}:{line}: #include {cycle[0]}: a round of includes: {around}. "
            f"Way out: {WAY_OUT_CYCLE}."
        )
    return messages


def main(arguments):
    root = Path(arguments[0]) if arguments else Path(__file__).resolve().parent.parent
    try:
        messages = check_tree(root)
    except (RulesError, OSError) as error:
        print(error, file=sys.stderr)
        return 2
    for message in messages:
        print(message)
    return 1 if messages else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
