# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

if(CAMERAPOOL_BENCHMARKS)
  find_package(benchmark REQUIRED)
  add_custom_target(benchmarks)
endif()

# project_add_benchmark(<name> [SOURCES <files>] [DEPENDS <targets>] [INTERNALS_OF <modules>] [NO_MAIN])
#
# One Google Benchmark program of all *.cpp files of the current folder (or of SOURCES), put into bin/benchmarks.
# INTERNALS_OF names the modules whose internal headers it includes. NO_MAIN: the sources bring their own main().
function(project_add_benchmark name)
  cmake_parse_arguments(ARG "NO_MAIN" "" "SOURCES;DEPENDS;INTERNALS_OF" ${ARGN})
  if(NOT ARG_SOURCES)
    file(GLOB ARG_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  endif()
  if(NOT ARG_SOURCES)
    message(FATAL_ERROR "project_add_benchmark(${name}): no sources in ${CMAKE_CURRENT_SOURCE_DIR}")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  add_dependencies(benchmarks ${name})
  target_link_libraries(${name} PRIVATE project_flags ${ARG_DEPENDS} benchmark::benchmark Threads::Threads)
  if(NOT ARG_NO_MAIN)
    target_link_libraries(${name} PRIVATE benchmark::benchmark_main)
  endif()
  foreach(module IN LISTS ARG_INTERNALS_OF)
    target_include_directories(${name} PRIVATE "${CMAKE_BINARY_DIR}/include/private/${module}")
  endforeach()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/benchmarks")
endfunction()
