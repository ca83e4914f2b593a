# SPDX-License-Identifier: MIT
# Flags and helpers that every room's build file uses.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# One tree, in the build folder as after the installation: programs in bin/, libraries in lib/, plug-ins
# in lib/vexa/plugins/, the guide in share/doc/vexa/, found relative to the program.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(VEXA_PLUGIN_DIR "lib/vexa/plugins")
set(VEXA_DOC_DIR "share/doc/vexa")
set(CMAKE_INSTALL_LIBDIR "lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

add_compile_options(-Wall -Wextra -Wconversion -Wno-sign-conversion)
# A product is rounded before it is added: results are the same on every processor, bit for bit.
add_compile_options(-ffp-contract=off)
add_compile_definitions(QT_DISABLE_DEPRECATED_BEFORE=0x050A00 QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
if(VEXA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g1 -O1)
  add_link_options(-fsanitize=address,undefined)
endif()

# vexa_host_library(name SOURCES ... LIBS ...): one of the host's shared libraries.
# Headers are included from the source root; symbols are exported with <NAME>_EXPORT of <name>_global.h.
function(vexa_host_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;PRIVATE_LIBS" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  string(TOUPPER ${name} upper)
  target_compile_definitions(${name} PRIVATE ${upper}_LIBRARY)
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ARG_LIBS} PRIVATE ${ARG_PRIVATE_LIBS})
  target_link_options(${name} PRIVATE -Wl,--no-undefined)
  if(VEXA_SANITIZE)
    target_link_options(${name} PRIVATE -Wl,-z,undefs)
  endif()
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 1 INSTALL_RPATH "\$ORIGIN")
  install(TARGETS ${name} LIBRARY DESTINATION lib NAMELINK_SKIP)
endfunction()

# vexa_room(name SOURCES ... LIBS ...): a room of the tool, a static library with no exported symbol.
function(vexa_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ARG_LIBS})
endfunction()
