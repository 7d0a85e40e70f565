# The Windows JVM under Wine.

# run_java ARGUMENT...: in the build folder, so that a class path is the names of jars.
run_java() {
  run_java_in "$build" "$@"
}

# run_java_in FOLDER ARGUMENT...: through a pipe, because on a terminal Wine paints a console window, and in
# UTF-8.
run_java_in() {
  (cd "$1" &&
    "$project/scripts/wine" "$windows_java" -XX:+UseSerialGC -XX:-UsePerfData -Xmx512m \
      -Dfile.encoding=UTF-8 -Dsun.stdout.encoding=UTF-8 -Dsun.stderr.encoding=UTF-8 \
      "${@:2}" </dev/null 2>&1 | cat)
}
