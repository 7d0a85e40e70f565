# Debian packages: what each script needs, installed when missing.

build_packages=(g++-mingw-w64-x86-64-win32 cmake ninja-build openjdk-17-jdk-headless)
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
  [ "$(id -u)" -eq 0 ] || die "Missing Debian packages; as root: apt-get install $missing"
  # shellcheck disable=SC2086 # a list of names
  step "Installing $missing" install_packages $missing
}

missing_packages() {
  local name missing=()
  for name in "$@"; do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" != installed ]; then
      missing+=("$name")
    fi
  done
  echo "${missing[*]}"
}

install_packages() {
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -q
  apt-get install -q -y --no-install-recommends -o DPkg::Lock::Timeout=600 "$@"
}

warn_of_other_release() {
  local ID='' VERSION_ID=''
  # shellcheck disable=SC1091 # a file of the system
  . /etc/os-release
  if [ "$ID $VERSION_ID" != "debian $debian_release" ]; then
    echo "Made for Debian $debian_release; on this system ($ID $VERSION_ID) versions will differ."
  fi
}
