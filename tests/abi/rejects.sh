# rejects.sh DESCRIBED SHIPPED STORED HEADERS: compare.sh fails when a field lies elsewhere and when a
# function is missing.
set -uo pipefail
here=$(dirname "$0")
changed=$(mktemp)
trap 'rm -f "$changed"' EXIT

expect_failure() {  # SED-SCRIPT
  sed -e "$1" "$3" >"$changed"
  cmp -s "$3" "$changed" && { echo "nothing to change: $1"; exit 1; }
  bash "$here/compare.sh" "$2" "$4" "$changed" "$5" && { echo "not noticed: $1"; exit 1; }
  return 0
}
expect_failure "/class-decl name='vistrel_frame'/,/class-decl>/s/in-bits='64'/in-bits='96'/" \
  "$1" "$3" "$2" "$4"
expect_failure "s/vistrel_unpack/vistrel_other/" "$1" "$3" "$2" "$4"
