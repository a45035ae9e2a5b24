# GoogleTest, from the sources in Debian's package.
if(NOT TARGET GTest::gtest)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
set(GTest_FOUND TRUE)
