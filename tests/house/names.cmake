# cmake -D HEADER=vistrel.h -D README=README.md -P names.cmake: fails when the README lacks a pixel
# format or an algorithm of the public header.
cmake_minimum_required(VERSION 3.25)

file(STRINGS ${HEADER} lines REGEX "^ *(IMG_FMT|DM)_[A-Z0-9_]+ = ")
file(READ ${README} readme)
set(missing "")
foreach(line IN LISTS lines)
  string(REGEX MATCH "[A-Z0-9_]+" name "${line}")
  if(NOT readme MATCHES "`${name}`")
    string(APPEND missing " ${name}")
  endif()
endforeach()
list(LENGTH lines count)
if(missing OR count LESS 9)
  message(FATAL_ERROR "of ${count} names in ${HEADER}, ${README} lacks:${missing}")
endif()
