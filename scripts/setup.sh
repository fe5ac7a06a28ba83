#!/usr/bin/env bash
# Installs the Debian packages of the given lists (default: scripts/packages.txt) that are missing.
# A warm machine costs one dpkg-query call.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

lists=("$@")
[ ${#lists[@]} -gt 0 ] || lists=("$here/packages.txt")
mapfile -t wanted < <(cat "${lists[@]}" | grep -v -E '^\s*(#|$)')
mapfile -t installed < <(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
  awk '$1 == "installed" {print $2}')
missing=()
for pkg in "${wanted[@]}"; do
  [[ " ${installed[*]} " == *" $pkg "* ]] || missing+=("$pkg")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Lumbra: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt_cmd=(apt-get -y -q --no-install-recommends)
if [ "$(id -u)" -eq 0 ]; then
  sudo=()
elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
  sudo=(sudo -n --preserve-env=DEBIAN_FRONTEND)
else
  echo "Lumbra: these packages are missing: ${missing[*]}" >&2
  echo "Install them as root, then run this again:" >&2
  echo "  sudo apt-get install -y --no-install-recommends ${missing[*]}" >&2
  exit 1
fi
# The package lists of a fresh machine may be empty or stale: refresh once, then install.
"${sudo[@]}" apt-get update -q
"${sudo[@]}" "${apt_cmd[@]}" install "${missing[@]}"
