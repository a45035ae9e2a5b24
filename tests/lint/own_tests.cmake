# cmake -D ROOT=FOLDER -P own_tests.cmake: fails when a source of the libraries, FOLDER/NAME.cpp, has
# no test of its own, tests/FOLDER/NAME_test.cpp, or CMake does not build it. Headers of common/ are
# sources as well; any other NAME-inl.h is part of the .cpp that compiles it.
cmake_minimum_required(VERSION 3.25)

set(exempt
  common/arch.h common/depth.h                  # constants and types
  common/simd/each_level.h common/simd/simd.h   # every test of vector code is compiled by them
  cfa/near/near_border.cpp                      # near_test.cpp compares whole frames
  # Every algorithm's test calls a function that runs these.
  demosaic/entries.cpp demosaic/through_buffer.cpp)

include(${CMAKE_CURRENT_LIST_DIR}/sources.cmake)
sources(${ROOT} files)
list(FILTER files EXCLUDE REGEX "^(apps|bench|examples|include|tests)/")
list(FILTER files INCLUDE REGEX "^common/|\\.cpp$")
list(REMOVE_ITEM files ${exempt})
if(NOT files)
  message(FATAL_ERROR "no source of a library under ${ROOT}")
endif()

set(faults "")
foreach(file IN LISTS files)
  string(REGEX REPLACE "(-inl)?\\.[a-z]+$" "_test.cpp" test ${file})
  string(REGEX MATCH "^([^/]+)/(.*)" path ${test})
  set(built "")
  if(EXISTS ${ROOT}/tests/${test})
    file(STRINGS ${ROOT}/tests/${CMAKE_MATCH_1}/CMakeLists.txt built
      REGEX "[ (]${CMAKE_MATCH_2}([ )]|$)")
  endif()
  if(NOT built)
    string(APPEND faults "  ${file}: tests/${test}\n")
  endif()
endforeach()
if(faults)
  message(FATAL_ERROR "tests to write, or to add to CMake:\n${faults}")
endif()
