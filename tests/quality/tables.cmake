# cmake -D TOOL=PROGRAM -D PICTURES=FOLDER -D PAGE=FILE -P tables.cmake: fails unless the page has
# every row of the tables that vistrel-quality prints. PICTURES may be empty.
execute_process(COMMAND ${TOOL} "${PICTURES}" OUTPUT_VARIABLE tables COMMAND_ERROR_IS_FATAL ANY)
file(READ ${PAGE} page)
string(REGEX MATCHALL "\\|[^\n]+" rows "${tables}")
if(NOT rows)
  message(FATAL_ERROR "${TOOL} prints no table")
endif()
foreach(row IN LISTS rows)
  string(FIND "${page}" "${row}" place)
  if(place EQUAL -1)
    message(SEND_ERROR "${PAGE} lacks ${row}")
  endif()
endforeach()
