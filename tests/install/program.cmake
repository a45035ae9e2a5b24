# The installed program finds its libraries wherever the copy stands.
include(${CMAKE_CURRENT_LIST_DIR}/stage.cmake)

run(${PREFIX}/${BINDIR}/vistrel --version)
