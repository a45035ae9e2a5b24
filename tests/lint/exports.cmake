# cmake -D NM=nm -D LIBRARY=FILE -D LIST=exports.txt -P exports.cmake: fails when the library
# exports a name that the list does not have, or does not export one that it has.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} --dynamic --defined-only --demangle ${LIBRARY}
  OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${output}")
set(exported "")
foreach(line IN LISTS lines)
  # An address, a letter, the name, perhaps a version. The version node itself is absolute.
  if(line MATCHES "^[0-9a-f]+ ([B-Zui]) ([^@]+)")
    list(APPEND exported "${CMAKE_MATCH_2}")
  endif()
endforeach()
file(STRINGS ${LIST} listed REGEX "^[^#]")

set(missing ${listed})
list(REMOVE_ITEM missing ${exported})
set(surplus ${exported})
list(REMOVE_ITEM surplus ${listed})

if(missing OR surplus)
  list(TRANSFORM missing PREPEND "  listed, but not exported: ")
  list(TRANSFORM surplus PREPEND "  exported, but not listed: ")
  list(JOIN missing "\n" missing)
  list(JOIN surplus "\n" surplus)
  message(FATAL_ERROR "${LIBRARY} and ${LIST} differ:\n${missing}\n${surplus}")
endif()
list(LENGTH exported count)
message(STATUS "the library exports the ${count} listed names and no other")
