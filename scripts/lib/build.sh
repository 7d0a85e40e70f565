# The builds, through the presets of CMakePresets.json.

# build_preset PRESET TARGETS [CMAKE OPTION...]: TARGETS is a list in one word. All errors of a build
# are shown, not the first alone.
build_preset() {
  cd "$project"
  cmake --preset "$1" "${@:3}"
  # shellcheck disable=SC2086 # a list of names
  cmake --build --preset "$1" --parallel "$(nproc)" --target $2 -- -k 0
}

project_version() {
  of_build CMAKE_PROJECT_VERSION
}

# of_build NAME: what the build was configured with.
of_build() {
  sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"
}
