#!/usr/bin/env bash
# Runs the fast tests of the floors that compute under valgrind, on the release build: a value that
# nobody set is seen by no sanitizer that the gate has.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

folders=(runtime rules data platform/ado platform/ado/dialect platform/report)
# valgrind computes with 64 bits where the machine has 80 (long double), so SQLite reads the double
# 1E300 off by its last bit there.
left_out=SqliteRows.ValuesComeOutByTheirColumnsType

# check PROGRAM: its own words come only where something is wrong.
check() {
    local log
    log=$(mktemp)
    if ! LC_ALL=nb_NO.UTF-8 valgrind --quiet --error-exitcode=9 --suppressions="$root/tests/valgrind.supp" \
        "$1" --gtest_brief=1 --gtest_filter="-$left_out" >"$log" 2>&1; then
        cat "$log"
        die "$(basename "$1") fails under valgrind."
    fi
    rm "$log"
    say "$(basename "$1") is clean"
}

if (($# > 0)); then # one program, for the parallel runs below
    check "$1"
    exit
fi

packages+=("${check_packages[@]}")
install_missing
build release
programs=()
for folder in "${folders[@]}"; do
    while IFS= read -r program; do
        programs+=("$program")
    done < <(find "$root/build/release/tests/$folder" -maxdepth 1 -type f -perm -u+x | sort)
done
((${#programs[@]} > 0)) || die "There are no test programs."
say "Running ${#programs[@]} test programs under valgrind"
export TZ=Europe/Oslo LANG=nb_NO.UTF-8 QT_QPA_PLATFORM=offscreen
# Regular expressions that are compiled at run time read ahead of what was set.
export QT_ENABLE_REGEXP_JIT=0
printf '%s\0' "${programs[@]}" | xargs -0 -n 1 -P "$(nproc)" "${BASH_SOURCE[0]}"
