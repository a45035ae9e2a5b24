# fmt, header-only.
if(NOT TARGET fmt::fmt)
  add_library(fmt::fmt INTERFACE IMPORTED)
  target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
  add_library(fmt::fmt-header-only ALIAS fmt::fmt)
endif()
set(fmt_FOUND TRUE)
