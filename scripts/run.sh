#!/usr/bin/env bash
# Builds Lumbra and starts it on the sample configuration. Extra arguments go to the program.
# Without a desktop the window cannot open; the same device actions are then shown through
# lumbractl, the command-line tool, on the sample's file ports.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$root/scripts/setup.sh" "$root/scripts/packages.txt" "$root/scripts/packages-desktop.txt"
bash "$root/scripts/build.sh" dev
bin="$root/build/dev/app/lumbra"
ctl="$root/build/dev/tools/lumbractl"
par="$root/examples/Lumbra.par"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
  if [ ! -x "$bin" ]; then
    echo "Lumbra: the window is not built yet in this version; the libraries and tests are." >&2
    exit 0
  fi
  exec "$bin" -FP "$par" "$@"
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
exit 0
