# sheet.sh PROGRAM FOLDER: the sheet in FOLDER is the one that its script makes.
set -euo pipefail
sheet=$(mktemp --suffix .png)
trap 'rm -f "$sheet"' EXIT
"$2/make-sheet.sh" "$1" "$sheet"
cmp "$sheet" "$2/sheet.png"
