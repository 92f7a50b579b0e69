# Cross-compiling for Windows with Debian's MinGW-w64, the variant with the standard library's threads.
# The libraries stand where tools/windows_libraries.sh has built them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
if(DEFINED ENV{ORVELLO_WINDOWS_LIBRARIES})
  list(APPEND CMAKE_FIND_ROOT_PATH $ENV{ORVELLO_WINDOWS_LIBRARIES})
endif()
# Programs that need nothing beside them; the headers of Windows 7, and wide characters.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
add_compile_definitions(UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX
  WIN32_LEAN_AND_MEAN __USE_MINGW_ANSI_STDIO=1)
# Tests, and only they, are run by Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
