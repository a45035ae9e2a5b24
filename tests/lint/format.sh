#!/usr/bin/env bash
# format.sh FOLDER OPTION...: runs clang-format 14 with these options on every source that git
# tracks in the folder. A file opts out with `// clang-format off` on its first line.
set -euo pipefail
cd "$1"
if ! command -v clang-format-14 >/dev/null || ! [ -e .git ]; then
  echo "skipped: needs clang-format-14 and a git repository"
  exit 77
fi
mapfile -d '' sources < <(git ls-files -z '*.h' '*.hpp' '*.inl' '*.c' '*.cpp')
[ ${#sources[@]} -gt 0 ] || { echo "no sources in $1"; exit 1; }
printf '%s\0' "${sources[@]}" | xargs -0 -P "$(nproc)" -n 100 clang-format-14 "${@:2}"
