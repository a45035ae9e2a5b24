# sheet.sh PROGRAM FOLDER: the sheet in FOLDER has the samples of the one that its script makes. The
# files may differ, by the version of zlib.
set -euo pipefail
command -v pngtopam >/dev/null || { echo "skipped: netpbm is not installed"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$2/make-sheet.sh" "$1" "$scratch/sheet.png"
pngtopam "$2/sheet.png" >"$scratch/wanted"
pngtopam "$scratch/sheet.png" >"$scratch/got"
cmp "$scratch/wanted" "$scratch/got"
