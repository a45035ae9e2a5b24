# The installed program finds its libraries wherever the copy is.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

run(${PREFIX}/${BINDIR}/vistrel --version)
