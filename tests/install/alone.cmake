# cmake -D SOURCE=FOLDER -D SCRATCH=FOLDER -D GENERATOR=NAME -D CC=gcc -D CXX=g++
# -P alone.cmake: with VISTREL_HOST=OFF the project needs no package. libVistrel configures, builds
# and installs where no package can be found or included, and a program in C uses it.
cmake_minimum_required(VERSION 3.25)

# Fails as soon as any package is looked for, or one of its headers is included.
file(REMOVE_RECURSE ${SCRATCH})
file(WRITE ${SCRATCH}/no_packages.cmake "
macro(find_package name)
  message(FATAL_ERROR \"looks for the package \${name}\")
endmacro()
")
foreach(header IN ITEMS fmt/core.h fmt/format.h CLI/CLI.hpp nlohmann/json.hpp png.h zlib.h tiffio.h
    fitsio.h libraw/libraw.h gtest/gtest.h gmock/gmock.h benchmark/benchmark.h)
  file(WRITE ${SCRATCH}/no_packages/${header} "#error \"includes ${header}\"\n")
endforeach()
set(ENV{CPATH} ${SCRATCH}/no_packages)  # is searched before the system's folders

# Flags for a debugger and few levels compile fast.
function(configure result_variable)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${SCRATCH}/build -G ${GENERATOR}
      -D CMAKE_C_COMPILER=${CC} -D CMAKE_CXX_COMPILER=${CXX}
      -D CMAKE_BUILD_TYPE=Debug -D CMAKE_CXX_FLAGS_DEBUG= -D CMAKE_INSTALL_LIBDIR=lib
      -D CMAKE_PROJECT_INCLUDE=${SCRATCH}/no_packages.cmake ${ARGN}
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE error)
  set(${result_variable} "${result}:${error}" PARENT_SCOPE)
endfunction()
function(run)
  execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGV}\n${output}")
  endif()
endfunction()

configure(result -D VISTREL_HOST=ON)
if(NOT result MATCHES "looks for the package CLI11")
  message(FATAL_ERROR "with the program, CLI11 should have been looked for: ${result}")
endif()
configure(result -D VISTREL_HOST=OFF -D VISTREL_ALL_LEVELS=OFF)
if(NOT result MATCHES "^0:")
  message(FATAL_ERROR "${result}")
endif()

# The guard against headers works.
file(WRITE ${SCRATCH}/fmt.cpp "#include <fmt/format.h>\n")
execute_process(COMMAND ${CXX} -fsyntax-only ${SCRATCH}/fmt.cpp ERROR_VARIABLE error)
if(NOT error MATCHES "includes fmt/format.h")
  message(FATAL_ERROR "fmt could be included: ${error}")
endif()

run(${CMAKE_COMMAND} --build ${SCRATCH}/build --parallel 2)
run(${CMAKE_COMMAND} --install ${SCRATCH}/build --prefix ${SCRATCH}/prefix)
file(GLOB_RECURSE installed RELATIVE ${SCRATCH}/prefix LIST_DIRECTORIES false ${SCRATCH}/prefix/*)
if(NOT "lib/libVistrel.so" IN_LIST installed OR installed MATCHES "host|finish|types|status|bin/|fmt|vistrel[.]hpp")
  message(FATAL_ERROR "installed are:\n${installed}")
endif()
run(${CC} ${CMAKE_CURRENT_LIST_DIR}/project/frame.c -I${SCRATCH}/prefix/include
  -L${SCRATCH}/prefix/lib -lVistrel -Wl,-rpath,${SCRATCH}/prefix/lib -o ${SCRATCH}/frame)
run(${SCRATCH}/frame)
