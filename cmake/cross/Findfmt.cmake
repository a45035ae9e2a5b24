# fmt, header-only.
include(${CMAKE_CURRENT_LIST_DIR}/headers.cmake)
if(NOT TARGET fmt::fmt)
  add_library(fmt::fmt INTERFACE IMPORTED GLOBAL)
  target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
  vistrel_headers_of(fmt::fmt fmt)
  add_library(fmt::fmt-header-only ALIAS fmt::fmt)
endif()
set(fmt_FOUND TRUE)
