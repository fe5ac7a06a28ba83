#!/usr/bin/env bash
# Runs one Windows test program under Wine, in the prefix that WINEPREFIX names (made and started
# by wine_prefix.sh when it is not ready yet). ctest puts this in front of every Windows test.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine_env.sh"
: "${WINEPREFIX:?the Windows tests run in a prefix of their own: set WINEPREFIX}"
export WINEDEBUG=${WINEDEBUG:--all}
[ -f "$WINEPREFIX/lumbra-ready" ] || bash "$here/wine_prefix.sh" "$WINEPREFIX"
exec "$WINE" "$@"
