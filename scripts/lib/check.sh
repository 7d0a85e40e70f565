# The check for real Windows, played under Wine by Wine's own command interpreter.

check_folder() {
  echo "$project/build/corvane-win32-check-$(project_version)"
}

check_targets=(test_classes corvane_check corvane_demo corvane_test_support corvane_talkative_child
  corvane_service_program)

# For a Windows of somebody's own: the tests and the demonstration, and the program that runs both there.
make_check_archive() {
  local folder lib name classes="$project/build/demo-classes"
  folder=$(check_folder)
  lib="$folder/lib"
  rm -rf "$folder" "$folder.zip" "$classes"
  mkdir -p "$lib" "$classes"
  cp "$project"/check/{check.cmd,README.txt,touches.txt} "$folder"
  cp -r "$project/tests/scenes" "$folder"
  cp "$build/corvane-win32.jar" "$library" "$cleaner" "$lib"
  for name in test_support.dll {talkative_child,service_program,demo_service_1,demo_service_2}.exe; do
    x86_64-w64-mingw32-strip -o "$lib/corvane_$name" "$build/corvane_$name"
  done
  cp "$(jar_path "$junit_artifact")" "$(jar_path "$jna_artifact")" "$(jar_path "$jna_platform_artifact")" "$lib"
  pack "$lib/corvane-tests.jar" -C "$build/tests/java/classes" .
  pack "$lib/corvane-check.jar" -C "$build/check/classes" . -C "$build/check/start" .
  # The build tool's own jar has the time of the build in it.
  (cd "$classes" && cmake -E tar xf "$build/corvane-demo.jar" && rm -r META-INF)
  pack "$lib/corvane-demo.jar" --manifest "$project/demo/manifest.txt" -C "$classes" .
  pack "$folder.zip" --no-manifest -C "$project/build" "$(basename "$folder")"
}

# play_check TEXT FOLDER SKIPPED [before | after]: in a folder where nothing of the build is, with a blank in its
# path; SKIPPED is how many are, as an expression.
play_check() {
  step "$1" check_cmd "$2/a check" "${@:3}"
  tail -n 1 "$step_log"
}

check_cmd() {
  if [ ! -d "$1" ]; then
    rm -rf "$WINEPREFIX/drive_c/ProgramData/corvane-check" # of a run that was broken off
    mkdir "$1"
    (cd "$1" && cmake -E tar xf "$(check_folder).zip")
  fi
  cd "$1/$(basename "$(check_folder)")"
  JAVA_HOME="Z:${windows_java%/bin/java.exe}" "$project/scripts/wine" cmd /c check.cmd /y "${@:3}" 2>&1 | cat
  tail -n 1 check.log | grep -Ex "[0-9]+ passed, 0 failed, $2 skipped"$'\r'
}
