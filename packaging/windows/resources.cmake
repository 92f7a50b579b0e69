# What the Windows program carries beside its code: icon, version, and how it wants to be run.
set(ORVELLO_VERSION_4 ${PROJECT_VERSION}.0)
string(REPLACE "." "," ORVELLO_VERSION_COMMAS ${ORVELLO_VERSION_4})
set(windows_parts ${CMAKE_BINARY_DIR}/windows_parts)
configure_file(packaging/windows/orvello.rc.in ${windows_parts}/orvello.rc @ONLY)
configure_file(packaging/windows/orvello.manifest ${windows_parts}/orvello.manifest @ONLY)

# The icon is the program's own picture, written by a program of the machine that builds.
find_program(ORVELLO_NATIVE_CXX NAMES c++ g++ clang++ REQUIRED)
set(icon_sources packaging/windows/export_icon.cpp hosts/shared/png_picture.cpp
  resources/bitmaps.cpp)
list(TRANSFORM icon_sources PREPEND ${CMAKE_SOURCE_DIR}/)
add_custom_command(OUTPUT ${windows_parts}/orvello.ico
  COMMAND ${ORVELLO_NATIVE_CXX} -std=c++20 -I${CMAKE_SOURCE_DIR}
    -I${CMAKE_BINARY_DIR}/generated ${icon_sources} -o ${windows_parts}/export_icon
  COMMAND ${windows_parts}/export_icon ${windows_parts}/orvello.ico
  DEPENDS ${icon_sources})
enable_language(RC)
set_source_files_properties(${windows_parts}/orvello.rc PROPERTIES
  OBJECT_DEPENDS "${windows_parts}/orvello.ico;${windows_parts}/orvello.manifest"
  INCLUDE_DIRECTORIES ${windows_parts})
