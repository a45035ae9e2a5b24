#!/usr/bin/env bash
# self_contained_test.sh COMPILER SCRATCH: the check of headers must pass a good tree and reject each
# of a list of headers, by name.
set -euo pipefail
compiler=$1 scratch=$2
script=$(dirname "${BASH_SOURCE[0]}")/self_contained.sh
check() { bash "$script" "$compiler" "$scratch/tree" "$scratch/log" 2>&1; }

write() {  # FILE LINE...
  mkdir -p "$(dirname "$scratch/tree/$1")"
  printf '%s\n' "${@:2}" >"$scratch/tree/$1"
}

new_tree() {
  rm -rf "$scratch"
  write common/size.h '#pragma once' '#include <cstddef>' 'inline std::size_t one() { return 1; }'
  write common/simd/each_level.h \
    'namespace base {' '#include VISTREL_BODY' '}' \
    '#define VISTREL_WIDE' 'namespace wide {' '#include VISTREL_BODY' '}'
  write output/rows-inl.h 'inline int lanes() { return 1; }'
  write include/vistrel/all.hpp '#pragma once' '#include "common/size.h"'
  write tests/needs.h 'std::size_t f();'
}

must_reject() {  # FILE LINE...
  new_tree
  write "$@"
  if log=$(check) || ! grep -q "$1" <<<"$log"; then
    echo "$1 was not rejected by name: $log"
    exit 1
  fi
}

new_tree
log=$(check) || { echo "a good tree was rejected: $log"; exit 1; }
must_reject output/a.h 'std::size_t f();'                         # lacks <cstddef>
must_reject output/a.hpp '#pragma once' '#include "common/none.h"'
must_reject output/a.h '#pragma once' 'inline int f() { int unused; return 1; }'
must_reject output/a-inl.h '#ifdef VISTREL_WIDE' 'missing f();' '#endif'  # at one level only
must_reject output/a-inl.h '#ifndef VISTREL_BODY' 'missing f();' '#endif'  # alone only

rm -rf "$scratch/tree"
mkdir -p "$scratch/tree/output"
if check >/dev/null; then
  echo "an empty tree was accepted"
  exit 1
fi
