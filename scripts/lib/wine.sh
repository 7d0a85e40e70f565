# Wine: where it is, the prefix, and its server.
#
# The prefix is the cache's own, or the one that WINEPREFIX names. Stopping the server ends every
# program in the prefix.

export WINEPREFIX=${WINEPREFIX:-$cache/prefix}
export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
# No .NET, no HTML engine, no menu entries, no debugger window: all that a start can do without.
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml,winemenubuilder.exe,winedbg.exe=}

# wine_tool NAME: Debian's wine64 package alone puts its programs on no PATH.
wine_tool() {
  PATH="/usr/lib/wine:$PATH" command -v "${1}64" || PATH="/usr/lib/wine:$PATH" command -v "$1"
}

# wine PROGRAM [ARGUMENT...]: the programs it leaves running must not hold the run's lock.
wine() {
  "$(wine_tool wine)" "$@" 9>&-
}

# wine_version: such as 8.0; what a distribution adds in brackets is left out.
wine_version() {
  wine --version | sed 's/^wine-//; s/ .*//'
}

wine_server() {
  "$(wine_tool wineserver)" "$@" 9>&-
}

# start_wine: one server for the whole run. A server that is started anew carries out the file renames
# that wait for a reboot, which some tests must see waiting.
start_wine() {
  [ -f "$WINEPREFIX/$prefix_ready" ] || step "Setting up the Wine prefix $WINEPREFIX" make_prefix
  wine_started=yes
  if ! wine_server -p; then
    echo "Waiting for a Windows program that runs in $WINEPREFIX; goes on by itself"
    wine_server -w
    wine_server -p
  fi
  # The system's own processes start with the first program and stay: they must not inherit a pipe,
  # whose reader would wait for them.
  wine cmd /c exit >/dev/null 2>&1 </dev/null
}

stop_wine() {
  [ -z "${wine_started:-}" ] || wine_server -k || true
}

# Everything that runs ends, and Windows starts anew.
restart_wine() {
  wine_server -k
  wine_server -w
  start_wine
}

# Changes with what make_prefix does, so that prefixes made before are made ready too.
prefix_ready=.ready-2

# Windows without a display: windows are made, nothing is drawn. Wine makes the desktop and other folders
# of the user links into the builder's home, where no test must write: they become folders.
make_prefix() {
  mkdir -p "$WINEPREFIX"
  wine wineboot -i
  wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
  wine_server -k
  wine_server -w
  find "$WINEPREFIX/drive_c/users" -type l -lname '/*' -exec rm {} \; -exec mkdir {} \;
  touch "$WINEPREFIX/$prefix_ready"
}
