#!/usr/bin/env bash
# Points COM ports of a ready Wine prefix at the given devices (a test's pseudo-terminals) and every
# other COM port at nothing, then restarts the prefix's server, which reads the map when it starts:
#   wine_ports.sh PREFIX [COMn=DEVICE]...
set -euo pipefail
export WINEPREFIX=${1:?usage: wine_ports.sh PREFIX [COMn=DEVICE]...}
shift
export WINEDEBUG=-all
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$here/wine_env.sh"
[ -f "$WINEPREFIX/lumbra-ready" ] || bash "$here/wine_prefix.sh" "$WINEPREFIX"

declare -A device
for pair in "$@"; do
  name=${pair%%=*}
  [[ $name =~ ^COM[0-9]+$ ]] || { echo "wine_ports.sh: not a COM port: $pair" >&2; exit 2; }
  device[$name]=${pair#*=}
done
reg=$(mktemp "${TMPDIR:-/tmp}/lumbra-ports-XXXXXX.reg")
trap 'rm -f "$reg"' EXIT
{
  printf 'REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Ports]\r\n'
  for n in $(seq 1 255); do
    printf '"COM%d"="%s"\r\n' "$n" "${device[COM$n]:-$LUMBRA_NO_PORT/COM$n}"
  done
} >"$reg"
"$WINE" regedit /S "$(winepath_of "$reg")" >/dev/null 2>&1
"$WINESERVER" -k >/dev/null 2>&1 || true
"$WINESERVER" -w >/dev/null 2>&1 || true
"$WINESERVER" -p >/dev/null 2>&1 </dev/null &
"$WINE" cmd /c exit >/dev/null 2>&1 </dev/null
