#!/usr/bin/env bash
# adding_an_algorithm_test.sh PYTHON SCRATCH: the check of the pages about adding an algorithm must reject a
# page whose edits don't fit the sources, naming the file, and a page with too few edits.
set -euo pipefail
check=$(dirname "$0")/adding_an_algorithm.py python=$1 scratch=$2

must_reject() {  # EXPECTED, the page on standard input
  local root=$scratch/root output
  rm -rf "$scratch"
  mkdir -p "$root/docs"
  printf 'one\ntwo\n' >"$root/file.txt"
  cat >"$root/docs/adding-an-algorithm.md"
  if output=$("$python" "$check" "$root" "$scratch/copy" built host c++ cmake 2>&1) || [[ $output != *"$1"* ]]; then
    echo "expected \"$1\", got: $output"
    exit 1
  fi
}

must_reject "file.txt has no such lines" <<'PAGE'
In `file.txt`:

```diff
 two
 one
+three
```
PAGE
must_reject "has only 1 edits" <<'PAGE'
In `file.txt`:

```diff
 one
+three
```
PAGE
