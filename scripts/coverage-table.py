#!/usr/bin/env python3
"""Prints gcovr's counts as a table of folders, and the functions that were never called."""

import collections
import json
import pathlib
import subprocess
import sys

UNCALLED_SHOWN = 200


def share(reached, all_):
    return f"{100 * reached / all_:5.1f} %" if all_ else "      -"


def demangled(names):
    if not names:
        return []
    answer = subprocess.run(["c++filt"], input="\n".join(names), capture_output=True, text=True, check=True)
    return answer.stdout.splitlines()


def main():
    with open(sys.argv[1], encoding="utf-8") as report:
        files = json.load(report)["files"]
    # For each folder: lines reached, lines, branches reached, branches.
    counts = collections.defaultdict(lambda: [0, 0, 0, 0])
    uncalled = []
    for file in files:
        folder = str(pathlib.PurePosixPath(file["file"]).parent)
        for key in (folder, "all but the host" if not folder.startswith("host") else None):
            if key is None:
                continue
            for line in file["lines"]:
                if line.get("gcovr/noncode") or line.get("gcovr/excluded"):
                    continue
                counts[key][0] += line["count"] > 0
                counts[key][1] += 1
                for branch in line["branches"]:
                    counts[key][2] += branch["count"] > 0
                    counts[key][3] += 1
        for function in file.get("functions", []):
            if function["execution_count"] == 0:
                uncalled.append((file["file"], function["lineno"], function["name"]))

    print(f"{'folder':34} | {'lines':>7} | {'reached':>7} | {'branches':>8} | {'reached':>7}")
    for folder in sorted(counts, key=lambda name: (name.startswith("all"), name)):
        lines, all_lines, branches, all_branches = counts[folder]
        print(f"{folder:34} | {all_lines:7} | {share(lines, all_lines)} | "
              f"{all_branches:8} | {share(branches, all_branches)}")

    print(f"\nFunctions that no test calls: {len(uncalled)}")
    names = demangled([name for _, _, name in uncalled])
    for (file, line, _), name in list(zip(uncalled, names))[:UNCALLED_SHOWN]:
        print(f"{file}:{line}: {name}")


if __name__ == "__main__":
    main()
