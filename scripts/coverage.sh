#!/usr/bin/env bash
# Runs all tests on a build that counts, and prints lines and branches reached for each folder of
# src and host, then the functions that no test calls. Options go on to ctest.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

packages+=("${check_packages[@]}")
install_missing
build coverage
folder=$root/build/coverage
# What an earlier tree or run has left behind would be counted with this one.
ninja -C "$folder" -t cleandead >/dev/null
find "$folder" -name '*.gcda' -delete
find "$folder" -name '*.gcno' | while read -r notes; do
    [[ -f ${notes%.gcno}.o ]] || rm "$notes"
done
# A program that a test leaves without room must not speak of its counts among its own words.
export GCOV_ERROR_FILE=/dev/null
say "Running the tests"
# What fails here fails under ./test as well; the table comes all the same.
ctest --test-dir "$folder" --parallel "$jobs" --output-on-failure --no-tests=error "$@" >&2 || true
say "Counting"
gcovr --root "$root" --object-directory "$folder" --filter "$root/src/" --filter "$root/host/" \
    --exclude-throw-branches --exclude-unreachable-branches \
    --gcov-ignore-parse-errors -j "$(nproc)" --json "$folder/coverage.json"
python3 "$root/scripts/coverage-table.py" "$folder/coverage.json"
