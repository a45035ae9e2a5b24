# cmake -D FOLDER=FOLDER -P search_path.cmake: removes the run path from all
# programs and libraries installed there.
file(GLOB files ${FOLDER}/bin/* ${FOLDER}/lib/*/lib*.so.* ${FOLDER}/lib/*/vistrel/*
  ${FOLDER}/lib/*/gstreamer-1.0/*.so
  ${FOLDER}/lib/python3/dist-packages/vistrel/*.so)
foreach(file IN LISTS files)
  if(NOT IS_SYMLINK ${file})
    file(RPATH_REMOVE FILE ${file})
  endif()
endforeach()
