# The way of makefiles: flags from pkg-config.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${PREFIX}/${LIBDIR})
execute_process(COMMAND pkg-config --cflags --libs vistrel
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(pkg-config --exact-version=${VERSION} vistrel)

run(${CC} ${PROJECT}/frame.c ${flags} -o frame)
run(${CXX} -std=c++17 ${PROJECT}/curve.cpp ${flags} -o curve)
run(./frame)
run(./curve)
