# Builds for 64-bit Windows with MinGW-w64 (POSIX threads) and runs what it built under Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)  # the test framework asks for one
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# libgcc, libstdc++ and winpthread go into every program, which then needs no DLL of the tool chain.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)

# Wine works without a display, in a prefix of its own, and asks for no further components. Its
# debugger stays off: a program that crashed under the debugger ends with status 0, as if it had
# passed. Debian keeps the 64-bit loader out of the PATH.
find_program(WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR env -u DISPLAY WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEDEBUG=-all
      WINEDLLOVERRIDES=mscoree,mshtml,winemenubuilder.exe,winedbg.exe= ${WINE})
endif()
