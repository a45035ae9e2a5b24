# cmake -D SOURCE=FOLDER -D SCRATCH=FOLDER -D GENERATOR=NAME -D CC=gcc -D CXX=g++ -P alone.cmake:
# with VISTREL_HOST=OFF the project configures without any package and has libVistrel's targets only.
cmake_minimum_required(VERSION 3.25)

# Fails as soon as the project looks for any package.
file(REMOVE_RECURSE ${SCRATCH})
file(WRITE ${SCRATCH}/no_packages.cmake "
macro(find_package name)
  message(FATAL_ERROR \"looks for the package \${name}\")
endmacro()
")
function(configure result_variable)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE} -B ${SCRATCH}/build -G ${GENERATOR}
      -D CMAKE_C_COMPILER=${CC} -D CMAKE_CXX_COMPILER=${CXX}
      -D CMAKE_PROJECT_INCLUDE=${SCRATCH}/no_packages.cmake ${ARGN}
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE error)
  set(${result_variable} "${result}:${error}" PARENT_SCOPE)
endfunction()

configure(result -D VISTREL_HOST=ON)
if(NOT result MATCHES "looks for the package fmt")
  message(FATAL_ERROR "with libvistrelhost, fmt should have been looked for: ${result}")
endif()
configure(result -D VISTREL_HOST=OFF)
if(NOT result MATCHES "^0:")
  message(FATAL_ERROR "${result}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} --build ${SCRATCH}/build --target help
  OUTPUT_VARIABLE targets COMMAND_ERROR_IS_FATAL ANY)
if(NOT targets MATCHES "Vistrel" OR targets MATCHES "vistrelhost|vistrel-|_test|fmt")
  message(FATAL_ERROR "targets are:\n${targets}")
endif()

file(GLOB pkg_config_files RELATIVE ${SCRATCH}/build/pkgconfig ${SCRATCH}/build/pkgconfig/*)
if(NOT pkg_config_files STREQUAL "vistrel.pc")
  message(FATAL_ERROR "files for pkg-config are ${pkg_config_files}")
endif()
