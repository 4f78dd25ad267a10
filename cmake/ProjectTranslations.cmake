# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

# project_add_translations(<target> <name>)
#
# Compiles translations/<name>_<language>.ts of the current folder, one for each language of the project, into the
# target's resources as ":/translation/<name>_<language>.qm".
function(project_add_translations target name)
  find_package(Qt5 5.15 REQUIRED COMPONENTS LinguistTools)
  set(languages ja zh en ko)
  list(TRANSFORM languages REPLACE "(.+)" "translations/${name}_\\1.ts" OUTPUT_VARIABLE catalogues)
  qt5_add_translation(messages ${catalogues})

  set(resources "<RCC>\n    <qresource prefix=\"/translation\">\n")
  foreach(language IN LISTS languages)
    string(APPEND resources "        <file>${name}_${language}.qm</file>\n")
  endforeach()
  string(APPEND resources "    </qresource>\n</RCC>\n")
  file(GENERATE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/translation.qrc" CONTENT "${resources}")
  set(code "qrc_${target}_translation.cpp")
  add_custom_command(OUTPUT ${code}
    COMMAND Qt5::rcc --name ${target}_translation --output ${code} translation.qrc
    DEPENDS ${messages} "${CMAKE_CURRENT_BINARY_DIR}/translation.qrc"
    WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}" VERBATIM)
  target_sources(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${code}")
  set_property(SOURCE "${CMAKE_CURRENT_BINARY_DIR}/${code}" PROPERTY SKIP_AUTOGEN ON)
  set_property(SOURCE "${CMAKE_CURRENT_BINARY_DIR}/${code}" PROPERTY SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
