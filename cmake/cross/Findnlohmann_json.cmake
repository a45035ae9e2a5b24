# JSON for Modern C++, which has headers only.
include(${CMAKE_CURRENT_LIST_DIR}/headers.cmake)
if(NOT TARGET nlohmann_json::nlohmann_json)
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED GLOBAL)
  vistrel_headers_of(nlohmann_json::nlohmann_json nlohmann)
endif()
set(nlohmann_json_FOUND TRUE)
