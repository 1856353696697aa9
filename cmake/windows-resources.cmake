# What makes vantrel2.exe a Windows program a member recognises: its icon
# (the tray icon's drawing, written to a .ico on the build machine by
# make-icon from the same source the tray draws it with), its version
# resource and its application manifest (cmake/vantrel2.rc.in,
# cmake/vantrel2.manifest.in), all of one VERSION. Also the link map, from
# which tools/make-notices learns which of the toolchain's libraries went
# into the executable.
#   include(cmake/windows-resources.cmake)   after add_executable(vantrel2)
enable_language(RC)

# make-icon is built for the machine that builds, with its own compiler.
find_program(V2_HOST_CXX NAMES c++ g++ clang++ REQUIRED
             DOC "The build machine's C++ compiler, for make-icon")
set(v2_host ${CMAKE_BINARY_DIR}/host)
set(V2_ICON_FILE ${v2_host}/vantrel2.ico)
add_custom_command(
  OUTPUT ${v2_host}/make-icon
  COMMAND ${CMAKE_COMMAND} -E make_directory ${v2_host}
  COMMAND ${V2_HOST_CXX} -std=c++20 -O1 -I${CMAKE_SOURCE_DIR}/src
          -o ${v2_host}/make-icon ${CMAKE_SOURCE_DIR}/app/make_icon.cpp
          ${CMAKE_SOURCE_DIR}/src/platform/tray_icon.cpp
  DEPENDS app/make_icon.cpp src/platform/tray_icon.cpp
          src/platform/tray_icon.h
  VERBATIM)
add_custom_command(
  OUTPUT ${V2_ICON_FILE}
  COMMAND ${v2_host}/make-icon ${V2_ICON_FILE}
  DEPENDS ${v2_host}/make-icon
  VERBATIM)

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(V2_MANIFEST_ARCH x86)
else()
  set(V2_MANIFEST_ARCH amd64)
endif()
# The manifest's comments are for the reader of the .in file; Windows gets
# the XML alone.
set(V2_MANIFEST_FILE ${CMAKE_BINARY_DIR}/generated/vantrel2.manifest)
file(READ cmake/vantrel2.manifest.in v2_manifest)
string(REGEX REPLACE "[ \t]*<!--([^-]|-[^-])*-->[ \t]*\n" "" v2_manifest
       "${v2_manifest}")
file(CONFIGURE OUTPUT ${V2_MANIFEST_FILE} CONTENT "${v2_manifest}" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             ${CMAKE_SOURCE_DIR}/cmake/vantrel2.manifest.in)
configure_file(cmake/vantrel2.rc.in ${CMAKE_BINARY_DIR}/generated/vantrel2.rc
               @ONLY)
set_source_files_properties(${CMAKE_BINARY_DIR}/generated/vantrel2.rc
  PROPERTIES OBJECT_DEPENDS "${V2_ICON_FILE};${V2_MANIFEST_FILE}")
target_sources(vantrel2 PRIVATE ${CMAKE_BINARY_DIR}/generated/vantrel2.rc)

target_link_options(vantrel2 PRIVATE
                    -Wl,-Map=${CMAKE_BINARY_DIR}/vantrel2.map)
