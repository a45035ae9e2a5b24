#!/bin/sh
# make-developed.sh PROGRAM FOLDER: makes converted.png and developed.png in the folder, the README's
# pictures of one frame at a third of its size, from the program's own scene.
set -eu
scene=$(mktemp -d)
trap 'rm -rf "$scene"' EXIT
"$1" scene --camera -s 1440x960 -o "$scene/scene.dng"
"$1" convert "$scene/scene.dng" --bin 3 --bin-means -o "$2/converted.png" 2>"$scene/notes"
"$1" develop "$scene/scene.dng" --bin 3 -o "$2/developed.png" >"$scene/look"
