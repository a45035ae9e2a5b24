# cmake -D SCRATCH=FOLDER -P length_test.cmake: the check of lengths must pass files of 400 lines
# and tests of any length, and reject a source of 401 lines in each folder, by name.
cmake_minimum_required(VERSION 3.25)

set(script length.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/check_tree.cmake)

string(REPEAT "int n[] = {1};\n" 400 longest)
function(good_tree)
  file(REMOVE_RECURSE ${SCRATCH})
  file(WRITE ${SCRATCH}/output/mono.cpp "${longest}")
  file(WRITE ${SCRATCH}/tests/output/mono_test.cpp "${longest}int m;\n")
  file(WRITE ${SCRATCH}/build/made.cpp "${longest}int m;\n")
endfunction()

good_tree()
check_tree(result output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "a good tree was rejected:\n${output}")
endif()

foreach(file IN ITEMS output/a.cpp include/vistrel/a.hpp apps/input/a.h common/a.inl examples/a.c)
  good_tree()
  file(WRITE ${SCRATCH}/${file} "${longest}int m;\n")
  check_tree(result output)
  string(FIND "${output}" "${file}: 401 lines" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "${file} was not rejected by name:\n${output}")
  endif()
endforeach()

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
check_tree(result output)
if(result EQUAL 0)
  message(FATAL_ERROR "an empty tree was passed")
endif()
