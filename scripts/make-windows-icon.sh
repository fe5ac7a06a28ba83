#!/usr/bin/env bash
# Makes packaging/windows/lumbra.ico from packaging/icons/lumbra.svg at the sizes Windows asks for
# (16, 32, 48 and 256 pixels). The .ico is kept with the sources, so the build needs neither tool;
# run this after changing the drawing. Needs rsvg-convert (librsvg2-bin) and icotool (icoutils).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
for tool in rsvg-convert icotool; do
  command -v "$tool" >/dev/null || { echo "make-windows-icon: $tool is missing (librsvg2-bin, icoutils)" >&2; exit 1; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
pngs=()
for size in 16 32 48 256; do
  rsvg-convert -w "$size" -h "$size" -o "$work/$size.png" "$root/packaging/icons/lumbra.svg"
  pngs+=("$work/$size.png")
done
# The largest picture stays PNG inside the icon, as Windows Vista and later read it; the small ones
# are bitmaps, which every Windows reads.
icotool -c -o "$root/packaging/windows/lumbra.ico" "${pngs[@]:0:3}" -r "${pngs[3]}"
echo "$root/packaging/windows/lumbra.ico"
