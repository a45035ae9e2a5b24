# Sourced by the other scripts. Their arguments: the folder of pages and completions, the program.
set -euo pipefail
manual=$1
vistrel=$2
faults=0

# need PROGRAM...: skips the test if one is not installed.
need() {
  for program; do
    command -v "$program" >/dev/null || { echo "skipped: $program is not installed"; exit 77; }
  done
}

# expect WHAT WANTED GOT
expect() {
  [ "$2" = "$3" ] && return
  printf '%s: expected "%s", got "%s"\n' "$@"
  faults=$((faults + 1))
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
