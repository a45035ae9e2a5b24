# vistrel_headers_of(TARGET FOLDER): the target has the headers in that folder of /usr/include, and
# nothing else that lies there: the other headers are those of the build machine.
function(vistrel_headers_of target folder)
  set(headers ${PROJECT_BINARY_DIR}/headers)
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK /usr/include/${folder} ${headers}/${folder} SYMBOLIC)
  target_include_directories(${target} SYSTEM INTERFACE ${headers})
endfunction()
