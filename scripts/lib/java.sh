# The Windows JVM under Wine.

# run_java ARGUMENT...: in the build folder, so that a class path is the names of jars. Through a
# pipe, because on a terminal Wine paints a console window, and in UTF-8.
run_java() {
  (cd "$build" &&
    "$project/scripts/wine" "$windows_java" -XX:+UseSerialGC -XX:-UsePerfData -Xmx512m \
      -Dfile.encoding=UTF-8 -Dsun.stdout.encoding=UTF-8 -Dsun.stderr.encoding=UTF-8 \
      "$@" </dev/null 2>&1 | cat)
}
