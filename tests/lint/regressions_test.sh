# regressions_test.sh PYTHON SCRATCH: the check of faults passes a small good tree and rejects each
# of a list of single faults, naming it.
set -uo pipefail
here=$(dirname "$(realpath "$0")")

good_tree() {
  rm -rf "$2"
  mkdir -p "$2"/tests/{regressions,host} "$2/python/tests"
  cd "$2"
  printf '# Faults\n\nIt crashed.\n`Rows.End` `Rows.Begin`\n`test_rows.py::test_end`\n\n## Rows\n
It hung.\n`lint.names.page` `lint.case.12` `host.rows`\n' >tests/regressions/faults.md
  printf 'TEST(Rows, End) {}\nTEST_P(\n    Rows, Begin) {}\n' >tests/host/rows_test.cpp
  printf 'def test_end(rows):\n    pass\n' >python/tests/test_rows.py
  printf 'function(lint name)\n  add_test(NAME lint.${name} COMMAND lint)\nendfunction()
foreach(which IN ITEMS one=page)\n  lint(names.${which})\nendforeach()
foreach(number RANGE 19)\n  lint(case.${number})\nendforeach()
add_test(NAME host.rows COMMAND rows)\n' >tests/host/CMakeLists.txt
}
check() {
  "$1" "$here/regressions.py" . >output 2>&1
}
must_reject() {  # PYTHON SCRATCH FILE EDIT EXPECTED
  good_tree "$1" "$2"
  sed -i "$4" "$3"
  if check "$1" || ! grep -qxF "$5" output; then
    echo "$4 in $3: expected \"$5\", got:"
    cat output
    exit 1
  fi
}
good_tree "$@"
check "$1" || { echo "a good tree was rejected:"; cat output; exit 1; }

must_reject "$@" tests/host/rows_test.cpp 's/End/Ends/' "there is no test Rows.End"
must_reject "$@" tests/host/rows_test.cpp 's/TEST_P/EXPECT/' "there is no test Rows.Begin"
must_reject "$@" python/tests/test_rows.py 's/def /# def /' \
  "there is no test test_rows.py::test_end"
must_reject "$@" tests/host/CMakeLists.txt 's/one=page/one=pages/' \
  "there is no test lint.names.page"
must_reject "$@" tests/host/CMakeLists.txt 's/lint(case/lint(cases/' \
  "there is no test lint.case.12"
must_reject "$@" tests/host/CMakeLists.txt 's/host.rows/host.row/' "there is no test host.rows"
must_reject "$@" tests/regressions/faults.md 's/host.rows/host.${name}/' \
  'there is no test host.${name}'
must_reject "$@" tests/regressions/faults.md '/^`lint/d' "no test: It hung."
must_reject "$@" tests/regressions/faults.md '/^#/!d' \
  "there is no fault in tests/regressions/faults.md"
