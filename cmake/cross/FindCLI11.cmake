# CLI11, which has headers only.
include(${CMAKE_CURRENT_LIST_DIR}/headers.cmake)
if(NOT TARGET CLI11::CLI11)
  add_library(CLI11::CLI11 INTERFACE IMPORTED GLOBAL)
  vistrel_headers_of(CLI11::CLI11 CLI)
endif()
set(CLI11_FOUND TRUE)
