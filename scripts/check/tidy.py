#!/usr/bin/python3
"""clang-tidy over all sources of src and host by the rules of .clang-tidy."""

import json
import os
import subprocess
import sys

from tree import ROOT, WORK, commands, read, run_cached, tracked

TIDY = os.environ["CLANG_TIDY"]


def largest_first(names):
    """So that no processor is left with a long file at the end."""
    return sorted(names, key=lambda name: -os.path.getsize(ROOT / name))


WORK.mkdir(parents=True, exist_ok=True)
database = [
    {"directory": str(ROOT), "file": str(ROOT / name), "arguments": ["clang++", *words, "-c", name]}
    for name, words in commands().items()
]
(WORK / "compile_commands.json").write_text(json.dumps(database))

version = subprocess.run([TIDY, "--version"], check=True, capture_output=True, text=True).stdout
key = [version, read(".clang-tidy")]
sources = [name for name in tracked("src/*.cpp", "host/*.cpp") if name in commands()]


def command(source):
    return [TIDY, "-p", str(WORK), "--quiet", source]


sys.exit(0 if run_cached("tidy", largest_first(sources), key, command) else 1)
