#!/usr/bin/env bash
# Makes the pictures of the help pages, and of README, anew from a tour of the screens. A page asks
# for a picture by its name on the tour, as in <img src="bilder/hovedmeny.png">; for screens with more
# pixels there is one of twice the size beside it.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

pictures=$root/help/html/bilder
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# take SCALE ENDING: goes on a tour at that scale and copies the pictures that the pages ask for. The
# display is as much larger, or the screens would not fit on it.
take() {
    local name found
    printf '{"screens": [{"name": "display", "x": 0, "y": 0, "width": %d, "height": %d,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]}' $((1024 * $1)) $((768 * $1)) \
        >"$scratch/display$1.json"
    QT_QPA_PLATFORM=offscreen:configfile=$scratch/display$1.json QT_SCALE_FACTOR=$1 XDG_CONFIG_HOME=$scratch/settings$1 \
        "$root/build/release/bin/strekkbok-vert" --tur "$scratch/tur$1" >&2
    for name in "${names[@]}"; do
        found=$(find "$scratch/tur$1" -name "[0-9][0-9]-$name.png")
        [[ -n $found ]] || die "The tour has no picture called $name."
        cp "$found" "$pictures/$name$2.png"
    done
}

install_missing
build release strekkbok-vert Faktura
mapfile -t names < <(grep -oh 'src="bilder/[^"]*\.png"' "$root"/help/html/*.htm |
    sed 's|.*/||; s|\.png"||' | sort -u)
mkdir -p "$pictures"
take 1 ''
take 2 @2x
# README shows the printed invoice besides.
pdftoppm -r 72 -png -singlefile "$scratch/tur1/Faktura.pdf" "$root/docs/bilder/faktura"
say "Pictures of the help pages: ${names[*]}"
