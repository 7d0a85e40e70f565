# What both cross builds share: the target, its libraries, the tools beside the compiler, and Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CORVANE_TRIPLE x86_64-w64-mingw32)

# Debian names its thread variants; the library starts no threads, so the one without a pthread
# library comes first. Elsewhere the compiler has the plain name.
find_program(
  CORVANE_CROSS_GXX
  NAMES ${CORVANE_TRIPLE}-g++-win32 ${CORVANE_TRIPLE}-g++
  REQUIRED)
find_program(
  CORVANE_CROSS_GCC
  NAMES ${CORVANE_TRIPLE}-gcc-win32 ${CORVANE_TRIPLE}-gcc
  REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${CORVANE_TRIPLE}-windres REQUIRED)
find_program(CMAKE_OBJCOPY NAMES ${CORVANE_TRIPLE}-objcopy REQUIRED)
find_program(CMAKE_OBJDUMP NAMES ${CORVANE_TRIPLE}-objdump REQUIRED)
find_program(CMAKE_STRIP NAMES ${CORVANE_TRIPLE}-strip REQUIRED)

# Libraries and headers are the target's; programs (the JDK, Wine, Python) are this machine's.
set(CMAKE_FIND_ROOT_PATH /usr/${CORVANE_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The same sources give the same bytes: no time of the build in the DLL's header.
set(CMAKE_SHARED_LINKER_FLAGS_INIT -Wl,--no-insert-timestamp)
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,--no-insert-timestamp)

# Through the script, so that a test run by hand has the same Wine prefix as one run by a script.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH corvane_project)
set(CMAKE_CROSSCOMPILING_EMULATOR ${corvane_project}/scripts/wine)
