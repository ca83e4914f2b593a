# SPDX-License-Identifier: MIT
# vexa_test(name SOURCES ... LIBS ... [GUI]): a Qt Test program, run by ctest with a profile folder of its own and,
# for GUI, on an X server of its own. It is told where the source tree is (VEXA_SOURCE_DIR).
function(vexa_test name)
  cmake_parse_arguments(ARG "GUI" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE Qt5::Test ${ARG_LIBS})
  target_compile_definitions(${name} PRIVATE VEXA_SOURCE_DIR="${CMAKE_SOURCE_DIR}" VEXA_BINARY_DIR="${CMAKE_BINARY_DIR}")
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  set(mode plain)
  if(ARG_GUI)
    set(mode gui)
  endif()
  add_test(NAME ${name} COMMAND "${CMAKE_SOURCE_DIR}/tests/with-profile.sh" ${mode} $<TARGET_FILE:${name}>)
  set_tests_properties(${name} PROPERTIES TIMEOUT 900)
  if(VEXA_SANITIZE)
    # The leak sanitizer tells others' memory from ours only while their libraries are loaded.
    target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests/support/keep_libraries.cpp")
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON)
  endif()
endfunction()
