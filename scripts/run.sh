#!/usr/bin/env bash
# Builds Lumbra and starts it on the sample configuration, with the virtual devices' window beside
# it. Extra arguments go to the program. Without a desktop the window cannot open; the same device
# actions are then shown through lumbractl, the command-line tool, on the sample's file ports and
# on the virtual devices.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$root/scripts/setup.sh" "$root/scripts/packages.txt" "$root/scripts/packages-desktop.txt"
bash "$root/scripts/build.sh" dev
bin="$root/build/dev/app/lumbra"
ctl="$root/build/dev/tools/lumbractl"
par="$root/examples/Lumbra.par"

sim="$root/build/dev/simulator/window/lumbra-simulador"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  if [ ! -x "$bin" ]; then
    echo "Lumbra: the window is not built yet in this version; the libraries and tests are." >&2
    exit 0
  fi
  if [ ! -x "$sim" ]; then
    exec "$bin" -FP "$par" "$@"
  fi
  # The virtual devices start beside the window, and the sample's serial rows (COM1 the printer
  # and its drawer, COM2 the display) go to them: every button shows its effect without hardware.
  # They close with the window.
  ports_file=$(mktemp)
  # Placed right of the main window, which is 634 pixels wide; a window manager may still move it.
  "$sim" -qwindowgeometry 600x720+660+0 >"$ports_file" &
  sim_pid=$!
  trap 'kill "$sim_pid" 2>/dev/null; rm -f "$ports_file"' EXIT
  for _ in $(seq 100); do
    [ -s "$ports_file" ] && break
    sleep 0.1
  done
  read -r -a ports <"$ports_file" || ports=()
  echo "Lumbra: virtual devices on ${ports[*]:-(none)}"
  "$bin" -FP "$par" "${ports[@]}" "$@"
  exit 0
fi

echo "Lumbra: the window needs a desktop (no DISPLAY nor WAYLAND_DISPLAY is set); showing the same actions with lumbractl instead."
if [ ! -x "$ctl" ]; then
  echo "Lumbra: lumbractl is not built yet in this version; the libraries and tests are." >&2
  exit 0
fi

# Prints a file's path and its bytes in hexadecimal (its text is Windows-1252, with CR LF).
show_file() {
  echo "  $1 now holds (hexadecimal):"
  od -An -tx1 -v "$1" | sed 's/^/    /'
}

echo
echo "\$ lumbractl -FP examples/Lumbra.par listar"
"$ctl" -FP "$par" listar
port="Ficheiro de teste"
out=$("$ctl" -FP "$par" listar | awk -F '\t' -v p="$port" '$1 == "LIG" && $3 == p { print $5 }')

echo
echo "\$ lumbractl -FP examples/Lumbra.par teste --porta \"$port\" --bytes"
"$ctl" -FP "$par" teste --porta "$port" --bytes
show_file "$out"

echo
echo "\$ lumbractl -FP examples/Lumbra.par abrir --porta \"$port\" --bytes"
"$ctl" -FP "$par" abrir --porta "$port" --bytes
show_file "$out"

# The same drawer command, and a display command, to the virtual devices: what they did.
echo
echo "\$ lumbractl simular --json &"
events=$(mktemp)
"$ctl" simular --json >"$events" &
sim_pid=$!
trap 'kill "$sim_pid" 2>/dev/null; rm -f "$events"' EXIT
for _ in $(seq 100); do
  [ -s "$events" ] && break
  sleep 0.1
done
head -n1 "$events"
read -r -a ports < <(sed -n '1s/.*"options":"\([^"]*\)".*/\1/p' "$events")
echo "\$ lumbractl -FP examples/Lumbra.par ${ports[*]} abrir"
"$ctl" -FP "$par" "${ports[@]}" abrir
echo "\$ lumbractl -FP examples/Lumbra.par ${ports[*]} executar --comando Saudação"
"$ctl" -FP "$par" "${ports[@]}" executar --comando "Saudação"
sleep 0.5
kill -INT "$sim_pid"
wait "$sim_pid" || true
echo "  the virtual devices did:"
tail -n +2 "$events" | sed 's/^/    /'
exit 0
