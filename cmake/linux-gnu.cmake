# Builds with Debian's cross compiler for another processor and runs what was built under QEMU, or as it
# is where the machine can. KVFOUND_ARCHITECTURE names the processor: aarch64, s390x, i686.
# CMAKE_FIND_ROOT_PATH names the folder where the dependencies, built the same way, are installed.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${KVFOUND_ARCHITECTURE})
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KVFOUND_ARCHITECTURE)

set(triplet ${KVFOUND_ARCHITECTURE}-linux-gnu)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)

# Nothing of the machine that builds, but its programs.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

if(NOT KVFOUND_ARCHITECTURE STREQUAL "i686")
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${KVFOUND_ARCHITECTURE} -L /usr/${triplet})
endif()
