#!/usr/bin/python3
"""Every header compiles alone: without the precompiled header, and as the first of its file."""

import sys
from pathlib import Path

from tree import closure, commands, run_cached, tracked


includers = {}
for source in commands():
    for path in closure(source):
        includers.setdefault(path, source)


def arguments(header):
    """Those of the header's own source, of one that includes it, or of one in its folder."""
    own = str(Path(header).with_suffix(".cpp"))
    if own in commands():
        return commands()[own]
    if header in includers:
        return commands()[includers[header]]
    folder = Path(header).parent
    return next(words for source, words in commands().items() if Path(source).parent == folder)


def command(header):
    # Included into an empty file, since "#pragma once" has no place in a main file.
    return ["clang++", *arguments(header), "-fsyntax-only", "-x", "c++", "-include", header,
            "/dev/null"]


sys.exit(0 if run_cached("headers", tracked("*.h"), "", command) else 1)
