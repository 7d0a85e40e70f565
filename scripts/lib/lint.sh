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

# check_sources: the rules that a reader of the sources can rely on.
check_sources() {
  check "Sources: a room knows only those below it" source_rule arrows
  check "Sources: everything is in the library's namespace" source_rule namespace
  check "Sources: Javadoc and reference name the same codes" source_rule codes
  check "Sources: every native is found by its class and method" source_rule natives
  check "Sources: the page on installers shows the program that is run" source_rule installer
}

source_rule() {
  /usr/bin/python3 "$project/scripts/lib/source_checks.py" "$1"
}
