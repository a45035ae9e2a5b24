# Included by the scripts in this folder: installs BUILD and moves it to SCRATCH/moved, since an
# installed copy must work wherever it is.
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
