# cmake -D ROOT=FOLDER -P own_tests.cmake: fails when a source of the libraries or the program,
# FOLDER/NAME.cpp, has no test of its own, tests/FOLDER/NAME_test.cpp, or CMake does not build it.
# python/ has tests in Python, try/ in JavaScript.
# NAME_command.cpp has NAME_test.cpp. Headers of common/ are sources as well; any other header is part
# of the .cpp files that include it.
cmake_minimum_required(VERSION 3.25)

set(exempt
  common/arch.h common/depth.h                  # constants and types
  common/simd/each_level.h common/simd/simd.h   # every test of vector code is compiled by them
  cfa/near/near_border.cpp                      # near_test.cpp compares whole frames
  # Every algorithm's test calls a function that runs these.
  demosaic/entries.cpp demosaic/through_buffer.cpp

  # The program's sources whose tests run the program:
  apps/main.cpp apps/program.cpp apps/options/batch_options.cpp apps/options/conversion_options.cpp
  apps/options/help.cpp apps/options/input_options.cpp apps/options/options.cpp  # usage_test.cpp
  apps/commands/conversion_job.cpp apps/commands/picture_request.cpp  # convert_test.cpp
  apps/commands/development_job.cpp apps/commands/develop_options.cpp apps/commands/look_options.cpp
  apps/look/camera_look.cpp apps/look/finished_look.cpp               # develop_test.cpp
  apps/options/calibration_options.cpp apps/input/calibrated_frame.cpp  # sensor_calibration_test.cpp
  apps/look/decide_calibrated.cpp                                     # develop_test.cpp
  apps/files/temporary_file.cpp                                       # atomic_file_test.cpp
  apps/input/fits_input.cpp apps/input/tiff_blocks.cpp apps/input/tiff_image.cpp
  apps/input/tiff_input.cpp apps/input/readers.cpp                    # those of the readers
  apps/look/sky.cpp apps/look/tone.cpp                                # decide_test.cpp
  apps/look/finished_look.cpp                                         # develop_test.cpp
  apps/names/algorithm_guide.cpp                                      # algorithms_test.cpp
  apps/colour/illuminant.cpp apps/colour/matrix3.cpp                   # camera_colour_test.cpp
  apps/commands/camera_info.cpp                                       # info_test.cpp
  apps/names/names_json.cpp apps/names/output_names.cpp               # formats_test.cpp
  apps/pictures/picture.cpp apps/pictures/picture_rows.cpp apps/pictures/write_pnm.cpp
  apps/pictures/write_tiff.cpp apps/pictures/tiff_output.cpp          # written_test.cpp
  apps/pictures/png_chunks.cpp apps/pictures/write_jpeg.cpp apps/pictures/write_npy.cpp
  apps/pictures/write_png.cpp apps/options/compression_options.cpp    # compressed_test.cpp
  apps/commands/mosaic_job.cpp apps/commands/camera_details.cpp       # write_dng_test.cpp
  apps/pictures/png_input.cpp apps/pictures/read_picture.cpp          # mosaic_test.cpp
  apps/plugin/libraw_plugin.cpp                                       # camera_raw_test.cpp
  apps/tools/report/evaluation.cpp apps/tools/report/plot.cpp         # report_test.cpp
  apps/tools/guess/guess_text.cpp                                     # commands/guess_test.cpp
  apps/tools/scene/cards.cpp apps/tools/scene/scene.cpp apps/commands/scene_frame.cpp
  apps/tools/scene/sensor.cpp apps/tools/scene/exposure.cpp           # scene_test.cpp
  apps/tools/sheet/contact_sheet.cpp                                  # compare_test.cpp
  gstreamer/converter.cpp gstreamer/properties.cpp                    # element_test.cpp
  # These have programs of their own.
  apps/commands/selftest_command.cpp apps/tools/selftest/cases.cpp apps/tools/selftest/print.cpp
  apps/tools/selftest/run.cpp wasm/fields.cpp
  apps/tools/manual/bash.cpp apps/tools/manual/description.cpp apps/tools/manual/details.cpp
  apps/tools/manual/fish.cpp apps/tools/manual/main.cpp apps/tools/manual/man_page.cpp
  apps/tools/manual/zsh.cpp gstreamer/plugin.cpp)

include(${CMAKE_CURRENT_LIST_DIR}/sources.cmake)
sources(${ROOT} files)
list(FILTER files EXCLUDE REGEX "^(bench|examples|include|python|tests|try)/")
list(FILTER files INCLUDE REGEX "^common/|\\.cpp$")
list(REMOVE_ITEM files ${exempt})
if(NOT files)
  message(FATAL_ERROR "no source under ${ROOT}")
endif()

set(faults "")
foreach(file IN LISTS files)
  string(REGEX REPLACE "(-inl|_command)?\\.[a-z]+$" "_test.cpp" test ${file})
  string(REGEX MATCH "^([^/]+)/(.*)" path ${test})
  set(built "")
  if(EXISTS ${ROOT}/tests/${test})
    file(STRINGS ${ROOT}/tests/${CMAKE_MATCH_1}/CMakeLists.txt built
      REGEX "[ (]${CMAKE_MATCH_2}([ )]|$)")
  endif()
  if(NOT built)
    string(APPEND faults "  ${file}: tests/${test}\n")
  endif()
endforeach()
if(faults)
  message(FATAL_ERROR "tests to write, or to add to CMake:\n${faults}")
endif()
