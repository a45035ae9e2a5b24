# cmake -D ROOT=FOLDER -P inl.cmake: fails when a file's ending is .inl, unless it is a golden table:
# tools do not know the language of such files. Code that is included more than once is a *-inl.h.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/sources.cmake)
sources(${ROOT} files)
if(NOT files)
  message(FATAL_ERROR "no source file under ${ROOT}")
endif()
list(FILTER files INCLUDE REGEX "\\.inl$")
list(FILTER files EXCLUDE REGEX "/golden\\.inl$")
if(files)
  list(JOIN files "\n  " files)
  message(FATAL_ERROR "call them *-inl.h:\n  ${files}")
endif()
