# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

# project_add_fuzzer(<name> SOURCES <files> DEPENDS <targets> [INTERNALS_OF <modules>])
#
# A fuzz target. In the fuzz preset it is a libFuzzer program (build/fuzz/bin/fuzz/<name>); in every other preset a small
# driver feeds it its seeds and mutations of them for a fixed number of rounds, as an ordinary test, so that it cannot
# rot and runs under every sanitizer.
add_custom_target(fuzzers)
function(project_add_fuzzer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;INTERNALS_OF" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE project_flags ${ARG_DEPENDS} Threads::Threads)
  foreach(module IN LISTS ARG_INTERNALS_OF)
    target_include_directories(${name} PRIVATE "${CMAKE_BINARY_DIR}/include/private/${module}")
  endforeach()
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  add_dependencies(fuzzers ${name})
  if(CAMERAPOOL_FUZZERS)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin/fuzz")
  else()
    target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests/fuzz/mutationdriver.cpp")
    add_test(NAME fuzz.${name} COMMAND ${name} "${CMAKE_SOURCE_DIR}/tests/fuzz/seeds/${name}")
    set_tests_properties(fuzz.${name} PROPERTIES TIMEOUT 120 LABELS fuzz)
  endif()
  foreach(source IN LISTS ARG_SOURCES)
    get_filename_component(source "${source}" ABSOLUTE)
    set_property(GLOBAL APPEND PROPERTY PROJECT_TEST_SOURCES "${source}")
  endforeach()
endfunction()
