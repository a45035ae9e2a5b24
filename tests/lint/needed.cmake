# cmake -D READELF=readelf -D LIBRARY=FILE -P needed.cmake: fails when the library needs any other
# than those of C and C++, and of sanitizers where they are in use.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${READELF} --dynamic ${LIBRARY}
  OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*" needed "${output}")
if(NOT needed)
  message(FATAL_ERROR "${LIBRARY} needs no library at all")
endif()
list(FILTER needed EXCLUDE REGEX "\\[(lib(stdc\\+\\+|gcc_s|c|m|[a-z]+san)|ld-[a-z0-9-]+)\\.so")
if(needed)
  list(JOIN needed "\n  " needed)
  message(FATAL_ERROR "${LIBRARY} needs more than C and C++:\n  ${needed}")
endif()
