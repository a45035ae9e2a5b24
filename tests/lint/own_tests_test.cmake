# cmake -D SCRATCH=FOLDER -P own_tests_test.cmake: the check of own tests must pass a source that has
# one, and reject one whose test is missing or is not built, by name.
cmake_minimum_required(VERSION 3.25)

set(script own_tests.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/check_tree.cmake)

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
check_tree(result output)
if(result EQUAL 0)
  message(FATAL_ERROR "an empty tree was passed")
endif()
foreach(file IN ITEMS
    common/simd/lanes-inl.h common/arch.h cfa/ahd/ahd.cpp cfa/ahd/ahd_rows-inl.h cfa/frame.h
    apps/main.cpp apps/commands/spin_command.cpp
    tests/common/simd/lanes_test.cpp tests/cfa/ahd/ahd_test.cpp tests/apps/commands/spin_test.cpp)
  file(WRITE ${SCRATCH}/${file} "int f();\n")
endforeach()
file(WRITE ${SCRATCH}/tests/common/CMakeLists.txt "vistrel_test(common_test simd/lanes_test.cpp)\n")
file(WRITE ${SCRATCH}/tests/cfa/CMakeLists.txt "vistrel_test(cfa_test\n  ahd/ahd_test.cpp)\n")
file(WRITE ${SCRATCH}/tests/apps/CMakeLists.txt "vistrel_test(apps_test commands/spin_test.cpp)\n")
check_tree(result output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "a good tree was rejected:\n${output}")
endif()

function(must_reject file)
  check_tree(result output)
  string(FIND "${output}" "${file}: tests/" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "${file} was not rejected by name:\n${output}")
  endif()
endfunction()

foreach(file IN ITEMS apps/batch/spin.cpp apps/commands/turn_command.cpp cfa/near/near.cpp cfa/ahd.cpp host/ahd.cpp common/rows/lane.h common/planes-inl.h)
  file(WRITE ${SCRATCH}/${file} "int f();\n")
  must_reject(${file})
  file(REMOVE ${SCRATCH}/${file})
endforeach()
file(WRITE ${SCRATCH}/tests/common/CMakeLists.txt "vistrel_test(common_test simd/half_lanes_test.cpp)\n")
must_reject(common/simd/lanes-inl.h)
file(REMOVE ${SCRATCH}/tests/common/CMakeLists.txt ${SCRATCH}/tests/common/simd/lanes_test.cpp)
must_reject(common/simd/lanes-inl.h)
