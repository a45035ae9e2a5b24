# ctest includes this for every GoogleTest program and adds an entry for each suite: an entry for
# each case would start the programs two thousand times. VISTREL_LEAVE_OUT in the environment is a
# pattern of cases to leave out. An entry counts as skipped if the list of skipped cases ends its
# output and no case passed; after a failure a list of failed cases follows. An emulator with its
# arguments runs cross-compiled programs.
function(vistrel_suites name file prefix)
  set(program ${ARGN} ${file})
  set(rest -$ENV{VISTREL_LEAVE_OUT})
  execute_process(COMMAND ${program} --gtest_list_tests --gtest_filter=*:${rest}
    OUTPUT_VARIABLE listed RESULT_VARIABLE failed)
  if(failed)
    add_test(${prefix}${name}_NOT_BUILT ${program})
    return()
  endif()
  string(REGEX MATCHALL "\n[^ \n]+\\." suites "\n${listed}")
  foreach(suite IN LISTS suites)
    string(REGEX REPLACE "\n(.*)\\." "\\1" suite ${suite})
    add_test(${prefix}${suite} ${program} --gtest_filter=${suite}.*:${rest})
    if(suite STREQUAL "Camera")  # All simulated cameras answer at one port.
      set_tests_properties(${prefix}${suite} PROPERTIES RESOURCE_LOCK camera_port)
    endif()
    set_tests_properties(${prefix}${suite} PROPERTIES
      SKIP_REGULAR_EXPRESSION "\\[  PASSED  \\] 0 tests\\.\n(\\[  SKIPPED \\] [^\n]*\n)+$")
  endforeach()
endfunction()
