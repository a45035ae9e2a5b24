# cmake -D ROOT=FOLDER -P own_tests.cmake: fails when a source of the libraries, MODULE/.../NAME.cpp,
# has no test of its own, tests/MODULE/NAME_test.cpp, or CMake does not build it. Headers of common/
# are sources as well; any other NAME-inl.h is part of the .cpp that compiles it.
cmake_minimum_required(VERSION 3.25)

set(exempt
  common/arch.h common/depth.h                  # constants and types
  common/simd/each_level.h common/simd/simd.h   # every test of vector code is compiled by them
  cfa/near/near_border.cpp                      # near_test.cpp compares whole frames
  demosaic/entries.cpp                          # every algorithm's test calls its function
  demosaic/through_buffer.cpp)                  # and most of these use it

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
  string(REGEX MATCH "^[^/]+" module ${file})
  string(REGEX REPLACE "^.*/|(-inl)?\\.[a-z]+$" "" name ${file})
  set(built "")
  if(EXISTS ${ROOT}/tests/${module}/${name}_test.cpp)
    file(STRINGS ${ROOT}/tests/${module}/CMakeLists.txt built REGEX "[ (]${name}_test\\.cpp([ )]|$)")
  endif()
  if(NOT built)
    string(APPEND faults "  ${file}: tests/${module}/${name}_test.cpp\n")
  endif()
endforeach()
if(faults)
  message(FATAL_ERROR "tests to write, or to add to CMake:\n${faults}")
endif()
