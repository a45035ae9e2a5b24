# pictures.sh PROGRAM FOLDER: the README's pictures in FOLDER have the samples of those that the
# scripts there make. The files may differ, by the version of zlib.
set -euo pipefail
command -v pngtopam >/dev/null || { echo "skipped: netpbm is not installed"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$2/make-sheet.sh" "$1" "$scratch/sheet.png"
"$2/make-developed.sh" "$1" "$scratch"
for picture in sheet converted developed; do
  pngtopam "$2/$picture.png" >"$scratch/wanted"
  pngtopam "$scratch/$picture.png" >"$scratch/got"
  cmp "$scratch/wanted" "$scratch/got" || { echo "$picture.png is out of date"; exit 1; }
done
