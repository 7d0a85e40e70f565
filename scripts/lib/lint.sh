# Formatting, and the second compiler with clang-tidy.

# cpp_files: every C++ file of the project, each name closed by a NUL.
cpp_files() {
  find "$project" -path "$project/build" -prune -o -type f \( -name '*.cpp' -o -name '*.h' \) -print0
}

formatting_is_right() {
  cpp_files | xargs -0 clang-format --dry-run --Werror
}

# clang_build TARGETS [CMAKE OPTION...]: the build tool calls clang-tidy for each file that it
# compiles, so that what did not change, headers included, is not checked again. The configuration
# goes by a name made from its content: a new content is a new command, and all is checked again.
clang_build() {
  local config
  config="$project/build/clang/tidy-$(sha256sum "$project/.clang-tidy" | head -c 16).yaml"
  mkdir -p "$project/build/clang"
  cp "$project/.clang-tidy" "$config"
  build_preset clang "$1" "-DCMAKE_CXX_CLANG_TIDY=clang-tidy;--quiet;--config-file=$config" "${@:2}"
}
