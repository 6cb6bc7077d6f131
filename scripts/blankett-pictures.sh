#!/usr/bin/env bash
# Makes the options screen's pictures of the four invoice forms anew from the report files.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

install_missing
build release blankett_pictures
QT_QPA_PLATFORM=offscreen "$root/build/release/tests/reports/blankett_pictures" "$root/resources"
say "Pictures of the invoice forms: resources/blankett-0.png to blankett-3.png"
