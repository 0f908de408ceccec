#!/bin/sh
# Makes the PNG pictures that the program loads from their SVG sources.
# Needs rsvg-convert (Debian: librsvg2-bin) and, for the small lettering of
# the About picture, the DejaVu Sans font.  optipng is used when it is there.
set -e
cd "$(dirname "$0")"
for name in logo_quor Brellum about; do
    rsvg-convert --format=png --output="$name.png" "$name.svg"
    if command -v optipng >/dev/null 2>&1; then
        optipng -quiet -o5 -strip all "$name.png"
    fi
done
