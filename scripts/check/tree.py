"""What the checks know of the tree: its files, who includes whom, and how each file is compiled."""

import functools
import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build/release"
WORK = ROOT / "build/check"

INCLUDE = re.compile(r'\s*#\s*include\s+"([^"]+)"')


def tracked(*patterns):
    """The files of the repository, new ones included, as paths from the root."""
    command = ["git", "ls-files", "--cached", "--others", "--exclude-standard", "-z", *patterns]
    names = subprocess.run(command, cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return sorted(name for name in set(names.split("\0")) if name and (ROOT / name).is_file())


def read(name):
    return (ROOT / name).read_text(encoding="utf-8", errors="surrogateescape")


@functools.cache
def _forms():
    return {f"ui_{Path(name).stem}.h": name for name in tracked("*.ui")}


def _resolved(name, included):
    for folder in (Path(name).parent, Path("src"), Path("tests"), Path()):
        candidate = os.path.normpath(folder / included)
        if (ROOT / candidate).is_file():
            return candidate
    return _forms().get(included)  # made of a form of ours; what else is not found is a library's


@functools.cache
def includes(name):
    """The files of the repository that a file includes itself, as (line, path)."""
    if name.endswith(".ui"):
        return ()
    found = []
    for number, line in enumerate(read(name).splitlines(), 1):
        match = INCLUDE.match(line)
        if match and (path := _resolved(name, match[1])):
            found.append((number, path))
    return tuple(found)


def closure(name):
    """The file and all files of the repository that it includes, directly or not."""
    seen = {name}
    waiting = [name]
    while waiting:
        for _, path in includes(waiting.pop()):
            if path not in seen:
                seen.add(path)
                waiting.append(path)
    return sorted(seen)


@functools.cache
def commands():
    """For each of our sources its arguments for clang: without compiler, file, output and what is
    g++'s alone."""
    ours = set(tracked("*.cpp"))
    result = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        name = os.path.relpath(entry["file"], ROOT)
        if name not in ours or name in result:
            continue
        arguments = shlex.split(entry["command"])
        start = next(i for i, word in enumerate(arguments) if word.startswith("-"))
        kept = []
        words = iter(arguments[start:])
        for word in words:
            if word in ("-o", "-c"):
                next(words)
            elif word == "-include" and (header := next(words)).endswith("cmake_pch.hxx"):
                pass  # clang cannot read it, and a file should not need it
            elif word == "-include":
                kept += [word, header]
            elif word not in ("-Winvalid-pch", "-fpch-preprocess"):
                kept.append(word)
        result[name] = kept
    return result


def shown(text):
    """What a tool printed, with paths from the root."""
    return text.replace(f"{ROOT}/", "").strip()


def run_cached(check, files, key, command):
    """Runs `command(file)` for each file on all processors and prints what fails; True when none
    does. A file that passed is passed over until it, what it includes or `key` changes."""
    stamps = WORK / "stamps" / check
    stamps.mkdir(parents=True, exist_ok=True)

    def stamp(name):
        digest = hashlib.sha256(json.dumps([key, command(name)]).encode())
        for path in closure(name):
            digest.update(f"\0{path}\0".encode())
            digest.update((ROOT / path).read_bytes())
        return stamps / digest.hexdigest()

    known = {name: stamp(name) for name in files}
    for old in set(stamps.iterdir()) - set(known.values()):
        old.unlink()
    waiting = [name for name in files if not known[name].exists()]

    def passes(name):
        result = subprocess.run(command(name), cwd=ROOT, capture_output=True, text=True)
        if result.returncode == 0:
            known[name].touch()
        else:
            # In one piece, since others print at the same time.
            sys.stdout.write(shown(result.stdout or result.stderr) + "\n")
            sys.stdout.flush()
        return result.returncode == 0

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        return all(list(pool.map(passes, waiting)))
