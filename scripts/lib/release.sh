# The release, made from the sources alone: the same sources give the same bytes on one system, wherever and
# whenever it is made.

release_folder() {
  echo "$project/build/corvane-win32-$(project_version)"
}

maven_repository="$project/build/repository"

# artifact_path: where its artifacts are in the Maven repository; what is missing is their endings.
artifact_path() {
  echo "$maven_repository/com/corvane/corvane-win32/$(project_version)/corvane-win32-$(project_version)"
}

# set_release_time: all that is made carries the time of the commit; in an unpacked archive of the sources a
# file says it.
set_release_time() {
  SOURCE_DATE_EPOCH=$(source_date)
  export SOURCE_DATE_EPOCH
  release_time=$(date --utc --date "@$SOURCE_DATE_EPOCH" +%Y-%m-%dT%H:%M:%SZ)
}

source_date() {
  if [ -n "${SOURCE_DATE_EPOCH:-}" ]; then
    echo "$SOURCE_DATE_EPOCH"
  elif [ -f "$project/.source-date" ]; then
    cat "$project/.source-date"
  else
    project_git log -1 --format=%ct
  fi
}

# Also where the checkout belongs to another user, as on a CI machine.
project_git() {
  git -c "safe.directory=$project" -C "$project" "$@"
}

build_release() {
  build_preset mingw "corvane_win32 corvane_cleaner corvane_jar ${check_targets[*]}" \
    "-DCORVANE_TIMESTAMP=$release_time" "${test_options[@]}" -DCORVANE_DEMO=ON
}

# pack_release: what was built, and the sources, in all the forms that they are handed out in.
pack_release() {
  make_javadoc
  make_repository
  make_archive
  make_check_archive
  (cd "$project/build" && find repository "$(basename "$(release_folder)").zip" \
    "$(basename "$(check_folder)").zip" -type f ! -name '*.md5' ! -name '*.sha*' -print0 | sort -z | xargs -0 sha256sum) >"$project/build/SHA256SUMS"
}

make_javadoc() {
  rm -rf "$project/build/javadoc"
  find "$project/java" -name '*.java' | sort | sed 's/.*/"&"/' >"$project/build/javadoc.args"
  "$(of_build Java_JAVADOC_EXECUTABLE)" --release 9 -Xdoclint:all -Werror -quiet -notimestamp \
    -encoding UTF-8 -windowtitle "corvane-win32 $(project_version)" -d "$project/build/javadoc" \
    "@$project/build/javadoc.args"
}

# pack FILE JAR-OPTION...: a jar or a zip, its entries sorted and with the release's time.
pack() {
  "$(of_build Java_JAR_EXECUTABLE)" --create --file "$1" --date "$release_time" "${@:2}"
}

# What a public Maven repository asks for but the signatures, and beside it the symbols and the whole project,
# from which a release is built again. The sources of the DLL are in the latter: tools that read a jar of
# sources take all of it for Java.
make_repository() {
  local artifact
  artifact=$(artifact_path)
  rm -rf "$maven_repository"
  mkdir -p "${artifact%/*}"
  cp "$build/corvane-win32.jar" "$artifact.jar"
  sed "s/@VERSION@/$(project_version)/" "$project/package/pom.xml" >"$artifact.pom"
  pack "$artifact-sources.jar" -C "$project/java" com -C "$project/java" module-info.java
  pack "$artifact-javadoc.jar" -C "$project/build/javadoc" .
  pack "$artifact-symbols.zip" --no-manifest -C "$build" corvane_win32.debug -C "$build" corvane_cleaner.debug
  PYTHONPATH="$sbom_path" PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 "$project/scripts/lib/sbom.py" \
    "$artifact.pom" "$artifact.jar" "$build" >"$artifact-cyclonedx.json"
  archive_sources "$artifact-source-release.tar.gz"
  write_sums "${artifact%/*}"
}

# archive_sources FILE
archive_sources() {
  local name stage="$project/build/sources"
  name=$(basename "$(release_folder)")
  rm -rf "$stage"
  mkdir -p "$stage/$name"
  project_files | (cd "$project" && xargs -0 cp --parents -t "$stage/$name")
  echo "$SOURCE_DATE_EPOCH" >"$stage/$name/.source-date"
  tar --create --directory "$stage" --sort=name --mtime="@$SOURCE_DATE_EPOCH" --mode=u=rwX,go=rX \
    --owner=0 --group=0 --numeric-owner --format=ustar "$name" | gzip --no-name --best >"$1"
}

# project_files: each name closed by a NUL.
project_files() {
  if [ -e "$project/.git" ]; then
    project_git ls-files -z --cached --others --exclude-standard
  else
    (cd "$project" && find . -path ./build -prune -o -type f -print0)
  fi
}

# write_sums FOLDER: those by which Maven and public repositories check a file, each in a file of its own.
write_sums() {
  local file kind
  for file in "$1"/*; do
    for kind in md5 sha1 sha256 sha512; do
      "${kind}sum" "$file" | sed 's/ .*//' | tr -d '\n' >"$file.$kind"
    done
  done
}

# For those who have no Maven: the jar, its parts, and all that there is to read.
make_archive() {
  local folder
  folder=$(release_folder)
  rm -rf "$folder" "$folder.zip"
  mkdir -p "$folder"
  cp "$build/corvane-win32.jar" "$library" "$cleaner" "${library%.*}.debug" "${cleaner%.*}.debug" "$folder"
  cp "$(artifact_path)-cyclonedx.json" "$folder/corvane-win32-cyclonedx.json"
  cp "$(artifact_path)"-{sources.jar,source-release.tar.gz} "$folder"
  cp -r "$project"/{README,CHANGELOG,CONTRIBUTING}.md "$project/docs" "$project/build/javadoc" "$folder"
  (cd "$folder" && find . -type f ! -name SHA256SUMS -printf '%P\0' | sort -z |
    xargs -0 sha256sum >SHA256SUMS)
  pack "$folder.zip" --no-manifest -C "$project/build" "$(basename "$folder")"
}

# build_again FOLDER: the release from its own archive of the sources, in a folder of another name, in
# another time zone, and 400 days later for every program that asks.
build_again() {
  tar -xzf "$(artifact_path)-source-release.tar.gz" -C "$1"
  (
    umask 027
    env -u SOURCE_DATE_EPOCH TZ=Asia/Tokyo faketime --exclude-monotonic -f +400d \
      bash "$1/$(basename "$(release_folder)")/scripts/lib/make_release.sh"
  )
}

# same_release FOLDER: names every file that differs.
same_release() {
  local again name same=0
  name=$(basename "$(release_folder)")
  again="$1/$name/build"
  diff -r --brief "$(release_folder)" "$again/$name" || same=1
  diff -r --brief "$maven_repository" "$again/repository" || same=1
  diff -r --brief "$(check_folder)" "$again/$(basename "$(check_folder)")" || same=1
  (cd "$again" && sha256sum --check --quiet "$project/build/SHA256SUMS") || same=1
  return "$same"
}

# build_sample FOLDER: a project outside of this one, which takes the library from the repository by its
# coordinates. Maven keeps what it once took: an earlier build of the same version has to go.
build_sample() {
  cp -r "$project/package/sample/." "$1"
  rm -rf "$cache/maven/com/corvane"
  (cd "$1" && mvn --batch-mode --strict-checksums --no-transfer-progress \
    "-Dmaven.repo.local=$cache/maven" "-Dcorvane.version=$(project_version)" \
    "-Dcorvane.repository=file://$maven_repository" package)
}

# sample_says FOLDER PLACE JAVA-ARGUMENT...: that it ran, where it found the library, and nothing else.
sample_says() {
  diff <(printf '%s\n' "C:\\Sample by $2" '-100002 2') <(run_java_in "$1/target" "${@:3}" | tr -d '\r')
}

# names_version: what tells a version tells that of the build.
names_version() {
  grep -F "## [$(project_version)]" "$project/CHANGELOG.md"
  grep -F "com.corvane:corvane-win32:$(project_version)" "$project/README.md"
  grep -F "<version>$(project_version)</version>" "$project/README.md"
  grep -F "<corvane.version>$(project_version)</corvane.version>" "$project/package/sample/pom.xml"
}
