# Toolchain: the MinGW-w64 cross compiler g++.

include(${CMAKE_CURRENT_LIST_DIR}/mingw-tools.cmake)

set(CMAKE_C_COMPILER ${CORVANE_CROSS_GCC})
set(CMAKE_CXX_COMPILER ${CORVANE_CROSS_GXX})
