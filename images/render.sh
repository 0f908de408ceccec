#!/bin/sh
# Makes the PNG pictures that the program loads, and the icons of the desktop, from their SVG
# sources.  Needs rsvg-convert (Debian: librsvg2-bin) and, for the small lettering of the About
# picture, the DejaVu Sans font.  optipng is used when it is there.
set -e
cd "$(dirname "$0")"

# render SVG PNG [OPTION...]
render() {
    svg=$1
    png=$2
    shift 2
    rsvg-convert --format=png "$@" --output="$png" "$svg"
    if command -v optipng >/dev/null 2>&1; then
        optipng -quiet -o5 -strip all "$png"
    fi
}

for name in logo_quor Brellum about; do
    render "$name.svg" "$name.png"
done
for size in 16 22 24 32 48 64 128 256; do
    mkdir -p "../desktop/icons/${size}x$size"
    render logo_quor.svg "../desktop/icons/${size}x$size/quorbel.png" --width=$size --height=$size
done
