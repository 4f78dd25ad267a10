# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

# Finds Aravis 0.8 and makes the target Aravis::aravis. Its pkg-config file is not used: it requires development files
# of libusb, which Debian's libaravis-dev does not bring along and which nothing here compiles against.
find_package(PkgConfig QUIET)
pkg_check_modules(ARAVIS_GLIB QUIET IMPORTED_TARGET gio-2.0 gobject-2.0 glib-2.0)
find_path(ARAVIS_INCLUDE_DIR arv.h PATH_SUFFIXES aravis-0.8)
find_library(ARAVIS_LIBRARY aravis-0.8)
if(ARAVIS_INCLUDE_DIR)
  file(STRINGS "${ARAVIS_INCLUDE_DIR}/arvversion.h" ARAVIS_VERSION_LINES REGEX "#define ARAVIS_(MAJOR|MINOR|MICRO)_VERSION")
  string(REGEX REPLACE "[^0-9]*([0-9]+)[^0-9]*" "\\1." ARAVIS_VERSION "${ARAVIS_VERSION_LINES}")
  string(REGEX REPLACE "[.]$" "" ARAVIS_VERSION "${ARAVIS_VERSION}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Aravis REQUIRED_VARS ARAVIS_LIBRARY ARAVIS_INCLUDE_DIR ARAVIS_GLIB_FOUND
  VERSION_VAR ARAVIS_VERSION)
mark_as_advanced(ARAVIS_INCLUDE_DIR ARAVIS_LIBRARY)

if(Aravis_FOUND AND NOT TARGET Aravis::aravis)
  add_library(Aravis::aravis SHARED IMPORTED GLOBAL)
  set_target_properties(Aravis::aravis PROPERTIES IMPORTED_LOCATION "${ARAVIS_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${ARAVIS_INCLUDE_DIR}" INTERFACE_LINK_LIBRARIES PkgConfig::ARAVIS_GLIB)
endif()
