# cmake -D ROOT=FOLDER -P includes.cmake: fails if a file includes a module that its own module may
# not use, or if modules, or headers, include each other in a circle.
cmake_minimum_required(VERSION 3.25)

# The public headers, whose paths begin with "vistrel/", are two modules: "entries" belong to
# libVistrel, "interface" to libvistrelhost. vistrel/processor.h belongs to cpu/, which implements it.
set(entries)
set(interface)
set(common)
set(common/simd common)
set(common/rows common/simd common)
set(cpu entries common)
set(streams entries cpu common)
set(curves entries common)
set(samples cpu common/simd common)
set(output entries cpu common/rows common/simd common)
set(finish output cpu common/rows common/simd common)
set(cfa entries cpu common/rows common/simd common)
set(platform entries)
set(demosaic entries streams output cfa cpu common/rows common/simd common)
set(frontend entries demosaic output streams cpu common/simd common)
set(host interface frontend demosaic finish output samples cpu common/rows common)
set(bench entries interface common common/simd common/rows cpu streams curves samples output finish cfa platform
  demosaic frontend)

# In apps/ each folder is a module, and so is each source that lies beside them.
set(apps/rejection interface)
set(apps/error interface apps/rejection)
set(apps/plugin interface)
set(apps/names interface apps/error)
set(apps/files apps/error)
set(apps/colour)
set(apps/options interface apps/names apps/error apps/rejection)
set(apps/progress apps/options)
set(apps/pictures interface apps/colour apps/names apps/files apps/error)
set(apps/input interface apps/colour apps/plugin apps/options apps/names apps/pictures apps/files apps/error)
set(apps/look interface apps/input apps/error)
set(apps/batch interface apps/options apps/progress apps/pictures apps/files apps/error)
set(apps/tools/drawing interface)
set(apps/tools/scene interface apps/tools/drawing)
set(apps/tools/sheet apps/tools/drawing apps/error)
set(apps/tools/report interface apps/tools/drawing apps/options apps/names apps/error)
set(apps/tools/guess interface apps/options apps/names)
set(apps/tools/selftest interface)
set(apps/commands interface apps/colour apps/input apps/look apps/batch apps/tools/report apps/tools/scene
  apps/tools/sheet apps/tools/guess apps/tools/selftest apps/options apps/names apps/progress
  apps/pictures apps/files apps/error)
set(apps/program apps/commands apps/options apps/names apps/error)
set(apps/main apps/program apps/files apps/error)
set(apps/tools/manual interface apps/names apps/options apps/program)
set(apps apps/main apps/program apps/commands apps/input apps/batch apps/tools/drawing
  apps/tools/guess apps/tools/manual apps/tools/report apps/tools/scene apps/tools/selftest
  apps/tools/sheet apps/look apps/colour apps/options apps/progress apps/names apps/plugin apps/pictures apps/files
  apps/error apps/rejection)

set(python interface apps/names apps/look apps/input apps/pictures apps/files apps/tools/guess apps/error
  common/rows)
set(gstreamer interface apps/names apps/options apps/look apps/error)
set(wasm interface)
set(try interface apps/commands apps/input apps/look apps/tools/guess apps/tools/selftest apps/colour
  apps/options apps/names apps/pictures apps/files apps/error)

set(tests ${bench} host ${apps} bench gstreamer)
set(modules
  common cpu streams curves samples output finish cfa platform demosaic frontend host apps gstreamer wasm try python
  bench tests)
set(all_modules entries interface common/simd common/rows ${modules} ${apps})

# The module of a path from the root; of a public header by its name.
function(module_of path result_variable)
  string(REGEX MATCH "^(common/(rows|simd)/|(apps/tools/|apps/)?[a-z]+)" folder "${path}")
  string(REGEX REPLACE "/$" "" folder "${folder}")
  if(path MATCHES "^vistrel/(vistrel_(host|finish|finish_types|types|status)\\.h|vistrel(_[a-z]+)?\\.hpp)$")
    set(folder interface)
  elseif(path STREQUAL "vistrel/processor.h")
    set(folder cpu)
  elseif(folder STREQUAL "vistrel")
    set(folder entries)
  endif()
  set(${result_variable} "${folder}" PARENT_SCOPE)
endfunction()

# Sets what is wrong if a file of the module includes this; empty if nothing is.
function(check_include module included fault_variable)
  set(fault "")
  module_of("${included}" folder)
  if(NOT included MATCHES "^([a-z]+)/")
    set(fault "write the path from the project's root")
  elseif(NOT folder IN_LIST all_modules)
    set(fault "there is no module ${folder}/")
  elseif(NOT (folder STREQUAL module OR folder IN_LIST ${module}))
    list(JOIN ${module} ", " allowed)
    set(fault "${module}/ may include only: ${module}, ${allowed}")
  endif()
  set(${fault_variable} "${fault}" PARENT_SCOPE)
endfunction()

# Sets what is left of the nodes after those that depend on no other one are removed, again and
# again: nothing, unless some form a circle. PREFIX_NODE lists what a node depends on.
function(find_circle prefix nodes circle_variable)
  set(before "")
  while(NOT "${nodes}" STREQUAL "${before}")
    set(before "${nodes}")
    foreach(node IN LISTS before)
      set(rest ${${prefix}${node}})
      list(REMOVE_ITEM rest ${node})
      foreach(other IN LISTS rest)
        if(other IN_LIST nodes)
          set(rest "kept")
          break()
        endif()
      endforeach()
      if(NOT rest STREQUAL "kept")
        list(REMOVE_ITEM nodes ${node})
      endif()
    endforeach()
  endwhile()
  set(${circle_variable} "${nodes}" PARENT_SCOPE)
endfunction()

# In quotes, or a path of ours in angle brackets, or the body that each_level.h includes.
list(JOIN modules "|" any_module)
set(ours "(include[ \t]*(\"|<(${any_module}|vistrel)/)|define VISTREL_BODY \")")

set(faults "")
set(count 0)
foreach(module IN LISTS modules)
  file(GLOB_RECURSE files RELATIVE ${ROOT}
    ${ROOT}/${module}/*.h ${ROOT}/${module}/*.hpp ${ROOT}/${module}/*.inl ${ROOT}/${module}/*.c
    ${ROOT}/${module}/*.cpp)
  list(APPEND all_files ${files})
  foreach(file IN LISTS files)
    math(EXPR count "${count} + 1")
    file(STRINGS ${ROOT}/${file} lines REGEX "^[ \t]*#[ \t]*${ours}")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "^[^<\"]*[<\"]([^>\"]*).*" "\\1" included "${line}")
      module_of("${file}" own_module)
      list(APPEND includes_${file} ${included})
      check_include(${own_module} "${included}" fault)
      if(fault)
        string(APPEND faults "  ${file}: \"${included}\": ${fault}\n")
      endif()
    endforeach()
  endforeach()
endforeach()

find_circle("" "${all_modules}" circle)
if(circle)
  string(APPEND faults "  these modules may include each other: ${circle}\n")
endif()
find_circle(includes_ "${all_files}" circle)
if(circle)
  string(APPEND faults "  these files include each other: ${circle}\n")
endif()

if(NOT count)
  message(FATAL_ERROR "no source file under ${ROOT}")
elseif(faults)
  message(FATAL_ERROR "includes against the direction of the modules:\n${faults}")
endif()
message(STATUS "${count} files include only what they may")
