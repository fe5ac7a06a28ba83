#!/usr/bin/env bash
# Builds and runs every test. "scripts/test.sh asan" does the same under the sanitizers.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${1:-dev}
bash "$root/scripts/build.sh" "$preset"
cd "$root"
ctest --preset "$preset" -j "$(nproc)"
