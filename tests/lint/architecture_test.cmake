# cmake -D SCRATCH=FOLDER -P architecture_test.cmake: the check of the names in docs/architecture.md
# must pass a page whose names exist, and reject one whose name does not, by name.
cmake_minimum_required(VERSION 3.25)

set(script architecture.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/check_tree.cmake)

function(check_page page)
  file(WRITE ${SCRATCH}/docs/architecture.md "${page}\n")
  check_tree(result output)
  set(result ${result} PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
file(WRITE ${SCRATCH}/host/rows.h "class PlainRows {\n  int firstRow[2];\n};\nusing Rows = MonoRowsOf;\n")
file(WRITE ${SCRATCH}/tests/host/rows_test.cpp "class TestRows;\n")
check_page("MonoRows [1]; `PlainRows` | `PlainRows::firstRow`, `host/rows.h`: `VISTREL_MONO`")
if(NOT result EQUAL 0)
  message(FATAL_ERROR "a good page was rejected:\n${output}")
endif()

foreach(name IN ITEMS MonoRows TestRows lastRow)
  check_page("`PlainRows` | [a]; `PlainRows::${name}`")
  string(FIND "${output}" "contains: ${name}\n" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "${name} was not rejected by name:\n${output}")
  endif()
endforeach()

check_page("a page without names")
if(result EQUAL 0)
  message(FATAL_ERROR "a page without names was passed")
endif()
