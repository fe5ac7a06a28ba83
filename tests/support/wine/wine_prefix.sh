#!/usr/bin/env bash
# Makes the Wine prefix a test run uses (once; later calls find it ready) and starts its server.
#
# Wine points COM1, COM2... at this machine's own serial devices unless its registry says
# otherwise, so before any program of ours runs, COM1 to COM255 of the prefix are pointed at a path
# that does not exist; a test that needs a port maps it to its own pseudo-terminal (wine_ports.sh).
# Wine 8 reads the map up to COM255 only and gives this machine's first serial device the number
# 256 whatever the registry says: no test names COM256, and no program of ours opens a port it was
# not told to (the port listing opens none).
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
  # Nothing of Wine may inherit the lock, or it would hold it for good.
  "$WINE" wineboot -i >/dev/null 2>&1 9>&-
  map_ports 9>&-
  touch "$WINEPREFIX/lumbra-ready"
fi
exec 9>&-
start_server
