#!/usr/bin/env bash
# Builds the libFuzzer targets (preset "fuzz") and runs each for the given number of seconds
# (default 600) on a working copy of its seed corpus in fuzz/corpus/, then prints how many inputs
# each one ran and how many a second. A crash, a sanitizer report or a hang stops the run with the
# input saved in build/fuzz/findings/. "scripts/fuzz.sh 30" is the short run of .ci/run.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-600}
bash "$root/scripts/build.sh" fuzz
cd "$root"

out=build/fuzz
mkdir -p "$out/findings"
# The targets run side by side, one per core: each still gets its full time.
jobs=$(nproc)
# Inputs of 1 KB at most: every parser's structure shows in that much, and a target tries a
# thousand or more of them a second. The lengths at the 16-bit limits (32 767 characters, pieces,
# rows) are rows of the unit tests, not fuzzer inputs; longer inputs in a working corpus are cut.
max_len=1024
fuzz_one() {
  set +e
  local name=$1 seeds=$2
  local work="$out/corpus/$name" log="$out/fuzz_$name.log"
  mkdir -p "$work"
  # New inputs go to the working copy; the seeds in the repository stay as they are.
  "$out/fuzz/fuzz_$name" -max_total_time="$seconds" -max_len=$max_len -timeout=25 \
    -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$out/findings/$name-" \
    "$work" "$seeds" >"$log" 2>&1
  echo $? >"$out/fuzz_$name.status"
}
names=()
for seeds in fuzz/corpus/*/; do
  name=$(basename "$seeds")
  while (( $(jobs -rp | wc -l) >= jobs )); do wait -n || true; done
  echo "fuzz_$name: ${seconds} s"
  rm -f "$out/fuzz_$name.status"
  fuzz_one "$name" "$seeds" &
  names+=("$name")
done
wait
status=0
for name in "${names[@]}"; do
  log="$out/fuzz_$name.log"
  if [[ $(cat "$out/fuzz_$name.status" 2>/dev/null) == 0 ]]; then
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    echo "fuzz_$name: ${runs:-?} executions in ${seconds} s (${rate:-?} a second)"
  else
    status=1
    echo "fuzz_$name: FAILED, see $log"
    tail -n 40 "$log" >&2
  fi
done
exit $status
