# Builds WebAssembly with Debian's Emscripten. CMAKE_FIND_ROOT_PATH names the folder where the dependencies,
# built the same way, are installed.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)

# Exceptions of WebAssembly itself: others go through scripts at each call that may throw, make the module a
# sixth larger, and need Emscripten's own script to run.
set(CMAKE_C_FLAGS_INIT -fwasm-exceptions)
set(CMAKE_CXX_FLAGS_INIT -fwasm-exceptions)

# Nothing of the machine that builds, but its programs.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
