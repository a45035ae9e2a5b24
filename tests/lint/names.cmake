# cmake -D FOLDER=FOLDER -D "HEADERS=A B" -D LINES=REGEX -D NAME=REGEX -D PAGE=FILE -P names.cmake:
# fails when the page lacks a name that a line of the public headers defines.
cmake_minimum_required(VERSION 3.25)

separate_arguments(HEADERS)
set(lines "")
foreach(header IN LISTS HEADERS)
  file(STRINGS ${FOLDER}/${header} more REGEX "${LINES}")
  list(APPEND lines "${more}")
endforeach()
file(READ ${PAGE} page)
set(missing "")
foreach(line IN LISTS lines)
  string(REGEX MATCH "${NAME}" name "${line}")
  string(REPLACE "(" "" name "${name}")  # behind a function's
  if(NOT page MATCHES "`${name}`")
    string(APPEND missing " ${name}")
  endif()
endforeach()
list(LENGTH lines count)
if(missing OR count LESS 9)
  message(FATAL_ERROR "of ${count} names in ${HEADERS}, ${PAGE} lacks:${missing}")
endif()
