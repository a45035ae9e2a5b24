# What is installed, and how others find it: a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

# Public headers lie flat in include/vistrel: <vistrel/vistrel.h>, <vistrel/solvers.h>. Among
# themselves they include each other from the project's root; the copies, by bare name.
set(VISTREL_C_HEADERS
  frontend/vistrel.h cfa/cfa.h cfa/processor.h host/vistrel_host.h)
set(VISTREL_CXX_HEADERS
  curves/solvers.h curves/tone_curves.h demosaic/image_functions.h platform/platform.h
  host/vistrel.hpp)
foreach(header IN LISTS VISTREL_C_HEADERS VISTREL_CXX_HEADERS)
  get_filename_component(name ${header} NAME)
  file(READ ${header} text)
  string(REGEX REPLACE "#include \"[a-z]+/([^\"]+)\"" "#include \"\\1\"" text "${text}")
  file(CONFIGURE OUTPUT include/vistrel/${name} CONTENT "${text}" @ONLY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
endforeach()

file(RELATIVE_PATH VISTREL_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(library IN ITEMS Vistrel vistrelhost)
  string(TOLOWER ${library} name)
  configure_file(cmake/library.pc.in pkgconfig/${name}.pc @ONLY)
endforeach()
configure_package_config_file(cmake/VistrelConfig.cmake.in VistrelConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vistrel)
write_basic_package_version_file(VistrelConfigVersion.cmake COMPATIBILITY SameMajorVersion)

target_include_directories(vistrelhost INTERFACE
  $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
install(TARGETS Vistrel vistrelhost EXPORT Vistrel)
if(VISTREL_APPS)
  install(TARGETS vistrel)
  set(manual ${PROJECT_BINARY_DIR}/manual)
  install(DIRECTORY ${manual}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR})
  install(FILES ${manual}/bash/vistrel
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${manual}/zsh/_vistrel DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${manual}/fish/vistrel.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()
install(DIRECTORY ${PROJECT_BINARY_DIR}/include/vistrel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT Vistrel NAMESPACE Vistrel:: FILE VistrelTargets.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vistrel)
install(FILES ${PROJECT_BINARY_DIR}/VistrelConfig.cmake
  ${PROJECT_BINARY_DIR}/VistrelConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vistrel)
install(DIRECTORY ${PROJECT_BINARY_DIR}/pkgconfig DESTINATION ${CMAKE_INSTALL_LIBDIR})
