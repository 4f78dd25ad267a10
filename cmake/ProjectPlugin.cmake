# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

# project_output_to_plugin_folder(<target>...)
#
# Puts the libraries into the folder from which the hosts load the plugins of the application.
function(project_output_to_plugin_folder)
  set_target_properties(${ARGN} PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${CAMERAPOOL_PLUGIN_DIR}")
  add_dependencies(plugins ${ARGN})
endfunction()

# project_add_plugin(<name> LAYER <n> [PREFIX <include prefix>] [PUBLIC <targets>] [PRIVATE <targets>])
#
# A module (see project_add_module) that is a Qt plugin of the application. Its metadata file is named by its
# Q_PLUGIN_METADATA; a change of any *.json file of the folder makes moc run again.
function(project_add_plugin name)
  set(CAMERAPOOL_INSTALL_LIBRARIES lib/camerapool/plugins)
  project_add_module(${name} FAMILY plugin QT ${ARGN})
  file(GLOB metadata CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.json" "${CMAKE_CURRENT_SOURCE_DIR}/internal/*.json")
  set_property(TARGET ${name} APPEND PROPERTY AUTOGEN_TARGET_DEPENDS "${metadata}")
  project_output_to_plugin_folder(${name})
endfunction()
