# Where Debian's 64-bit Wine keeps its programs, and the path every unmapped COM port points at.
# Sourced by the other scripts of this folder.
WINE=$(command -v wine64 || true)
[ -n "$WINE" ] || WINE=/usr/lib/wine/wine64
WINESERVER=$(command -v wineserver64 || command -v wineserver || true)
[ -n "$WINESERVER" ] || WINESERVER=/usr/lib/wine/wineserver64
LUMBRA_NO_PORT=/nonexistent/lumbra-no-port

# The Windows name of a host path: Wine shows the root of this machine as drive Z.
winepath_of() {
  printf 'Z:%s' "$(realpath -m "$1" | tr / '\\')"
}
