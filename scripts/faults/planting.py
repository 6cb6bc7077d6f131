"""Chooses faults and builds a copy of the tree in which each of them waits behind a switch."""

import random
import re
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

from faults.places import SWITCH, Place, places
from faults.suites import source_of

# The host program counts for half: it is there to show the module.
WEIGHTS = {"host/": 0.5}
# The release build, as users get it; its folder is where the tests look for the host.
PRESET = "release"
HEADER = "src/planted.h"
SWITCHES = r"""// Made by scripts/plant-faults: turns on the one fault that the environment names.
#pragma once

#include <cstdlib>
#include <type_traits>

// A fault may well be something that a compiler warns about, and the build takes warnings for
// errors. The last two would be no faults, though, but code that means nothing.
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic error "-Wvla"
#pragma GCC diagnostic error "-Wreturn-local-addr"

inline bool planted(int fault)
{
    static const char *const named = std::getenv("FAKTURA_PLANTED");
    static const int chosen = named ? std::atoi(named) : 0;
    return fault == chosen;
}

template<class T>
T altered(const T &value)
{
    if constexpr (std::is_same_v<T, bool>)
        return !value;
    else if constexpr (std::is_arithmetic_v<T>)
        return static_cast<T>(value + 1);
    else
        return T{};
}
"""


@dataclass(frozen=True)
class Fault:
    number: int
    place: Place

    @property
    def name(self):
        """The same in every run as long as the sources are."""
        return f"{self.place.path}:{self.place.line}:{self.place.start}:{self.place.kind}"

    @property
    def code(self):
        return self.place.after.replace(SWITCH, f"planted({self.number})")


def choose(root, count, start_value, with_headers):
    """`count` faults that do not overlap: lines by chance, and one place of each line."""
    chance = random.Random(start_value)
    by_line = {}
    for path in sorted([*root.glob("src/**/*"), *root.glob("host/**/*")]):
        if path.suffix != ".cpp" and not (with_headers and path.suffix == ".h"):
            continue
        name = str(path.relative_to(root))
        for place in places(name, path.read_text()):
            by_line.setdefault((name, place.line), []).append(place)
    lines = sorted(by_line)
    chance.shuffle(lines)
    taken = []
    for line in lines:
        place = chance.choice(by_line[line])
        weight = next((w for folder, w in WEIGHTS.items() if line[0].startswith(folder)), 1)
        if chance.random() < weight and not any(overlap(place, other) for other in taken):
            taken.append(place)
        if len(taken) == count:
            break
    return [Fault(number, place) for number, place in enumerate(taken, 1)]


def overlap(a, b):
    return a.path == b.path and a.start < b.end and b.start < a.end


def plant(root, tree, faults):
    """Brings the copy up to date. Files that stay as they are keep their time, for the build."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            cwd=root, check=True, capture_output=True, text=True).stdout
    by_path = {}
    for fault in faults:
        by_path.setdefault(fault.place.path, []).append(fault)
    for name in filter(None, listed.split("\0")):
        if not (root / name).is_file():
            continue
        content = (root / name).read_bytes()
        if name in by_path:
            content = with_faults(content.decode(), by_path[name]).encode()
        write(tree / name, content, root / name)
    write(tree / HEADER, SWITCHES.encode())


def with_faults(text, faults):
    for fault in sorted(faults, key=lambda f: f.place.start, reverse=True):
        text = text[:fault.place.start] + fault.code + text[fault.place.end:]
    # Errors are looked up by the lines of the source as it is.
    return f'#include "{Path(HEADER).name}"\n#line 1\n' + text


def write(path, content, model=None):
    if path.is_file() and path.read_bytes() == content:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)
    if model:
        shutil.copymode(model, path)


def build(root, tree, faults):
    """Builds the copy; faults that do not compile are taken out. Returns those that are left."""
    folder = tree / "build" / PRESET
    rejected = tree / "build" / "do-not-compile.txt"
    known = rejected.read_text().splitlines() if rejected.is_file() else []
    faults = [fault for fault in faults if fault.name not in known]
    while True:
        plant(root, tree, faults)
        if not (folder / "build.ninja").is_file():
            subprocess.run(["cmake", "--preset", PRESET], cwd=tree, check=True)
        ninja = subprocess.run(["ninja", "-C", str(folder), "-k", "0"],
                               capture_output=True, text=True)
        if ninja.returncode == 0:
            return faults
        blamed = blame(ninja.stdout, faults)
        if not blamed:
            raise SystemExit(ninja.stdout[-20000:] + "\nThe copy does not build.")
        with open(rejected, "a") as file:
            for fault in blamed:
                print(f"does not compile: {fault.name} {fault.code}", flush=True)
                file.write(fault.name + "\n")
        faults = [fault for fault in faults if fault not in blamed]


def blame(output, faults):
    """The faults in whose lines the compiler has found something in a file that failed. Where it
    names no such line, since it found it while optimising, all faults of the file."""
    blamed = set()
    for failed, report in re.findall(r"^FAILED: (\S+)(.*?)(?=^\[\d+/\d+\]|\Z)", output, re.S | re.M):
        named = {(path, int(line)) for path, line in re.findall(r"\b((?:src|host)/[\w./-]+):(\d+):",
                                                                report)}
        guilty = {fault for fault in faults
                  for path, line in named if fault.place.path == path
                  and fault.place.line <= line <= fault.place.last_line}
        blamed |= guilty or {fault for fault in faults if fault.place.path == source_of(failed)}
    return blamed
