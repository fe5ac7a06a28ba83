# Where Debian's 64-bit Wine keeps its programs, and what the scripts of this folder share.
WINE=$(command -v wine64 || true)
[ -n "$WINE" ] || WINE=/usr/lib/wine/wine64
WINESERVER=$(command -v wineserver64 || command -v wineserver || true)
[ -n "$WINESERVER" ] || WINESERVER=/usr/lib/wine/wineserver64
LUMBRA_NO_PORT=/nonexistent/lumbra-no-port

# The Windows name of a host path: Wine shows the root of this machine as drive Z.
winepath_of() {
  printf 'Z:%s' "$(realpath -m "$1" | tr / '\\')"
}

# Points COM1..COM255 of $WINEPREFIX at the devices of the COMn=DEVICE arguments and every other
# one at a path that does not exist, then stops the server, which reads the map when it starts.
map_ports() {
  local -A device
  local pair n reg=$WINEPREFIX/lumbra-ports.reg
  for pair in "$@"; do
    [[ ${pair%%=*} =~ ^COM[0-9]+$ ]] || { echo "not a COM port: $pair" >&2; return 2; }
    device[${pair%%=*}]=${pair#*=}
  done
  {
    printf 'REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Ports]\r\n'
    for n in $(seq 1 255); do
      printf '"COM%d"="%s"\r\n' "$n" "${device[COM$n]:-$LUMBRA_NO_PORT/COM$n}"
    done
  } >"$reg"
  "$WINE" regedit /S "$(winepath_of "$reg")" >/dev/null 2>&1
  "$WINESERVER" -k >/dev/null 2>&1 || true
  "$WINESERVER" -w >/dev/null 2>&1 || true
}

# Starts the server persistent, its output away from the caller, so that Wine's helper processes
# never hold ctest's pipes.
start_server() {
  "$WINESERVER" -p >/dev/null 2>&1 </dev/null &
  "$WINE" cmd /c exit >/dev/null 2>&1 </dev/null
}
