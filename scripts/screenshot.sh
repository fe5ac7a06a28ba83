#!/usr/bin/env bash
# Pictures the main window on a private virtual display, so that its look can be checked on a
# machine without a desktop.
#   scripts/screenshot.sh [BUILD_DIR] [OUT_DIR]
# BUILD_DIR defaults to build/dev, OUT_DIR to BUILD_DIR/screenshots. The window runs on the sample
# configuration and is pictured on each of its pages: lumbra-opcoes.png (as it opens, first page
# current), lumbra-gaveta.png and lumbra-display.png.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$(cd "${1:-$root/build/dev}" && pwd)
out=${2:-$build/screenshots}
bin="$build/app/lumbra"
if [ ! -x "$bin" ]; then
  echo "screenshot: $bin is not built" >&2
  exit 1
fi
for tool in Xvfb xwininfo import compare xdotool; do
  command -v "$tool" >/dev/null || { echo "screenshot: $tool is missing (scripts/packages-desktop.txt)" >&2; exit 1; }
done
mkdir -p "$out"

work=$(mktemp -d)
xvfb_pid=
app_pid=
cleanup() {
  local status=$?
  set +e
  for pid in $app_pid $xvfb_pid; do
    kill "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
  done
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT

. "$root/scripts/private_display.sh"
start_private_display "$work" 1024x768x24
display=$DISPLAY

args=()
[ -f "$root/examples/Lumbra.par" ] && args=(-FP "$root/examples/Lumbra.par")
DISPLAY=$display QT_QPA_PLATFORM=xcb "$bin" "${args[@]}" >"$work/app.log" 2>&1 &
app_pid=$!

# The window is found by its title; give it a moment after mapping to paint.
window=
for _ in $(seq 100); do
  window=$(xwininfo -display "$display" -root -tree 2>/dev/null |
    awk '/para POS/ && /[0-9]+x[0-9]+\+/ { print $1; exit }')
  [ -n "$window" ] && break
  kill -0 "$app_pid" 2>/dev/null || { echo "screenshot: lumbra ended early" >&2; cat "$work/app.log" >&2; exit 1; }
  sleep 0.1
done
[ -n "$window" ] || { echo "screenshot: no window appeared" >&2; cat "$work/app.log" >&2; exit 1; }
sleep 1

shot() {
  import -display "$display" -window "$window" "$out/$1"
  echo "$out/$1"
}

# The next page, as a technician reaches it from the keyboard (Ctrl+Tab). A picture equal to the
# previous one means the key went nowhere: better no picture than a wrong one.
next_page() {
  DISPLAY=$display xdotool key --clearmodifiers ctrl+Tab
  sleep 0.5
  shot "$2" >/dev/null
  local differ
  differ=$(compare -metric AE "$out/$1" "$out/$2" null: 2>&1 || true)
  if [ "$differ" = "0" ]; then
    echo "screenshot: Ctrl+Tab did not change the page for $2" >&2
    rm -f "$out/$2"
    exit 1
  fi
  echo "$out/$2"
}

# Without a window manager nothing gives the window the keyboard; its focus then lands on the tab
# control, which turns the pages on Ctrl+Tab.
DISPLAY=$display xdotool windowfocus --sync "$window"
sleep 0.5
shot lumbra-opcoes.png
next_page lumbra-opcoes.png lumbra-gaveta.png
next_page lumbra-gaveta.png lumbra-display.png
