#!/usr/bin/env bash
# Runs all tests on a build that counts, and prints lines and branches reached for each folder of
# src and host, then the functions that no test calls. Options go on to ctest.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

packages+=("${check_packages[@]}")
install_missing
build coverage
folder=$root/build/coverage
find "$folder" -name '*.gcda' -delete # counts of an earlier run
say "Running the tests"
# What fails here fails under ./test as well; the table comes all the same.
ctest --test-dir "$folder" --parallel "$jobs" --output-on-failure --no-tests=error "$@" >&2 || true
say "Counting"
gcovr --root "$root" --object-directory "$folder" --filter "$root/src/" --filter "$root/host/" \
    --exclude-throw-branches --exclude-unreachable-branches \
    --gcov-ignore-parse-errors -j "$(nproc)" --json "$folder/coverage.json"
python3 "$root/scripts/coverage-table.py" "$folder/coverage.json"
