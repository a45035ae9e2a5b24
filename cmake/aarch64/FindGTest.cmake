# GoogleTest from the sources that Debian's package brings.
if(NOT TARGET GTest::gtest)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
set(GTest_FOUND TRUE)
