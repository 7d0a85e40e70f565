# A place where a program may do harm: nothing that it does lasts.

# sandbox FOLDER SECONDS COMMAND...: what the command writes into FOLDER is there for it as long as it
# runs, and thrown away with all its programs afterwards; everything else is read-only. It ends with
# 124 or 137 when it takes longer. FOLDER.scratch is in use meanwhile.
sandbox() {
  local scratch=$1.scratch code=0
  rm -rf "$scratch"
  mkdir -p "$scratch"/{written,work,wine,tmp}
  mkdir -p -m 700 "/tmp/.wine-$(id -u)"
  chmod 700 "$scratch/wine"
  timeout --foreground --kill-after=10 "$2" \
    unshare --mount --pid --fork --kill-child --mount-proc \
    bash -euc "$enter_sandbox" sandbox "$1" "$scratch" "${@:3}" || code=$?
  rm -rf "$scratch"
  return "$code"
}

# Wine keeps its server's socket in a folder of its own, which may not be the one of other prefixes.
# shellcheck disable=SC2016 # for the shell within
enter_sandbox='
  folder=$1 scratch=$2
  shift 2
  mount -t overlay overlay \
    -o "lowerdir=$folder,upperdir=$scratch/written,workdir=$scratch/work" "$folder"
  mount --bind "$scratch/wine" "/tmp/.wine-$(id -u)"
  mount --bind "$scratch/tmp" "$scratch/tmp"
  findmnt --raw --noheadings --output TARGET | while read -r place; do
    place=$(printf %b "$place")
    case $place in
      "$folder" | "$scratch/tmp" | "/tmp/.wine-$(id -u)" | /proc) ;;
      *) mount -o remount,bind,ro "$place" ;;
    esac
  done
  for place in / /tmp /dev "$scratch" "$HOME"; do
    ! touch "$place/.sandbox" 2>/dev/null || { echo "The sandbox leaks: $place"; exit 1; }
  done
  export TMPDIR="$scratch/tmp"
  exec "$@"
'
