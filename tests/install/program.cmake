# The installed program finds its libraries wherever the copy is.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

run(${PREFIX}/${BINDIR}/vistrel --version)

foreach(page IN ITEMS program.md choosing.md coming-from.md images/curves.svg)
  if(NOT EXISTS ${PREFIX}/share/doc/vistrel/${page})
    message(FATAL_ERROR "${page} is not installed")
  endif()
endforeach()
