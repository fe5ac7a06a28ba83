#!/usr/bin/env bash
# Pictures the virtual devices' window beside the main window on a private virtual display, after
# "Teste de ligação", "Abrir" on the drawer page and "Executar" of the greeting on the display
# page, so that both
# windows' look can be checked on a machine without a desktop.
#   scripts/screenshot-simulador.sh [BUILD_DIR] [OUT_DIR]
# BUILD_DIR defaults to build/dev, OUT_DIR to BUILD_DIR/screenshots; the picture is
# lumbra-simulador.png.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$(cd "${1:-$root/build/dev}" && pwd)
out=${2:-$build/screenshots}
bin="$build/app/lumbra"
sim="$build/simulator/window/lumbra-simulador"
for program in "$bin" "$sim"; do
  [ -x "$program" ] || { echo "screenshot: $program is not built" >&2; exit 1; }
done
for tool in Xvfb xwininfo import xdotool; do
  command -v "$tool" >/dev/null || { echo "screenshot: $tool is missing (scripts/packages-desktop.txt)" >&2; exit 1; }
done
mkdir -p "$out"

work=$(mktemp -d)
pids=()
cleanup() {
  local status=$?
  set +e
  for pid in "${pids[@]}"; do
    kill "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null
  done
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT

. "$root/scripts/private_display.sh"
start_private_display "$work" 1280x800x24
pids+=("$xvfb_pid")
display=$DISPLAY
export DISPLAY=$display QT_QPA_PLATFORM=xcb

# The simulator names its ports on its first line; the main window then opens on them.
"$sim" >"$work/sim.out" 2>"$work/sim.log" &
pids+=($!)
for _ in $(seq 100); do
  [ -s "$work/sim.out" ] && break
  sleep 0.1
done
read -r -a ports <"$work/sim.out" || { echo "screenshot: no ports from the simulator" >&2; exit 1; }
"$bin" -FP "$root/examples/Lumbra.par" "${ports[@]}" >"$work/app.log" 2>&1 &
pids+=($!)

# A window by its title, once mapped.
find_window() {
  local id=
  for _ in $(seq 100); do
    id=$(xwininfo -root -tree 2>/dev/null | awk -v t="$1" 'index($0, t) && /[0-9]+x[0-9]+\+/ { print $1; exit }')
    [ -n "$id" ] && { echo "$id"; return; }
    sleep 0.1
  done
  echo "screenshot: no window \"$1\"" >&2
  exit 1
}
main=$(find_window "para POS")
simwin=$(find_window "Dispositivos virtuais")
xdotool windowmove "$main" 0 0
xdotool windowmove "$simwin" 660 0
sleep 1

# Positions inside the main window's client area, from its layout (menu bar included).
menu=$(xwininfo -id "$main" | awk '/Height:/ { print $2 }')
menu=$((menu - 408))
click() {
  xdotool mousemove --window "$main" "$1" "$(($2 + menu))" click 1
  sleep 0.5
}
xdotool windowfocus --sync "$main"
click 320 211                           # "Teste de ligação", to the printer
xdotool key --clearmodifiers ctrl+Tab   # "Gaveta"
sleep 0.5
click 532 268                           # "Abrir"
xdotool key --clearmodifiers ctrl+Tab   # "Display"
sleep 0.5
click 287 148                           # "Comando": the greeting is its third row
xdotool key Down Down Return
sleep 0.5
click 190 172                           # "Executar"
sleep 1

import -window root -crop 1280x760+0+0 "$out/lumbra-simulador.png"
echo "$out/lumbra-simulador.png"
