# Shared by the tests of the checks.

# Runs the check `script` of this folder over the tree in SCRATCH.
function(check_tree result_variable output_variable)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -D ROOT=${SCRATCH} -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${script}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(${result_variable} ${result} PARENT_SCOPE)
  set(${output_variable} "${output}" PARENT_SCOPE)
endfunction()
