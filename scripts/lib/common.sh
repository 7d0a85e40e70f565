# What every script here begins with: where things are, progress told in lines, one run at a time.
# Sources all of its neighbours.

set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build="$project/build/mingw"

# Downloads and the Wine prefix outlive the build folder.
HOME=${HOME:-$(cd ~ && pwd)}
cache=${CORVANE_CACHE:-$HOME/.cache/corvane-win32}
mkdir -p "$cache"
cache=$(cd "$cache" && pwd)

for part in versions packages downloads locale wine java build tests lint report library_checks \
  release check sandbox; do
  # shellcheck source=/dev/null
  . "$project/scripts/lib/$part.sh"
done
unset part

# usage [ARGUMENTS]: how the script is called; ends it.
usage() {
  die "Usage: scripts/$(basename "$0") ${1:-(without arguments)}"
}

no_arguments() {
  [ $# -eq 0 ] || usage
}

# start_run "$@": for scripts without arguments that set up and build. All tools speak one language,
# and two runs in one cache wait for each other: the end of a run stops every Windows program of the
# prefix.
start_run() {
  no_arguments "$@"
  export LC_ALL=C.UTF-8
  step_log=$(mktemp)
  trap end_run EXIT
  exec 9>"$cache/lock"
  flock --nonblock 9 || {
    echo "Waiting for another run that uses $cache; goes on by itself"
    flock 9
  }
}

end_run() {
  stop_wine
  rm -f "$step_log"
}

# step TEXT COMMAND...: a line of progress; when the command fails, its output, and the script ends.
step() {
  progress "$@"
  [ "$status" -eq 0 ] || exit 1
}

# progress TEXT COMMAND...: the same, but leaves the exit code in $status. A function given as the
# command stops at its first failing line, unless progress is itself called in a condition (if, &&,
# ||), where the shell switches that off.
progress() {
  local began=$SECONDS
  printf '%s ... ' "$1"
  set +e
  (set -e; "${@:2}") >"$step_log" 2>&1 </dev/null
  status=$?
  set -e
  if [ "$status" -eq 0 ]; then
    printf '%d s\n' $((SECONDS - began))
  else
    printf 'FAILED after %d s\n' $((SECONDS - began))
    cat "$step_log"
  fi
}

die() {
  echo "$*" >&2
  exit 1
}
