# compare.sh DESCRIBED SHIPPED STORED HEADERS: what programs rely on in the library DESCRIBED, which
# has types, is what STORED says; the library SHIPPED exports the same names. With
# VISTREL_STORE_ABI=1 in the environment, STORED is written again.
set -euo pipefail
described=$1 shipped=$2 stored=$3 headers=$4
export LC_ALL=C

names() { nm -D --defined-only --with-symbol-versions "$1" | sed 's/^[^ ]* //' | sort; }
diff <(names "$described") <(names "$shipped")
if [ "${VISTREL_STORE_ABI:-}" = 1 ]; then
  abidw --headers-dir "$headers" --drop-private-types --exported-interfaces-only --no-corpus-path \
    --no-comp-dir-path --no-show-locs --no-elf-needed --type-id-style hash --out-file "$stored" \
    "$described"
fi
abidiff "$stored" "$described"
