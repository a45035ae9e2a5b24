# Cross-compiles with Debian's compilers for the machine VISTREL_MACHINE, such as s390x-linux-gnu,
# by VISTREL_COMPILER: gcc, or the name of a clang, such as clang-14. Tests run in an emulator.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VISTREL_MACHINE VISTREL_COMPILER)
string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR ${VISTREL_MACHINE})
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/cross)

if(VISTREL_MACHINE MATCHES mingw)
  set(CMAKE_SYSTEM_NAME Windows)
  set(suffix -posix)
  set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
  set(CMAKE_CROSSCOMPILING_EMULATOR wine)
else()
  set(CMAKE_SYSTEM_NAME Linux)
  string(REGEX REPLACE "^i.86$" i386 emulated ${CMAKE_SYSTEM_PROCESSOR})
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${emulated} -L /usr/${VISTREL_MACHINE})
endif()

if(VISTREL_COMPILER STREQUAL gcc)
  set(CMAKE_C_COMPILER ${VISTREL_MACHINE}-gcc${suffix})
  set(CMAKE_CXX_COMPILER ${VISTREL_MACHINE}-g++${suffix})
else()
  set(CMAKE_C_COMPILER ${VISTREL_COMPILER})
  string(REPLACE clang clang++ CMAKE_CXX_COMPILER ${VISTREL_COMPILER})
  set(CMAKE_C_COMPILER_TARGET ${VISTREL_MACHINE})
  set(CMAKE_CXX_COMPILER_TARGET ${VISTREL_MACHINE})
endif()

# Reals as everywhere: the older registers of i386 round otherwise.
if(CMAKE_SYSTEM_PROCESSOR STREQUAL i686)
  set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
  set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
endif()
