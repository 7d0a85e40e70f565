# What the tests need: downloads, and the options of the build that say where they are.

need_for_tests() {
  need_packages "${build_packages[@]}" "${run_packages[@]}" "${jar_packages[@]}" \
    "${test_packages[@]}"
  need_test_downloads
  need_japanese_locale
}

need_test_downloads() {
  need_windows_jvm
  need_shortcut_parser
  need_jar "$junit_artifact" "$junit_sha256"
  need_jar "$jna_artifact" "$jna_sha256"
  need_jar "$jna_platform_artifact" "$jna_platform_sha256"
}

test_options=(
  -DBUILD_TESTING=ON
  "-DCORVANE_WINDOWS_JAVA=$windows_java" "-DCORVANE_LOCPATH=$locale_path"
  "-DCORVANE_PYTHON=/usr/bin/python3" "-DCORVANE_LNKPARSE_DIR=$lnkparse_path"
  "-DCORVANE_JUNIT_JAR=$(jar_path "$junit_artifact")"
  "-DCORVANE_JNA_JAR=$(jar_path "$jna_artifact")"
  "-DCORVANE_JNA_PLATFORM_JAR=$(jar_path "$jna_platform_artifact")"
)
