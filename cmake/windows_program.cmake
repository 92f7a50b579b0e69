# The program for Windows: its own host and stores beside the folders that every host shares.
# The program is one small file: made for size, and what nothing reaches stays out of it.
string(REPLACE "-O2" "-Os" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
target_compile_options(orvello_flags INTERFACE
  $<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
find_path(ORVELLO_WINDOWS_INCLUDE libical/ical.h REQUIRED)
find_library(ORVELLO_SQLITE sqlite3 REQUIRED)
find_library(ORVELLO_ICAL ical REQUIRED)
foreach(part SQLITE ICAL)
  add_library(orvello_windows_${part} INTERFACE)
  target_include_directories(orvello_windows_${part} SYSTEM INTERFACE ${ORVELLO_WINDOWS_INCLUDE})
  target_link_libraries(orvello_windows_${part} INTERFACE ${ORVELLO_${part}})
endforeach()

orvello_library(files orvello_base advapi32)
orvello_library(store/embedded/sqlite orvello_calendar orvello_files orvello_windows_SQLITE)
orvello_library(store/embedded orvello_store orvello_store_embedded_sqlite)
orvello_library(exchange orvello_store orvello_windows_ICAL)
orvello_library(cli orvello_app orvello_exchange orvello_files)
orvello_library(store/pim orvello_store orvello_files ole32 oleaut32 uuid)
orvello_library(store/cedb orvello_ports)
orvello_library(hosts/shared orvello_cli orvello_store_embedded orvello_hosts_headless)
orvello_library(hosts/win32 orvello_app orvello_hosts_headless orvello_hosts_shared user32 gdi32 comctl32 comdlg32
  advapi32 shell32 ole32 oleaut32 uuid oleacc shlwapi msimg32)
# The system has no time-zone database of the kind that calendars are written in.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_program(ORVELLO_ZIC zic PATHS /usr/sbin /sbin REQUIRED)
set(zoneinfo /usr/share/zoneinfo)
set(zones ${CMAKE_BINARY_DIR}/generated/builtin_zones_data.cpp)
add_custom_command(OUTPUT ${zones}
  COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/pack_zones.py ${zoneinfo} ${ORVELLO_ZIC} ${zones}
  DEPENDS ${CMAKE_SOURCE_DIR}/tools/pack_zones.py ${zoneinfo}/tzdata.zi ${zoneinfo}/zone.tab)
target_sources(orvello_hosts_win32 PRIVATE ${zones})
set_source_files_properties(${zones} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON
  SKIP_PRECOMPILE_HEADERS ON)
orvello_library(hosts/win32/program orvello_hosts_win32 orvello_hosts_shared orvello_store_pim
  orvello_store_cedb)
# Two of the platform's libraries have this name: the one that has others, too, comes first.
target_link_options(orvello_hosts_win32 INTERFACE LINKER:-u,IID_IAccessible,-luuid)
# The platform's headers have a TEXT, too, which would be in the way of the file that comes next.
set_target_properties(orvello_hosts_win32 orvello_hosts_win32_program PROPERTIES
  UNITY_BUILD_CODE_AFTER_INCLUDE "#undef TEXT")
if(EXISTS ${CMAKE_SOURCE_DIR}/hosts/win32/program/main.cpp)
  include(packaging/windows/resources.cmake)
  add_executable(orvello WIN32 hosts/win32/program/main.cpp ${windows_parts}/orvello.rc)
  target_link_libraries(orvello PRIVATE orvello_hosts_win32_program)
  target_link_options(orvello PRIVATE $<$<CONFIG:Release>:LINKER:--gc-sections> $<$<CONFIG:Release>:-s>)
endif()
