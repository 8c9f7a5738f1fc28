# Builds for Windows with MinGW-w64 and runs what was built under Wine. CMAKE_FIND_ROOT_PATH names the
# folder where the dependencies, built the same way, are installed.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The variant with POSIX threads: the other one has no std::thread.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Nothing of the machine that builds, but its programs.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Debian keeps the loader of wine64 out of the path.
find_program(KVFOUND_WINE NAMES wine64 wine HINTS /usr/lib/wine)
if(KVFOUND_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${KVFOUND_WINE})
endif()
