#!/usr/bin/env bash
# Builds the Windows programs (64-bit and 32-bit) and runs the Windows tests under Wine. Only the
# 64-bit programs are run: Debian's 32-bit Wine does not install beside the 64-bit one here, and a
# 32-bit program under the 64-bit Wine can crash and still exit 0. Then the Linux side drives
# lumbractl.exe under Wine with the Linux tool's own tables, on pseudo-terminals, and compares it
# with the Linux lumbractl byte for byte (tools_wine_tests, in the dev tree). Last, the downloads:
# the zips and installers of scripts/package-windows.sh, the 64-bit installer run under Wine.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bash "$root/scripts/setup.sh" "$root/scripts/packages-windows.txt"
cd "$root"
for preset in windows windows32; do
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
done
# One prefix for the run, made before ctest starts, its server started away from ctest's pipes.
bash tests/support/wine/wine_prefix.sh "$root/build/windows/wine/prefix"
ctest --preset windows -j "$(nproc)"
[ -f build/dev/CMakeCache.txt ] || cmake --preset dev >/dev/null
cmake --build --preset dev --target tools_wine_tests
ctest --test-dir build/dev -L wine --output-on-failure
bash tests/packaging/windows_package_test.sh
