# cmake -D SCRATCH=FOLDER -P quirks_test.cmake: the check of quirks must pass a small tree where all
# three lists agree and reject each of a list of single faults, naming it.
cmake_minimum_required(VERSION 3.25)

set(script quirks.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/check_tree.cmake)

function(good_tree)
  file(REMOVE_RECURSE ${SCRATCH})
  file(WRITE ${SCRATCH}/docs/quirks.md "# Quirks\n\n## odd-row\n\nText.\n\n## late-end\n")
  file(WRITE ${SCRATCH}/output/mono.inl "// quirk: odd-row. The last row.\n")
  file(WRITE ${SCRATCH}/demosaic/cok.cpp "int n;  // quirk: late-end\n// quirk: odd-row\n")
  file(WRITE ${SCRATCH}/tests/output/mono_test.cpp "// quirk: odd-row\n  // quirk: late-end. Why.\n")
endfunction()

function(must_reject file line expected)
  good_tree()
  file(WRITE ${SCRATCH}/${file} "${line}\n")
  check_tree(result output)
  string(FIND "${output}" "${expected}" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "${file} with ${line}: expected \"${expected}\", got:\n${output}")
  endif()
endfunction()

good_tree()
check_tree(result output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "a good tree was rejected:\n${output}")
endif()

must_reject(output/mono.inl "// quirk: odd-rows" "odd-rows: not in docs/quirks.md")
must_reject(output/mono.inl "// quirk: odd-rows" "odd-rows: not in the tests")
must_reject(demosaic/cok.cpp "// Nothing odd." "late-end: not in the sources")
must_reject(docs/quirks.md "## odd-row" "late-end: not in docs/quirks.md")
must_reject(tests/output/mono_test.cpp "// quirk: odd-row" "late-end: not in the tests")

file(REMOVE_RECURSE ${SCRATCH})
file(WRITE ${SCRATCH}/docs/quirks.md "# Quirks\n")
check_tree(result output)
if(result EQUAL 0)
  message(FATAL_ERROR "a tree without quirks was passed")
endif()
