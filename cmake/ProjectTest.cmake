# SPDX-FileCopyrightText: 2026 The CameraPool developers
# SPDX-License-Identifier: MIT

if(CAMERAPOOL_TESTS)
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()

# project_add_test(<name> [QT] [SERIAL] [SOURCES <files>] [DEPENDS <targets>] [INTERNALS_OF <modules>] [LABELS <labels>]
#                  [TIMEOUT <seconds>])
#
# SERIAL: its tests run while no other does, for those whose peer must keep a pace.
# One test program of all *test.cpp files of the current folder (or of SOURCES). INTERNALS_OF names the modules whose
# internal headers the tests include. QT runs the tests under a QCoreApplication with settings in a scratch folder.
function(project_add_test name)
  cmake_parse_arguments(ARG "QT;SERIAL" "TIMEOUT" "SOURCES;DEPENDS;INTERNALS_OF;LABELS" ${ARGN})
  if(NOT ARG_SOURCES)
    file(GLOB ARG_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*test.cpp")
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  if(NOT ARG_SOURCES)
    message(FATAL_ERROR "project_add_test(${name}): no test sources in ${CMAKE_CURRENT_SOURCE_DIR}")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE project_flags ${ARG_DEPENDS} GTest::gtest GTest::gmock Threads::Threads)
  if(ARG_QT)
    find_package(Qt5 5.15 REQUIRED COMPONENTS Test)
    target_link_libraries(${name} PRIVATE testmain_qt Qt5::Core Qt5::Test)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    project_refresh_moc(${name} "${ARG_SOURCES}")
  else()
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  foreach(module IN LISTS ARG_INTERNALS_OF)
    target_include_directories(${name} PRIVATE "${CMAKE_BINARY_DIR}/include/private/${module}")
  endforeach()
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  if(CAMERAPOOL_SANITIZE)
    # Optimising checked assertions doubles the time that the tests take to compile, and saves none when they run.
    target_compile_options(${name} PRIVATE -O0)
  endif()
  list(LENGTH ARG_LABELS labels)
  if(labels GREATER 1) # test discovery would make one label of them, which no -L or -LE finds
    message(FATAL_ERROR "${name}: one label only, not '${ARG_LABELS}'.")
  endif()
  # No test may search the machine's real network; those of the GigE transport name their adapter themselves. What the
  # camera engine's library calls critical is a misuse by us: it ends the test.
  gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "CAMERAPOOL_GIGE_ADAPTERS=none"
    ENVIRONMENT_MODIFICATION "G_DEBUG=set:fatal-criticals"
    RUN_SERIAL ${ARG_SERIAL} LABELS "${ARG_LABELS}")
  foreach(source IN LISTS ARG_SOURCES)
    get_filename_component(source "${source}" ABSOLUTE)
    set_property(GLOBAL APPEND PROPERTY PROJECT_TEST_SOURCES "${source}")
  endforeach()
endfunction()
