# Included by the scripts beside it: installs BUILD and moves it to SCRATCH/moved, since an
# installed copy must not remember where it first stood.
cmake_minimum_required(VERSION 3.25)
set(PROJECT ${CMAKE_CURRENT_LIST_DIR}/project)
set(PREFIX ${SCRATCH}/moved)

function(run)
  execute_process(COMMAND ${ARGV} WORKING_DIRECTORY ${SCRATCH} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
file(MAKE_DIRECTORY ${SCRATCH})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/first)
file(RENAME ${SCRATCH}/first ${PREFIX})
