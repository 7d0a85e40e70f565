# Toolchain: clang, with the headers and libraries of the MinGW-w64 cross compiler.

include(${CMAKE_CURRENT_LIST_DIR}/mingw-tools.cmake)

find_program(CMAKE_C_COMPILER NAMES clang REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES clang++ REQUIRED)
set(CMAKE_C_COMPILER_TARGET ${CORVANE_TRIPLE})
set(CMAKE_CXX_COMPILER_TARGET ${CORVANE_TRIPLE})

# The folder of the cross compiler's own libraries carries its version and thread variant, which
# clang does not guess; the compiler itself knows.
execute_process(
  COMMAND ${CORVANE_CROSS_GXX} -print-libgcc-file-name
  OUTPUT_VARIABLE libgcc
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET libgcc PARENT_PATH gcc_folder)

set(CMAKE_CXX_FLAGS_INIT
    "-stdlib++-isystem ${gcc_folder}/include/c++ -isystem ${gcc_folder}/include/c++/${CORVANE_TRIPLE}")
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT
      "${CMAKE_${kind}_LINKER_FLAGS_INIT} -fuse-ld=lld -B${gcc_folder} -L${gcc_folder}")
endforeach()
