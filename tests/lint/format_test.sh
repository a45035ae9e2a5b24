#!/usr/bin/env bash
# format_test.sh FOLDER SCRATCH: the format check must pass formatted sources, reject each kind of
# source that is not formatted, by name, and accept what `-i` makes of it.
set -euo pipefail
script=$(dirname "${BASH_SOURCE[0]}")/format.sh
style=$1/.clang-format scratch=$2
check() { bash "$script" "$scratch" --dry-run -Werror 2>&1; }

new_tree() {
  rm -rf "$scratch"
  mkdir -p "$scratch/output"
  cp "$style" "$scratch"
  git -C "$scratch" init -q
  printf 'int f(int n) { return n; }\n' >"$scratch/output/good.cpp"
  printf '// clang-format off\nint  table[] = {1,2};\n' >"$scratch/output/table.inl"
  git -C "$scratch" add .
}

new_tree
log=$(check) || {
  status=$?
  echo "formatted sources were rejected: $log"
  exit "$status"
}
for ending in h hpp inl c cpp; do
  new_tree
  printf 'int  f( int n ){return n;}\n' >"$scratch/output/bad.$ending"
  git -C "$scratch" add .
  if log=$(check) || ! grep -q "output/bad.$ending" <<<"$log"; then
    echo "output/bad.$ending was not rejected by name: $log"
    exit 1
  fi
  bash "$script" "$scratch" -i
  check || { echo "output/bad.$ending is rejected after formatting"; exit 1; }
done

rm "$scratch"/output/*
git -C "$scratch" add .
if check >/dev/null; then
  echo "an empty tree was accepted"
  exit 1
fi
