# The Windows JVM under Wine.

# run_java ARGUMENT...: in the build folder, so that a class path is the names of jars.
run_java() {
  run_java_in "$build" "$@"
}

# run_java_in FOLDER ARGUMENT...: through a pipe, because on a terminal Wine paints a console window, and in
# UTF-8. Without IPv6: this JVM seeds its random numbers with the network's adapters too, and Wine 10 fails to
# list those when asked for both families.
run_java_in() {
  (cd "$1" &&
    "$project/scripts/wine" "$windows_java" -XX:+UseSerialGC -XX:-UsePerfData -Xmx512m \
      -Djava.net.preferIPv4Stack=true -Dfile.encoding=UTF-8 -Dsun.stdout.encoding=UTF-8 \
      -Dsun.stderr.encoding=UTF-8 "${@:2}" </dev/null 2>&1 | cat)
}
