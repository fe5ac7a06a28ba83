#!/usr/bin/env bash
# Builds Lumbra and starts it on the sample configuration. Extra arguments go to the program.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$root/scripts/setup.sh" "$root/scripts/packages.txt" "$root/scripts/packages-desktop.txt"
bash "$root/scripts/build.sh" dev
bin="$root/build/dev/app/lumbra"
if [ ! -x "$bin" ]; then
  echo "Lumbra: the window is not built yet in this version; the libraries and tests are." >&2
  exit 0
fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "Lumbra: the window needs a desktop (no DISPLAY nor WAYLAND_DISPLAY is set)." >&2
  exit 1
fi
exec "$bin" -FP "$root/examples/Lumbra.par" "$@"
