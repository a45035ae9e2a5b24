# Build options, and the flags of all our targets.

# libVistrel alone needs no package. Everything else builds on libvistrelhost, which needs fmt's
# headers.
include(CMakeDependentOption)
option(VISTREL_HOST "Build libvistrelhost" ON)
cmake_dependent_option(VISTREL_APPS "Build the command-line program" ON VISTREL_HOST OFF)
cmake_dependent_option(VISTREL_PYTHON "Build the Python package" OFF VISTREL_HOST OFF)
find_path(VISTREL_GSTREAMER_HEADERS gst/video/video.h PATH_SUFFIXES gstreamer-1.0)
mark_as_advanced(VISTREL_GSTREAMER_HEADERS)
set(found ON)
if(NOT VISTREL_GSTREAMER_HEADERS)
  set(found OFF)
endif()
cmake_dependent_option(VISTREL_GSTREAMER "Build the GStreamer element" ${found} VISTREL_APPS OFF)
cmake_dependent_option(VISTREL_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL} VISTREL_HOST OFF)
cmake_dependent_option(VISTREL_PYTHON_TESTS "Test the Python package, with pytest" OFF
  "VISTREL_PYTHON;VISTREL_APPS;VISTREL_TESTS" OFF)
cmake_dependent_option(VISTREL_LIVE_TESTS "Test the GStreamer element, with cameras that aren't there"
  OFF "VISTREL_GSTREAMER;VISTREL_TESTS" OFF)
cmake_dependent_option(VISTREL_SITE_TESTS "Build and test the documentation's site" OFF
  "VISTREL_GSTREAMER;VISTREL_PYTHON;VISTREL_APPS;VISTREL_TESTS" OFF)
cmake_dependent_option(VISTREL_BROWSER_TESTS "Test the page that converts frames in the browser" OFF
  "VISTREL_APPS;VISTREL_TESTS" OFF)
cmake_dependent_option(VISTREL_QEMU_TESTS "Run tests on emulated processors too" OFF
  VISTREL_TESTS OFF)
cmake_dependent_option(VISTREL_BENCH
  "Build the benchmarks (peers: OpenCV, libdc1394, LibRaw, libswscale)" OFF VISTREL_HOST OFF)
# Static ones only where the platform has no others, for our own programs.
option(BUILD_SHARED_LIBS "Build shared libraries" ON)
cmake_dependent_option(VISTREL_EVERYWHERE
  "Build only the tests that run on every machine: the selftest and vistrel-check" OFF
  "VISTREL_HOST;NOT VISTREL_TESTS" OFF)
option(VISTREL_FUZZ "Build the fuzz targets as programs of libFuzzer, with clang" OFF)
option(VISTREL_ALL_LEVELS "Compile for every processor level, not only for base and AVX2" ON)
set(VISTREL_OPTIMIZATION -O3 CACHE STRING "How far to optimise the conversions")
option(VISTREL_WERROR "Treat warnings as errors" OFF)
set(VISTREL_SANITIZE "" CACHE STRING "Sanitizers for all targets, e.g. address,undefined")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# No hidden visibility: exports.txt alone decides which names leave the library. Without
# interposition the compiler still treats every name as its own.
set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
include_directories(${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)

# Exactness is a property of the build: no fused multiply-add, no reassociation.
add_library(vistrel_exact INTERFACE)
target_compile_options(vistrel_exact INTERFACE
  -ffp-contract=off -fno-fast-math -Wno-psabi
  $<$<NOT:$<BOOL:${EMSCRIPTEN}>>:-fno-semantic-interposition>)
target_compile_definitions(vistrel_exact INTERFACE $<$<CONFIG:Debug>:VISTREL_KEEP_CALLS>
  $<$<NOT:$<BOOL:${VISTREL_ALL_LEVELS}>>:VISTREL_FEW_LEVELS>)

# For sources that take longer to compile than to run.
add_library(vistrel_brief INTERFACE)
target_compile_options(vistrel_brief INTERFACE $<IF:$<CONFIG:Debug>,-O0,-O1>)

add_library(vistrel_warnings INTERFACE)
target_compile_options(vistrel_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
  $<$<BOOL:${VISTREL_WERROR}>:-Werror>)

if(VISTREL_FUZZ)
  set(VISTREL_SANITIZE fuzzer-no-link,address,undefined)
endif()
if(VISTREL_SANITIZE)
  add_compile_options(
    -fsanitize=${VISTREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VISTREL_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_compile_options(-Wno-maybe-uninitialized)  # false positives in std::regex under sanitizers
  else()
    # Programs in C that link our libraries must also link the sanitizers' C++ runtime.
    add_link_options(-fsanitize-link-c++-runtime)
    link_libraries($<$<LINK_LANGUAGE:C>:stdc++>)
  endif()
endif()
