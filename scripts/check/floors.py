#!/usr/bin/python3
"""Which file may include which: what its target links, directly or through others, and no circles.

Every target sees all folders of its root, so the compiler lets an include of a floor above pass."""

import os
import re
import sys
from collections import defaultdict
from pathlib import Path

from tree import BUILD, ROOT, includes, tracked

faults = []


def fault(place, text):
    faults.append(f"{place}: {text}")


class Target:
    def __init__(self, line):
        self.name, folder, sources, links, handed_on = line.split("|")
        self.folder = os.path.relpath(folder, ROOT)
        self.sources = {
            os.path.normpath(os.path.relpath(os.path.join(folder, source), ROOT))
            for source in sources.split(";")
            if source
        }
        self.links = links.split(";")
        self.handed_on = handed_on.split(";")


targets = [Target(line) for line in (BUILD / "targets.txt").read_text().splitlines()]
by_name = {target.name: target for target in targets}


def seen_by(target):
    """The target and all that it links, with what those hand on."""
    seen = {target.name}
    waiting = [name for name in target.links if name in by_name]
    while waiting:
        name = waiting.pop()
        if name not in seen:
            seen.add(name)
            waiting += [next_one for next_one in by_name[name].handed_on if next_one in by_name]
    return seen


def circle(start, following):
    """A way from `start` back to it, or None."""
    came_from = {}
    waiting = [start]
    while waiting:
        at = waiting.pop()
        for step in following(at):
            if step == start:
                way = [start]
                while at != start:
                    way.append(at)
                    at = came_from[at]
                return [start] + way[:0:-1] + [start]
            if step not in came_from:
                came_from[step] = at
                waiting.append(step)
    return None


def report_circles(names, following, place):
    told = set()
    for name in names:
        if name not in told and (way := circle(name, following)):
            told.update(way)
            fault(place(name), "a circle: " + " -> ".join(way))


FLOORS = ("src/", "host/")
owners = defaultdict(set)  # of a file of a floor, the targets that name it there
for target in targets:
    for source in target.sources:
        if source.startswith(FLOORS) and target.folder.startswith(FLOORS):
            owners[source].add(target.name)

for target in targets:
    seen = seen_by(target)
    # What stands in another folder is judged where it is at home.
    home = [name for name in target.sources if not name.startswith(FLOORS) or target.name in owners[name]]
    for name in sorted(home):
        if not name.endswith((".cpp", ".h")) or not (ROOT / name).is_file():
            continue
        for line, included in includes(name):
            source = os.path.splitext(included)[0] + ".cpp"
            if {included, source} & target.sources or not owners[included] or owners[included] & seen:
                continue
            owner = " or ".join(sorted(owners[included]))
            fault(f"{name}:{line}", f"{target.name} does not link {owner}, which holds {included}")

def stands_behind_an_option(name):
    """Named by the CMakeLists.txt of its folder or one above, though by no target of this build."""
    folders = Path(name).parents
    lists = [ROOT / folder / "CMakeLists.txt" for folder in folders]
    return any(
        os.path.relpath(name, folder) in re.split(r"[\s()]+", file.read_text())
        for folder, file in zip(folders, lists)
        if file.is_file()
    )


named = {source for target in targets for source in target.sources}
for name in tracked("src/*.cpp", "src/*.h", "host/*.cpp", "host/*.h", "tests/*.cpp",
                    "benchmarks/*.cpp"):
    is_named = owners[name] if name.startswith(FLOORS) else name in named
    if not is_named and not stands_behind_an_option(name):
        fault(name, "stands in no target's SOURCES")

report_circles(sorted(by_name), lambda name: [n for n in by_name[name].links if n in by_name],
               lambda name: by_name[name].folder + "/CMakeLists.txt")
report_circles(tracked("*.cpp", "*.h"), lambda name: [path for _, path in includes(name)],
               lambda name: name)

print(*faults, sep="\n", end="\n" if faults else "")
sys.exit(1 if faults else 0)
