# cmake -D NM=nm -D LIBRARY=FILE -D LIST=exports.txt -D SCRATCH=FOLDER -P exports_test.cmake: the
# check of exported names must notice an extra name and a missing one.
cmake_minimum_required(VERSION 3.25)

function(must_reject list expected)
  file(WRITE ${SCRATCH}/exports.txt "${list}")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -D NM=${NM} -D LIBRARY=${LIBRARY} -D LIST=${SCRATCH}/exports.txt
      -P ${CMAKE_CURRENT_LIST_DIR}/exports.cmake
    RESULT_VARIABLE result ERROR_VARIABLE error)
  string(FIND "${error}" "${expected}" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(FATAL_ERROR "expected \"${expected}\", got:\n${error}")
  endif()
endfunction()

file(READ ${LIST} list)
must_reject("${list}\nNoSuchName\n" "listed, but not exported: NoSuchName")
must_reject("${list}\nLUSolve(float*)\n" "listed, but not exported: LUSolve(float*)")
string(REPLACE "ImgConvert8\n" "" shorter "${list}")
must_reject("${shorter}" "exported, but not listed: ImgConvert8")
string(REGEX REPLACE "LUSolve[^\n]*\n" "" shorter "${list}")
must_reject("${shorter}" "exported, but not listed: LUSolve(double*, int, int*, double*)")
