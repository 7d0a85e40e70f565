#!/bin/bash
# Tries one mutant, in the sandbox: try_mutant.sh LIST ID FIRST build|test. Without an ID it tries the
# code as it is. Its exit code says how that ended.
. "$(dirname "$0")/common.sh"

survived=20 found=21 not_built=22 built=23

# run_first NAME|...: classes begin with a capital, files of scenes do not.
run_first() {
  local classes scenes
  classes=$(tr '|' '\n' <<<"$1" | sed -n '/^[A-Z]/p' | paste -sd '|')
  scenes=$(tr '|' '\n' <<<"$1" | sed -n '/^[a-z]/p' | paste -sd '|')
  [ -z "$scenes" ] || classes="${classes:+$classes|}ScenesTest"
  scripts/java "-Dcorvane.test.scene=($scenes)" @java-tests.args --exclude-tag=cp932 \
    "--include-classname=.*\\.($classes)"
}

cd "$project"
[ -z "$2" ] || /usr/bin/python3 scripts/lib/mutants.py "$1" apply "$2" || exit "$not_built"
if [ "$4" = build ]; then
  cmake --build --preset mingw --target corvane_objects || exit "$not_built"
  exit "$built"
fi
cmake --build --preset mingw || exit "$not_built"
start_wine
[ "$3" = . ] || run_first "$3" || exit "$found"
ctest --preset mingw --stop-on-failure || exit "$found"
exit "$survived"
