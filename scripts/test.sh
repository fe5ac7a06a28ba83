#!/usr/bin/env bash
# Builds and runs every test. "scripts/test.sh asan" does the same under the sanitizers. The
# default run also builds the Debian package from the release preset and checks it, then builds the
# Windows programs and runs their tests under Wine (scripts/test-windows.sh).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${1:-dev}
bash "$root/scripts/build.sh" "$preset"
cd "$root"
ctest --preset "$preset" -j "$(nproc)"
if [ "$preset" = dev ]; then
  bash "$root/tests/packaging/package_test.sh"
  bash "$root/scripts/test-windows.sh"
fi
