# cmake -D CC=gcc -D CXX=g++ -D FOLDER=FOLDER -D C_HEADERS="A B" -D CXX_HEADERS="C D"
# -D SCRATCH=FOLDER -P headers.cmake: fails unless every header of FOLDER/vistrel compiles by itself,
# included twice, without a warning: those in plain C in all standards of C and C++, the others
# from C++17 on.
cmake_minimum_required(VERSION 3.25)

separate_arguments(C_HEADERS)
separate_arguments(CXX_HEADERS)
set(faults "")
function(must_compile compiler header language standard)
  get_filename_component(name ${header} NAME)
  set(source ${SCRATCH}/${name}.${language})
  file(WRITE ${source} "#include \"vistrel/${name}\"\n#include \"vistrel/${name}\"\nint main(void) { return 0; }\n")
  execute_process(
    COMMAND ${compiler} -std=${standard} -Wall -Wextra -Wpedantic -Werror -fsyntax-only
      -I${FOLDER} ${source}
    RESULT_VARIABLE result ERROR_VARIABLE error)
  if(NOT result EQUAL 0)
    set(faults "${faults}${name} as ${standard}:\n${error}\n" PARENT_SCOPE)
  endif()
endfunction()

foreach(header IN LISTS C_HEADERS)
  foreach(standard IN ITEMS c89 c99 c11 c17)
    must_compile(${CC} ${header} c ${standard})
  endforeach()
  foreach(standard IN ITEMS c++98 c++11 c++14)
    must_compile(${CXX} ${header} cpp ${standard})
  endforeach()
endforeach()
foreach(header IN LISTS C_HEADERS CXX_HEADERS)
  foreach(standard IN ITEMS c++17 c++20)
    must_compile(${CXX} ${header} cpp ${standard})
  endforeach()
endforeach()

if(faults)
  message(FATAL_ERROR "${faults}")
endif()
