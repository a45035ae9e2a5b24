# cmake -D CC=gcc -D CXX=g++ -D SCRATCH=FOLDER -P headers_test.cmake: the header check must pass
# a good header and reject each of a list of bad ones.
cmake_minimum_required(VERSION 3.25)

function(check kind text result_variable)
  file(WRITE ${SCRATCH}/vistrel/header.h "${text}\n")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -D CC=${CC} -D CXX=${CXX} -D FOLDER=${SCRATCH} -D ${kind}=header.h
      -D SCRATCH=${SCRATCH} -P ${CMAKE_CURRENT_LIST_DIR}/headers.cmake
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(${result_variable} ${result} PARENT_SCOPE)
endfunction()

function(must_pass kind text)
  check(${kind} "${text}" result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "a good header was rejected: ${text}")
  endif()
endfunction()

function(must_reject kind text)
  check(${kind} "${text}" result)
  if(result EQUAL 0)
    message(FATAL_ERROR "a bad header was passed: ${text}")
  endif()
endfunction()

must_pass(C_HEADERS "#ifndef H\n#define H\n#include <stdint.h>\nint32_t f(void);\n#endif")
must_pass(CXX_HEADERS "#pragma once\nnamespace n { int f(); }")

must_reject(C_HEADERS "int32_t f(void);")                # lacks <stdint.h>
must_reject(C_HEADERS "// a comment that C89 lacks")
must_reject(C_HEADERS "#pragma once\nenum { A, };")      # a comma that C89 and C++98 lack
must_reject(C_HEADERS "struct s { int n; };")            # lacks a guard
must_reject(C_HEADERS "int f(int class);")               # a word of C++
must_reject(CXX_HEADERS "#pragma once\ntemplate <class T> concept C = true;")  # C++20
