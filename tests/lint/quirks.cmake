# cmake -D ROOT=FOLDER -P quirks.cmake: fails unless the same names of quirks are in docs/quirks.md
# as headings "## name", in the sources as "// quirk: name", and likewise in tests/**/*_test.cpp.
cmake_minimum_required(VERSION 3.25)

# The names after `mark` in files.
function(names_in files mark names_variable)
  set(names "")
  foreach(file IN LISTS files)
    file(STRINGS ${file} lines REGEX "${mark}")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE ".*${mark}([^ .]*).*" "\\1" name "${line}")
      list(APPEND names "${name}")
    endforeach()
  endforeach()
  list(REMOVE_DUPLICATES names)
  set(${names_variable} "${names}" PARENT_SCOPE)
endfunction()

set(sources "")
foreach(module IN ITEMS common cpu streams curves samples output finish cfa platform demosaic frontend host apps)
  file(GLOB_RECURSE files ${ROOT}/${module}/*.h ${ROOT}/${module}/*.hpp ${ROOT}/${module}/*.inl
    ${ROOT}/${module}/*.cpp)
  list(APPEND sources ${files})
endforeach()
file(GLOB_RECURSE tests ${ROOT}/tests/*_test.cpp)

names_in(${ROOT}/docs/quirks.md "^## " docs/quirks.md)
names_in("${sources}" "// quirk: " "the sources")
names_in("${tests}" "// quirk: " "the tests")

set(places docs/quirks.md "the sources" "the tests")
set(all "")
foreach(place IN LISTS places)
  list(APPEND all ${${place}})
endforeach()
list(REMOVE_DUPLICATES all)
list(SORT all)

set(faults "")
foreach(name IN LISTS all)
  foreach(place IN LISTS places)
    if(NOT name IN_LIST "${place}")
      string(APPEND faults "  ${name}: not in ${place}\n")
    endif()
  endforeach()
endforeach()
list(LENGTH all count)
if(NOT count)
  message(FATAL_ERROR "no quirk under ${ROOT}")
elseif(faults)
  message(FATAL_ERROR "a quirk has an entry in the docs, a mark in the sources and a mark at the "
    "test that fails when it is mended:\n${faults}")
endif()
message(STATUS "${count} quirks are documented, marked and tested")
