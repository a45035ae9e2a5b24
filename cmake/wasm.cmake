# Compiles to WebAssembly with Debian's Emscripten. Tests run in Node.js.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/cross)

# Node.js finds the packages that Emscripten needs in Debian's folder, whoever made Node.js. The
# programs read their own module from a file, which fetch() refuses.
set(CMAKE_CXX_LINKER_LAUNCHER env NODE_PATH=/usr/share/nodejs)
set(CMAKE_CROSSCOMPILING_EMULATOR node --no-experimental-fetch)

# The functions of libvistrelhost catch exceptions.
set(CMAKE_CXX_FLAGS_INIT -fexceptions)
