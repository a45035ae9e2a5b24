# cmake -D SCRATCH=FOLDER -P inl_test.cmake: the check of endings must pass golden tables and reject
# any other .inl, by name.
cmake_minimum_required(VERSION 3.25)

set(script inl.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/check_tree.cmake)

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
check_tree(result output)
if(result EQUAL 0)
  message(FATAL_ERROR "an empty tree was passed")
endif()
file(WRITE ${SCRATCH}/apps/tools/selftest/golden.inl "1,\n")
file(WRITE ${SCRATCH}/output/rows-inl.h "int f();\n")
check_tree(result output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "a good tree was rejected:\n${output}")
endif()

foreach(file IN ITEMS output/rows.inl common/simd/lanes.inl tests/golden_rows.inl)
  file(WRITE ${SCRATCH}/${file} "int f();\n")
  check_tree(result output)
  string(FIND "${output}" "${file}" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "${file} was not rejected by name:\n${output}")
  endif()
  file(REMOVE ${SCRATCH}/${file})
endforeach()
