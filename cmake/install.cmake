# Installs everything, with a CMake package and a pkg-config file so that others find it.
include(CMakePackageConfigHelpers)

# Public headers lie in include/vistrel as they are installed.
set(VISTREL_C_HEADERS vistrel.h cfa.h processor.h vistrel_host.h vistrel_finish.h
  vistrel_finish_types.h vistrel_status.h vistrel_types.h vistrel_version.h)
set(VISTREL_CXX_HEADERS solvers.h tone_curves.h image_functions.h platform.h
  vistrel.hpp vistrel_finish.hpp vistrel_frame.hpp vistrel_image.hpp vistrel_names.hpp
  vistrel_result.hpp vistrel_span.hpp vistrel_stream.hpp)

set(libraries Vistrel)
set(other_headers "")
if(VISTREL_HOST)
  list(APPEND libraries vistrelhost)
else()
  set(other_headers PATTERN vistrel_host.h EXCLUDE PATTERN vistrel_finish.h EXCLUDE
    PATTERN vistrel_finish_types.h EXCLUDE PATTERN vistrel_types.h EXCLUDE
    PATTERN vistrel_status.h EXCLUDE PATTERN *.hpp EXCLUDE)
endif()

file(RELATIVE_PATH VISTREL_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(library IN LISTS libraries)
  string(TOLOWER ${library} name)
  configure_file(cmake/library.pc.in pkgconfig/${name}.pc @ONLY)
endforeach()
configure_package_config_file(cmake/VistrelConfig.cmake.in VistrelConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vistrel)
write_basic_package_version_file(VistrelConfigVersion.cmake COMPATIBILITY SameMajorVersion)

install(TARGETS ${libraries} EXPORT Vistrel)
if(VISTREL_APPS)
  install(TARGETS vistrel)
  set(manual ${PROJECT_BINARY_DIR}/manual)
  install(DIRECTORY ${manual}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vistrel
    FILES_MATCHING PATTERN *.md PATTERN *.svg PATTERN *.png)
  install(FILES ${manual}/bash/vistrel
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${manual}/zsh/_vistrel DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES ${manual}/fish/vistrel.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vistrel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  ${other_headers})
install(EXPORT Vistrel NAMESPACE Vistrel:: FILE VistrelTargets.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vistrel)
install(FILES ${PROJECT_BINARY_DIR}/VistrelConfig.cmake
  ${PROJECT_BINARY_DIR}/VistrelConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Vistrel)
install(DIRECTORY ${PROJECT_BINARY_DIR}/pkgconfig DESTINATION ${CMAKE_INSTALL_LIBDIR})
