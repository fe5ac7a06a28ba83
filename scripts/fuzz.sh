#!/usr/bin/env bash
# Builds the libFuzzer targets (preset "fuzz") and runs each for the given number of seconds
# (default 600) on a working copy of its seed corpus in fuzz/corpus/, then prints how many inputs
# each one ran. A crash, a sanitizer report or a hang stops the run with the input saved in
# build/fuzz/findings/. "scripts/fuzz.sh 30" is the short run of .ci/run.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-600}
bash "$root/scripts/build.sh" fuzz
cd "$root"

out=build/fuzz
mkdir -p "$out/findings"
summary=()
status=0
for seeds in fuzz/corpus/*/; do
  name=$(basename "$seeds")
  work="$out/corpus/$name"
  mkdir -p "$work"
  log="$out/fuzz_$name.log"
  echo "fuzz_$name: ${seconds} s"
  # New inputs go to the working copy; the seeds in the repository stay as they are.
  if "$out/fuzz/fuzz_$name" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
      -print_final_stats=1 -artifact_prefix="$out/findings/$name-" "$work" "$seeds" \
      >"$log" 2>&1; then
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    summary+=("fuzz_$name: ${runs:-?} executions in ${seconds} s")
  else
    status=1
    summary+=("fuzz_$name: FAILED, see $log")
    tail -n 40 "$log" >&2
  fi
done
printf '%s\n' "${summary[@]}"
exit $status
