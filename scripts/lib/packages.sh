# Debian packages: what each script needs, installed when missing. Where names are parted by bars, any of
# them serves, and the first that the release has is installed.

jdk_packages='openjdk-17-jdk-headless|openjdk-21-jdk-headless|openjdk-25-jdk-headless'
build_packages=(g++-mingw-w64-x86-64-win32 cmake ninja-build "$jdk_packages")
run_packages=(wine64 python3-pip)
jar_packages=(maven)
release_packages=(git faketime googletest)
test_packages=(clang lld clang-format clang-tidy googletest locales python3-yaml)

# need_packages NAME...: quick when nothing is missing, and then asks nothing of the network.
need_packages() {
  if ! command -v dpkg-query >/dev/null; then
    echo "Not a Debian system; going on in the hope that these are there: $*"
    return
  fi
  warn_of_other_release
  local missing
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  # shellcheck disable=SC2086 # a list of names
  [ "$(id -u)" -eq 0 ] || die "Missing Debian packages; as root: apt-get install $(offered_packages $missing)"
  # shellcheck disable=SC2086 # a list of names
  step "Installing $missing" install_packages $missing
}

missing_packages() {
  local names missing=()
  for names in "$@"; do
    first_package is_installed "$names" >/dev/null || missing+=("$names")
  done
  echo "${missing[*]}"
}

# first_package CHECK NAME|NAME...: the first of which the check is true.
first_package() {
  local name
  for name in ${2//|/ }; do
    if "$1" "$name"; then
      echo "$name"
      return
    fi
  done
  return 1
}

is_installed() {
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

is_offered() {
  [ -n "$(apt-cache show "$1" 2>/dev/null)" ]
}

# offered_packages NAME|NAME...: of each, the first that the release has.
offered_packages() {
  local names
  for names in "$@"; do
    first_package is_offered "$names" || echo "${names%%|*}"
  done | paste -sd ' '
}

install_packages() {
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
  # shellcheck disable=SC2046 # a list of names
  apt-get install -q -y --no-install-recommends -o DPkg::Lock::Timeout=600 $(offered_packages "$@")
}

warn_of_other_release() {
  local ID='' VERSION_ID=''
  # shellcheck disable=SC1091 # a file of the system
  . /etc/os-release
  case "$ID $VERSION_ID" in
    "debian 12" | "debian 13") ;;
    *) echo "Made for Debian 12 and 13; on this system ($ID $VERSION_ID) versions will differ." ;;
  esac
}
