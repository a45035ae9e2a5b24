# Copies the libraries that ${module} needs beside it, apart from those of every system.
file(GET_RUNTIME_DEPENDENCIES MODULES ${module} RESOLVED_DEPENDENCIES_VAR libraries
  PRE_EXCLUDE_REGEXES "^(ld-linux|libc|libm|libgcc_s|libstdc\\+\\+|libvistrelhost)[-.]")
foreach(library IN LISTS libraries)
  file(REAL_PATH ${library} file)
  cmake_path(GET library FILENAME name)
  message(STATUS "Installing: ${CMAKE_INSTALL_PREFIX}/vistrel/${name}")
  file(COPY_FILE ${file} ${CMAKE_INSTALL_PREFIX}/vistrel/${name})
endforeach()
