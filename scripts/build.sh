#!/usr/bin/env bash
# Installs what is missing, configures and builds one preset (default: dev).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${1:-dev}
bash "$root/scripts/setup.sh"
cd "$root"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
