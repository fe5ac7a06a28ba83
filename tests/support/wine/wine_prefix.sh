#!/usr/bin/env bash
# Makes the Wine prefix a test run uses (once; later calls find it ready) and starts its server.
#
# Wine points COM1, COM2... at this machine's own serial devices unless its registry says
# otherwise, so before any program of ours runs, COM1 to COM255 of the prefix are pointed at a path
# that does not exist; a test that needs a port maps it to its own pseudo-terminal (wine_ports.sh).
# Wine 8 reads the map up to COM255 only and gives this machine's first serial device the number
# 256 whatever the registry says: no test names COM256, and no program of ours opens a port it was
# not told to (the port listing opens none).
# The server is started persistent, with its output away from the caller, so that Wine's helper
# processes never hold ctest's pipes.
set -euo pipefail
export WINEPREFIX=${1:?usage: wine_prefix.sh PREFIX}
export WINEDEBUG=-all
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine_env.sh"

mkdir -p "$(dirname "$WINEPREFIX")"
exec 9>"$WINEPREFIX.lock"
flock 9
if [ ! -f "$WINEPREFIX/lumbra-ready" ]; then
  rm -rf "$WINEPREFIX"
  "$WINE" wineboot -i >/dev/null 2>&1 9>&-
  reg=$WINEPREFIX/lumbra-ports.reg
  {
    printf 'REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Ports]\r\n'
    for n in $(seq 1 255); do printf '"COM%d"="%s"\r\n' "$n" "$LUMBRA_NO_PORT/COM$n"; done
  } >"$reg"
  "$WINE" regedit /S "$(winepath_of "$reg")" >/dev/null 2>&1 9>&-
  # The server reads the port map when it starts.
  "$WINESERVER" -k >/dev/null 2>&1 || true
  "$WINESERVER" -w >/dev/null 2>&1 || true
  touch "$WINEPREFIX/lumbra-ready"
fi
# The persistent server must not inherit the lock, or it would hold it for good.
exec 9>&-
"$WINESERVER" -p >/dev/null 2>&1 </dev/null &
"$WINE" cmd /c exit >/dev/null 2>&1 </dev/null
