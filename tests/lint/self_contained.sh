#!/usr/bin/env bash
# self_contained.sh COMPILER FOLDER SCRATCH: fails unless every header outside tests/ and bench/
# compiles alone, and every vector body (*-inl.h) also at each level.
set -euo pipefail
export compiler=$1 scratch=$3
root=$2
mkdir -p "$scratch"
scratch=$(realpath "$scratch")
cd "$root"

compile() {
  "$compiler" -std=c++20 -Wall -Werror -Wno-psabi -I. -Iinclude "$@"
}

must_compile() {  # NAME SOURCE [OPTION...]
  local log
  log=$(printf '%s\n' "$2" | compile -fsyntax-only "${@:3}" -x c++ - 2>&1) || {
    printf '%s does not compile alone:\n%s\n' "$1" "$log"
    return 1
  }
}

check() {  # HEADER
  local options=() body=
  # It includes the body that another file names.
  if grep -q '^ *# *include VISTREL_BODY' "$1"; then return; fi
  if grep -q '^#include <CLI/CLI.hpp>' "$1"; then options=(-include "$scratch/cli.h"); fi
  if [[ $1 == python/* ]]; then
    read -ra options <<<"-fvisibility=hidden $(/usr/bin/python3-config --includes)"
  fi
  if [[ $1 == gstreamer/* ]]; then
    pkg-config --exists gstreamer-video-1.0 || return 0
    read -ra options <<<"$(pkg-config --cflags gstreamer-base-1.0 gstreamer-video-1.0)"
  fi
  # The guards of a vector body leave out the level that it had alone.
  if [[ $1 == *-inl.h ]]; then
    options=(-include "$scratch/intrinsics.h")
    body="
#define VISTREL_BODY \"$1\"
#include \"common/simd/each_level.h\""
  fi
  must_compile "$1" "#include \"$1\"$body" "${options[@]}"
}
export -f compile must_compile check

mapfile -t headers < <(find [a-z]* \( -path build -o -path tests -o -path bench \) -prune \
  -o \( -name '*.h' -o -name '*.hpp' \) -print)
[ ${#headers[@]} -gt 0 ] || { echo "no headers in $root"; exit 1; }

# Precompiled, because they are slow to compile: intrinsics for vector bodies, all of which include
# them, and CLI11 for headers that include it themselves.
precompile() {  # NAME SOURCE
  printf '%s\n' "$2" >"$scratch/$1.h"
  compile -x c++-header "$scratch/$1.h" -o "$scratch/$1.h.gch"
}
precompile intrinsics $'#if __has_include(<immintrin.h>)\n#include <immintrin.h>\n#endif'
if grep -q '^#include <CLI/CLI.hpp>' "${headers[@]}"; then
  precompile cli '#include <CLI/CLI.hpp>'
fi
printf '%s\n' "${headers[@]}" | xargs -P "$(nproc)" -I{} bash -c 'check {}'
echo "${#headers[@]} headers compile alone"
