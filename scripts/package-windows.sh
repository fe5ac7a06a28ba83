#!/usr/bin/env bash
# Builds the Windows programs (presets windows and windows32, both Release) and writes what a
# technician downloads, into build/:
#   lumbra-<version>-windows-x64.zip  lumbra-<version>-setup-x64.exe
#   lumbra-<version>-windows-x86.zip  lumbra-<version>-setup-x86.exe
# one path per line on standard output; the build's progress goes to standard error. A zip holds
# lumbra.exe, lumbractl.exe, the sample Lumbra.par beside them and LEIA-ME.txt; the installer
# (packaging/windows/lumbra.nsi) installs the same files for the current user.
#   package-windows.sh [BUILD_DIR_X64 BUILD_DIR_X86]    (default: build/windows build/windows32)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
dir64=$(realpath -m "${1:-$root/build/windows}")
dir32=$(realpath -m "${2:-$root/build/windows32}")
bash "$root/scripts/setup.sh" "$root/scripts/packages-windows.txt" >&2
cd "$root"

icon=$root/packaging/windows/lumbra.ico
[ -f "$icon" ] || { echo "package-windows.sh: $icon is missing" >&2; exit 1; }

# Where a target's file lies in a Ninja tree.
target_file() {
  ninja -C "$1" -t query "$2" 2>/dev/null | awk '/input: phony/ { getline; print $1; exit }'
}

package() {  # preset, build folder, architecture name, binutils prefix
  local preset=$1 dir=$2 arch=$3 host=$4
  cmake --preset "$preset" -B "$dir" >/dev/null
  local exe
  for exe in lumbra lumbractl; do
    [ -n "$(target_file "$dir" "$exe")" ] || {
      echo "package-windows.sh: the $preset build has no target $exe: $exe.exe cannot be built" >&2
      exit 1
    }
  done
  cmake --build "$dir" --target lumbra lumbractl -j "$(nproc)" >&2

  local version
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$dir/CMakeCache.txt")
  local stage=$dir/package/lumbra-$version-windows-$arch
  rm -rf "$stage"
  mkdir -p "$stage"
  for exe in lumbra lumbractl; do
    local built
    built=$dir/$(target_file "$dir" "$exe")
    [ -f "$built" ] || { echo "package-windows.sh: $exe.exe was not built ($built)" >&2; exit 1; }
    # The symbols stay in the build tree; the download carries the program alone.
    "$host-strip" -o "$stage/$exe.exe" "$built"
  done
  # The sample with its file ports and parallel printer as Windows names them.
  LC_ALL=C sed -f "$root/packaging/windows/Lumbra.par.sed" "$root/examples/Lumbra.par" \
    >"$stage/Lumbra.par"
  # Kept as UTF-8 in the tree like every other text. Notepad of older Windows (POSReady 7) reads a
  # text without a byte-order mark in the ANSI code page and breaks lines only at CR LF; iconv
  # fails on any character Windows-1252 lacks.
  iconv -f UTF-8 -t WINDOWS-1252 "$root/packaging/windows/LEIA-ME.txt" | sed 's/$/\r/' \
    >"$stage/LEIA-ME.txt"

  local zip=$root/build/lumbra-$version-windows-$arch.zip
  rm -f "$zip"
  (cd "$stage" && cmake -E tar cf "$zip" --format=zip lumbra.exe lumbractl.exe Lumbra.par LEIA-ME.txt)
  echo "$zip"

  local setup=$root/build/lumbra-$version-setup-$arch.exe
  rm -f "$setup"
  makensis -INPUTCHARSET UTF8 -WX -V2 -DVERSION="$version" -DARCH="$arch" -DSTAGE="$stage" \
    -DOUTFILE="$setup" -DICON="$icon" "$root/packaging/windows/lumbra.nsi" >&2
  echo "$setup"
}

package windows "$dir64" x64 x86_64-w64-mingw32
package windows32 "$dir32" x86 i686-w64-mingw32
