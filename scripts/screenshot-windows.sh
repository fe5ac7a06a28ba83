#!/usr/bin/env bash
# Pictures the Windows window (lumbra.exe under Wine) on a private virtual display, so that its
# look can be checked on a machine without a desktop.
#   scripts/screenshot-windows.sh [BUILD_DIR] [OUT_DIR] [DPI]
# BUILD_DIR defaults to build/windows, OUT_DIR to build/screenshots, DPI to 96. The window runs on
# the sample configuration in a Wine prefix of its own (BUILD_DIR/wine/screenshot-prefix, every COM
# port pointing at nothing) and is pictured on each of its pages: windows-opcoes.png,
# windows-gaveta.png and windows-display.png (with "-DPI" before ".png" when DPI is not 96).
# Needs Xvfb, xwininfo, xdotool, xwd and netpbm (scripts/packages-windows.txt).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$(cd "${1:-$root/build/windows}" && pwd)
out=${2:-$root/build/screenshots}
dpi=${3:-96}
exe="$build/app/lumbra.exe"
[ -f "$exe" ] || { echo "screenshot-windows: $exe is not built" >&2; exit 1; }
for tool in Xvfb xwininfo xdotool xwd xwdtopnm pnmtopng; do
  command -v "$tool" >/dev/null || { echo "screenshot-windows: $tool is missing" >&2; exit 1; }
done
. "$root/tests/support/wine/wine_env.sh"
mkdir -p "$out"
suffix=
[ "$dpi" = 96 ] || suffix="-$dpi"

work=$(mktemp -d)
export WINEPREFIX="$build/wine/screenshot-prefix" WINEDEBUG=-all
xvfb_pid=
app_pid=
cleanup() {
  local status=$?
  set +e
  [ -n "$app_pid" ] && kill "$app_pid" 2>/dev/null && wait "$app_pid" 2>/dev/null
  # The prefix's server and its helpers go with the display they were started on.
  [ -n "$xvfb_pid" ] && "$WINESERVER" -k >/dev/null 2>&1
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null && wait "$xvfb_pid" 2>/dev/null
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT

. "$root/scripts/private_display.sh"
start_private_display "$work" 1280x1024x24

# The prefix (its COM ports at nothing) with its server started on this display, at the density
# asked for.
bash "$root/tests/support/wine/wine_prefix.sh" "$WINEPREFIX"
printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Control Panel\\Desktop]\r\n"LogPixels"=dword:%08x\r\n' \
  "$dpi" >"$work/dpi.reg"
"$WINE" regedit /S "$(winepath_of "$work/dpi.reg")" >/dev/null 2>&1
"$WINESERVER" -k >/dev/null 2>&1 || true
"$WINESERVER" -w >/dev/null 2>&1 || true

"$WINE" "$exe" -FP "$(winepath_of "$root/examples/Lumbra.par")" >"$work/app.log" 2>&1 &
app_pid=$!
window=
for _ in $(seq 300); do
  window=$(xwininfo -root -tree 2>/dev/null |
    awk '/para POS"/ && /[0-9]+x[0-9]+\+/ { print $1; exit }')
  [ -n "$window" ] && break
  kill -0 "$app_pid" 2>/dev/null || { echo "screenshot-windows: lumbra.exe ended early" >&2; cat "$work/app.log" >&2; exit 1; }
  sleep 0.1
done
[ -n "$window" ] || { echo "screenshot-windows: no window appeared" >&2; exit 1; }
sleep 2

shot() {
  xwd -silent -id "$window" | xwdtopnm 2>/dev/null | pnmtopng >"$out/$1"
  echo "$out/$1"
}

# Wine draws the frame itself: the client area sits at the bottom, inside a frame as wide on
# every side. The first tab is clicked, then the arrow key turns the pages as a technician does.
read -r width height < <(xwininfo -id "$window" | awk '/Width:/ {w=$2} /Height:/ {h=$2} END {print w, h}')
client_w=$(( 9510 * dpi / 1440 ))
client_h=$(( 6120 * dpi / 1440 ))
border=$(( (width - client_w) / 2 ))
tab_x=$(( border + 20 * dpi / 96 ))
tab_y=$(( height - border - client_h + 34 * dpi / 96 ))
xdotool mousemove --window "$window" "$tab_x" "$tab_y" click 1
xdotool mousemove --window "$window" 5 5
sleep 1
shot "windows-opcoes$suffix.png"
xdotool key Right
sleep 1
shot "windows-gaveta$suffix.png"
xdotool key Right
sleep 1
shot "windows-display$suffix.png"
