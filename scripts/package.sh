#!/usr/bin/env bash
# Builds the release preset and writes the Debian package, build/lumbra_<version>_<arch>.deb; its
# path is the one line on standard output (the build's progress goes to standard error). The
# release build stays in build/release, so a second run only rebuilds what changed. The Windows
# zips and installers come from scripts/package-windows.sh (checked by scripts/test-windows.sh).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$root/scripts/setup.sh" >&2
cd "$root"
# The package installs under /usr (and /etc): the configure step fixes the paths it links to.
cmake --preset release -DCMAKE_INSTALL_PREFIX=/usr >/dev/null
cmake --build --preset release -j "$(nproc)" >&2
cd build/release
rm -f lumbra_*.deb
cpack -G DEB >/dev/null
deb=$(ls lumbra_*.deb)
mv -f "$deb" "$root/build/"
echo "$root/build/$deb"
