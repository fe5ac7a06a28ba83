#!/usr/bin/env bash
# Points COM ports of a Wine prefix at the given devices (a test's pseudo-terminals) and every
# other COM port at nothing, then restarts the prefix's server:
#   wine_ports.sh PREFIX [COMn=DEVICE]...
set -euo pipefail
export WINEPREFIX=${1:?usage: wine_ports.sh PREFIX [COMn=DEVICE]...}
shift
export WINEDEBUG=-all
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine_env.sh"
[ -f "$WINEPREFIX/lumbra-ready" ] || bash "$here/wine_prefix.sh" "$WINEPREFIX"
map_ports "$@"
start_server
