# The way of CMake projects: find_package(Vistrel), target Vistrel::Vistrel.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

run(${CMAKE_COMMAND} -S ${PROJECT} -B build -D CMAKE_PREFIX_PATH=${PREFIX}
  -D CMAKE_C_COMPILER=${CC} -D CMAKE_CXX_COMPILER=${CXX} -D WANTED_VERSION=${VERSION})
run(${CMAKE_COMMAND} --build build)
run(build/frame.c.out)
run(build/curve.cpp.out)
