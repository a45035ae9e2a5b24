# cmake -D ROOT=FOLDER -P includes.cmake: fails when a file includes a room it may not see.
# "Room" in a list stands for all headers of that room, "room/file.h" for that one.
cmake_minimum_required(VERSION 3.25)

set(common)
set(curves common)
set(output curves common)
set(cfa common)
set(platform cfa/processor.h common)
set(demosaic output curves cfa platform common frontend/registry.h)
set(frontend demosaic output curves cfa platform common)
set(host frontend/vistrel.h demosaic/image_functions.h cfa/processor.h common/level.h)
set(apps host)
set(bench common curves output cfa platform demosaic frontend host)
set(tests ${bench} apps bench)
set(rooms common curves output cfa platform demosaic frontend host apps bench tests)

# Sets what is wrong with a file of the room including this; empty when nothing is.
function(judge room included fault_variable)
  set(fault "")
  if(NOT included MATCHES "^([a-z]+)/")
    set(fault "write it from the project's root")
  elseif(NOT CMAKE_MATCH_1 IN_LIST rooms)
    set(fault "there is no room ${CMAKE_MATCH_1}/")
  elseif(NOT (CMAKE_MATCH_1 STREQUAL room OR CMAKE_MATCH_1 IN_LIST ${room}
              OR included IN_LIST ${room}))
    list(JOIN ${room} ", " allowed)
    set(fault "${room}/ may include only: ${room}, ${allowed}")
  endif()
  set(${fault_variable} "${fault}" PARENT_SCOPE)
endfunction()

# In quotes, or a path of ours in angle brackets, or the body that each_level.inl includes.
list(JOIN rooms "|" any_room)
set(ours "(include[ \t]*(\"|<(${any_room})/)|define VISTREL_BODY \")")

set(faults "")
set(count 0)
foreach(room IN LISTS rooms)
  file(GLOB_RECURSE files RELATIVE ${ROOT}
    ${ROOT}/${room}/*.h ${ROOT}/${room}/*.hpp ${ROOT}/${room}/*.inl ${ROOT}/${room}/*.c
    ${ROOT}/${room}/*.cpp)
  foreach(file IN LISTS files)
    math(EXPR count "${count} + 1")
    file(STRINGS ${ROOT}/${file} lines REGEX "^[ \t]*#[ \t]*${ours}")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "^[^<\"]*[<\"]([^>\"]*).*" "\\1" included "${line}")
      judge(${room} "${included}" fault)
      if(fault)
        string(APPEND faults "  ${file}: \"${included}\": ${fault}\n")
      endif()
    endforeach()
  endforeach()
endforeach()

if(NOT count)
  message(FATAL_ERROR "no source file under ${ROOT}")
elseif(faults)
  message(FATAL_ERROR "includes against the direction of the rooms:\n${faults}")
endif()
message(STATUS "${count} files include only what they may")
