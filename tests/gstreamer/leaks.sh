# leaks.sh LEAK PROGRAM [GTEST OPTION...]: runs the tests under GStreamer's leaks tracer, which must
# find no object alive at the end. It is shown a program with a leak first, to prove that it finds one.
set -euo pipefail
export GST_TRACERS=leaks GST_DEBUG=GST_TRACER:7 GST_DEBUG_NO_COLOR=1
leaks() {
  "$@" 2>&1 | tee log | grep -E 'object-alive, type-name=\(string\)[A-Z]' || true
}
cd "$(mktemp -d)"
[ -n "$(leaks "$1")" ] || { echo "the tracer finds no leak"; cat log; exit 1; }
found=$(leaks "${@:2}")
if ! grep -q PASSED log || grep -q FAILED log; then
  cat log
  exit 1
fi
if [ -n "$found" ]; then
  echo "$found"
  exit 1
fi
rm -r "$PWD"
