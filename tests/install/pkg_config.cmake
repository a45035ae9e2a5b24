# Uses the copy as makefiles do: flags from pkg-config.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${PREFIX}/${LIBDIR})

function(build_and_run program package)
  run(pkg-config --exact-version=${VERSION} ${package})
  execute_process(COMMAND pkg-config --cflags --libs ${package}
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run(${ARGN} ${flags} -o ${program})
  run(./${program})
endfunction()

build_and_run(frame vistrel ${CC} ${PROJECT}/frame.c)
build_and_run(curve vistrel ${CXX} ${PROJECT}/curve.cpp)
build_and_run(host vistrelhost ${CXX} -std=c++17 ${PROJECT}/host.cpp)
