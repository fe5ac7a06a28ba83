#!/usr/bin/env bash
# Runs a test command unless every file its result depends on is byte for byte what it was when the
# same command last passed: Wine runs are most of a test run's time.
#   unless_unchanged.sh STAMP INPUT... -- COMMAND [ARGS...]
# An INPUT folder stands for the .exe files below it (a Wine prefix's own programs left out). The
# stamp is written only after a pass, and removed before a run.
set -euo pipefail
stamp=${1:?usage: unless_unchanged.sh STAMP INPUT... -- COMMAND [ARGS...]}
shift
inputs=()
while [ $# -gt 0 ] && [ "$1" != "--" ]; do inputs+=("$1"); shift; done
[ $# -gt 1 ] || { echo "unless_unchanged.sh: no command after --" >&2; exit 2; }
shift
key=$(
  for input in "${inputs[@]}"; do
    if [ -d "$input" ]; then
      find "$input" -path '*/wine' -prune -o -type f -name '*.exe' -print0 | sort -z |
        xargs -0 -r sha256sum
    else
      sha256sum "$input"
    fi
  done | cat - <(printf '%s\n' "$@") | sha256sum | cut -d' ' -f1
)
if [ "$(cat "$stamp" 2>/dev/null)" = "$key" ]; then
  echo "unless_unchanged.sh: every input is as when this passed last ($stamp): not run again"
  exit 0
fi
rm -f "$stamp"
"$@"
echo "$key" >"$stamp"
