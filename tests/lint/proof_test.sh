# proof_test.sh ROOT: proof/prove notices a table that says more than the logs, a log with a missing
# field, and a failure that nobody has answered.
set -uo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

copy() {
  rm -rf "$scratch"/*
  mkdir "$scratch/docs"
  cp -r "$1/proof" "$scratch"
  cp "$1/docs/proof.md" "$scratch/docs"
}
expect() {  # RESULT WHAT
  "$scratch/proof/prove" check >"$scratch/output"
  [ $? = "$1" ] || { echo "$2"; cat "$scratch/output"; exit 1; }
}
log() {  # RESULT
  mkdir -p "$scratch/proof/logs/D2"
  rm -f "$scratch"/proof/logs/D2/*
  printf '{"row": "D2", "date": "", "machine": "", "commit": "", "command": "", "seconds": 1,
    "amount": 7, "result": "%s"}' "$1" >"$scratch/proof/logs/D2/1.json"
  "$scratch/proof/prove" table
}
copy "$1"
expect 0 "the page is rejected"
log passed
expect 0 "a log is rejected"
sed -i 's/^| D2 |\(.*\)| 7 |/| D2 |\1| 8 |/' "$scratch/docs/proof.md"
expect 1 "a wrong figure is not noticed"
log failed
expect 1 "a failure is not noticed"
log passed
sed -i 's/"machine": "",//' "$scratch/proof/logs/D2/1.json"
expect 1 "a missing field is not noticed"
