# Uses the copy as CMake projects do: find_package(Vistrel), targets Vistrel::Vistrel and Vistrel::Host.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

run(${CMAKE_COMMAND} -S ${PROJECT} -B build -G ${GENERATOR} -D CMAKE_PREFIX_PATH=${PREFIX}
  -D CMAKE_C_COMPILER=${CC} -D CMAKE_CXX_COMPILER=${CXX} -D WANTED_VERSION=${VERSION})
run(${CMAKE_COMMAND} --build build)
foreach(program IN ITEMS frame curve host)
  run(build/${program})
endforeach()

# The examples are a project of this kind.
run(${CMAKE_COMMAND} -S ${EXAMPLES} -B examples -G ${GENERATOR} -D CMAKE_PREFIX_PATH=${PREFIX}
  -D CMAKE_C_COMPILER=${CC} -D CMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build examples)
run(bash ${CMAKE_CURRENT_LIST_DIR}/examples.sh examples ${PREFIX}/${BINDIR}/vistrel)
