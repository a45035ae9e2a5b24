#!/bin/sh
# make-sheet.sh PROGRAM SHEET.png: makes the README's sheet, from the program's own scene.
set -eu
scene=$(mktemp -d)
trap 'rm -rf "$scene"' EXIT
"$1" scene -s 768x512 --bits 10 --phase rggb --noise 0 -o "$scene/scene.pgm"
"$1" compare "$scene/scene.pgm" --phase rggb --bits 10 --crop 76x56+150+150 --zoom 3 -o "$2"
