#!/usr/bin/python3
"""Small rules of files and their names, which no compiler looks at."""

import os
import re
import sys
from collections import defaultdict
from pathlib import Path

from tree import ROOT, read, tracked

# Whose blanks are ours; data and the documents that tests compare with keep theirs.
WRITTEN_BY_HAND = {".cpp", ".h", ".cmake", ".py", ".sh", ".md", ".json", ".ui", ".yml"}
# Where this tree and its developer live, and any home but those of the users in our examples.
PRIVATE_PATH = re.compile(rf"{re.escape(str(ROOT))}\b|{Path.home()}/|/home/(?!kari|kåre)\w+")
LINK = re.compile(r"!?\[[^]]*\]\(([^)#\s]*)#?[^)]*\)")

faults = []


def is_written_by_hand(name):
    path = ROOT / name
    return (
        path.suffix in WRITTEN_BY_HAND
        or path.name == "CMakeLists.txt"
        or (not path.suffix and os.access(path, os.X_OK))
    )


def check_line(name, number, line):
    if "\t" in line:
        faults.append(f"{name}:{number}: a tab")
    if line != line.rstrip():
        faults.append(f"{name}:{number}: blanks at the end of the line")
    if match := PRIVATE_PATH.search(line):
        faults.append(f"{name}:{number}: {match[0]} is a place on one machine")


def check_links(name, number, line):
    for match in LINK.finditer(line):
        target = match[1]
        if target and "://" not in target and not (ROOT / name).parent.joinpath(target).exists():
            faults.append(f"{name}:{number}: the link leads to {target}, which does not exist")


def check_case(names):
    """On some disks two names that differ in case alone are one file."""
    spelled = defaultdict(set)
    for name in names:
        for path in [Path(name), *Path(name).parents]:
            spelled[str(path).casefold()].add(str(path))
    for alike in spelled.values():
        if len(alike) > 1:
            faults.append(": ".join(sorted(alike)) + " differ in case alone")


names = tracked()
check_case(names)
for name in filter(is_written_by_hand, names):
    for number, line in enumerate(read(name).split("\n"), 1):
        check_line(name, number, line)
        if name.endswith(".md"):
            check_links(name, number, line)

print(*faults, sep="\n", end="\n" if faults else "")
sys.exit(1 if faults else 0)
