# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

# Settings that hold for every target of the project.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC_PATH_PREFIX OFF)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CAMERAPOOL_PLUGIN_DIR "${CMAKE_BINARY_DIR}/plugins")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_custom_target(plugins)

find_package(Threads REQUIRED)
find_package(Qt5 5.15 REQUIRED COMPONENTS Core LinguistTools)
find_package(PkgConfig REQUIRED)

# project_compile_alone(<files>)
#
# Keeps files of the current folder's targets out of the unities of the sanitizer presets, and of tools/check-tidy,
# because names of their anonymous namespaces are taken by a file beside them.
file(WRITE "${CMAKE_BINARY_DIR}/compiled-alone.txt" "")
function(project_compile_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  foreach(file IN LISTS ARGN)
    file(RELATIVE_PATH file "${CMAKE_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
    file(APPEND "${CMAKE_BINARY_DIR}/compiled-alone.txt" "${file}\n")
  endforeach()
endfunction()

add_library(project_flags INTERFACE)
target_compile_options(project_flags INTERFACE -Wall -Wextra -Wpedantic)
if(CAMERAPOOL_WERROR)
  target_compile_options(project_flags INTERFACE -Werror)
endif()
if(CAMERAPOOL_TESTS OR CAMERAPOOL_BENCHMARKS)
  target_compile_definitions(project_flags INTERFACE CAMERAPOOL_TESTING)
endif()
# All but one of a unity's files look like headers to this warning; targets without unities give it.
target_compile_options(project_flags INTERFACE
  "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>>:-Wno-subobject-linkage>")
target_link_options(project_flags INTERFACE "LINKER:--as-needed")
if(CAMERAPOOL_FUZZERS)
  # The libraries under test tell libFuzzer which code an input reaches; without that it searches blindly.
  target_compile_options(project_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(CAMERAPOOL_SANITIZE)
  foreach(sanitizer IN LISTS CAMERAPOOL_SANITIZE)
    target_compile_options(project_flags INTERFACE -fsanitize=${sanitizer} -fno-omit-frame-pointer)
    target_link_options(project_flags INTERFACE -fsanitize=${sanitizer})
  endforeach()
  if("undefined" IN_LIST CAMERAPOOL_SANITIZE)
    target_compile_options(project_flags INTERFACE -fno-sanitize-recover=undefined)
  endif()
else()
  # A class whose moc output is missing then fails to link instead of failing at run time.
  target_link_options(project_flags INTERFACE "LINKER:--no-undefined")
endif()
