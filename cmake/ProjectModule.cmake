# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

include(GenerateExportHeader)

# Puts symbolic links to a module's public headers, and only to those, below <root>/<prefix>/, so that the
# folder can be offered as an include path without offering the module's internals.
function(project_link_public_headers root prefix)
  file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  file(MAKE_DIRECTORY "${root}/${prefix}")
  file(GLOB stale "${root}/${prefix}/*.h")
  foreach(link IN LISTS stale)
    if(IS_SYMLINK "${link}" AND NOT EXISTS "${link}")
      file(REMOVE "${link}")
    endif()
  endforeach()
  foreach(header IN LISTS headers)
    get_filename_component(name "${header}" NAME)
    file(CREATE_LINK "${header}" "${root}/${prefix}/${name}" SYMBOLIC)
  endforeach()
endfunction()

# Makes moc run again when files were added or removed: Ninja does not see that by itself.
function(project_refresh_moc name files)
  set(list "${CMAKE_CURRENT_BINARY_DIR}/${name}_moc_sources.txt")
  set(before "")
  if(EXISTS "${list}")
    file(READ "${list}" before)
  endif()
  if(NOT before STREQUAL "${files}")
    file(WRITE "${list}" "${files}")
    file(REMOVE "${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp")
  endif()
endfunction()

# project_add_module(<name> LAYER <n> FAMILY framework|sdk|plugin|app [QT] [PREFIX <include prefix>]
#                    [PUBLIC <targets>] [PRIVATE <targets>])
#
# One shared library of all sources of the current folder and its internal/ folder. Public headers are those of
# the folder itself, included as "<prefix>/<header>"; those of internal/ are seen by the module alone, as
# "<prefix>/internal/<header>". A module links only modules of lower layers; project_check_layers() holds it to that.
function(project_add_module name)
  if(NOT CAMERAPOOL_INSTALL_LIBRARIES)
    set(CAMERAPOOL_INSTALL_LIBRARIES lib/camerapool)
  endif()
  cmake_parse_arguments(ARG "QT;PLUGIN" "LAYER;FAMILY;PREFIX" "PUBLIC;PRIVATE" ${ARGN})
  if(NOT ARG_PREFIX)
    set(ARG_PREFIX "${name}")
  endif()
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h"
    "${CMAKE_CURRENT_SOURCE_DIR}/internal/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/internal/*.h")
  file(GLOB units "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/internal/*.cpp")
  if(NOT units)
    file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/${name}_empty.cpp" "")
    list(APPEND sources "${CMAKE_CURRENT_BINARY_DIR}/${name}_empty.cpp")
  endif()
  add_library(${name} SHARED ${sources})
  add_library(CameraPool::${name} ALIAS ${name})

  set(public_root "${CMAKE_BINARY_DIR}/include/public/${name}")
  set(private_root "${CMAKE_BINARY_DIR}/include/private/${name}")
  project_link_public_headers("${public_root}" "${ARG_PREFIX}")
  file(MAKE_DIRECTORY "${private_root}/${ARG_PREFIX}")
  if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/internal")
    file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/internal" "${private_root}/${ARG_PREFIX}/internal" SYMBOLIC)
  endif()
  target_include_directories(${name} PUBLIC "${public_root}" PRIVATE "${private_root}")

  string(TOUPPER "${name}" upper)
  generate_export_header(${name} BASE_NAME ${upper}
    EXPORT_FILE_NAME "${public_root}/${ARG_PREFIX}/${name}_export.h"
)
  # Internals are exported to the project's own tests only.
  file(WRITE "${public_root}/${ARG_PREFIX}/${name}_testexport.h.in"
    "#pragma once\n#include \"${ARG_PREFIX}/${name}_export.h\"\n#ifdef CAMERAPOOL_TESTING\n#define ${upper}_TEST_EXPORT ${upper}_EXPORT\n#else\n#define ${upper}_TEST_EXPORT\n#endif\n")
  configure_file("${public_root}/${ARG_PREFIX}/${name}_testexport.h.in"
    "${private_root}/${ARG_PREFIX}/${name}_testexport.h" COPYONLY)
  file(REMOVE "${public_root}/${ARG_PREFIX}/${name}_testexport.h.in")

  target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE project_flags ${ARG_PRIVATE} Threads::Threads)
  if(ARG_QT)
    target_link_libraries(${name} PUBLIC Qt5::Core)
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    project_refresh_moc(${name} "${sources}")
    
  endif()
  set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN;$ORIGIN/plugins;$ORIGIN/..")
  install(TARGETS ${name} LIBRARY DESTINATION "${CAMERAPOOL_INSTALL_LIBRARIES}")
  # The files themselves: those of public_root are links into this tree.
  file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  install(FILES ${headers} "${public_root}/${ARG_PREFIX}/${name}_export.h"
    DESTINATION "include/camerapool/${ARG_PREFIX}")
  set_target_properties(${name} PROPERTIES PROJECT_LAYER "${ARG_LAYER}" PROJECT_FAMILY "${ARG_FAMILY}")
  set_property(GLOBAL APPEND PROPERTY PROJECT_MODULES ${name})
endfunction()

# Refuses, at configure time, a module that links one of the same or a higher layer, or that crosses between the
# framework and the SDK anywhere but at the node maps.
function(project_check_layers)
  get_property(modules GLOBAL PROPERTY PROJECT_MODULES)
  foreach(module IN LISTS modules)
    get_target_property(layer ${module} PROJECT_LAYER)
    get_target_property(family ${module} PROJECT_FAMILY)
    get_target_property(links ${module} LINK_LIBRARIES)
    foreach(link IN LISTS links)
      string(REPLACE "CameraPool::" "" link "${link}")
      if(link IN_LIST modules)
        get_target_property(other_layer ${link} PROJECT_LAYER)
        get_target_property(other_family ${link} PROJECT_FAMILY)
        if(NOT other_layer LESS layer)
          message(FATAL_ERROR "Layer check: ${module} (layer ${layer}) must not link ${link} (layer ${other_layer}).")
        endif()
        if(family STREQUAL "sdk" AND NOT other_family STREQUAL "sdk")
          message(FATAL_ERROR "Layer check: ${module} of the SDK must not link ${link} of the ${other_family}.")
        endif()
        if(family STREQUAL "framework" AND other_family STREQUAL "sdk" AND NOT link STREQUAL "genapi")
          message(FATAL_ERROR "Layer check: ${module} of the framework must not link ${link} of the SDK.")
        endif()
      endif()
    endforeach()
  endforeach()
endfunction()
