#!/usr/bin/env bash
# Runs the Windows window's test program under Wine, in the prefix WINEPREFIX names, on a private
# virtual display. COM1 and COM2 point at pseudo-terminals made here (a Windows program cannot make
# one), every other COM port at nothing, and COM1 and COM2 do again when the run ends. What reaches
# COMn is copied into received-COMn of the folder LUMBRA_TEST_PORTS names to the program; while
# that folder holds hold-COMn, COMn takes nothing.
#   run_window_test.sh PROGRAM [ARGS...]
set -euo pipefail
exe=${1:?usage: run_window_test.sh PROGRAM [ARGS...]}
shift
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
support=$here/../../support/wine
. "$support/wine_env.sh"
: "${WINEPREFIX:?the window test runs in a prefix of its own: set WINEPREFIX}"
export WINEDEBUG=${WINEDEBUG:--all}

work=$(mktemp -d)
xvfb_pid=
relay_pid=
cleanup() {
  local status=$?
  set +e
  # The server and its helpers belong to this display: they go with it.
  bash "$support/wine_ports.sh" "$WINEPREFIX" >/dev/null 2>&1
  "$WINESERVER" -k >/dev/null 2>&1
  for pid in $relay_pid $xvfb_pid; do kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null; done
  rm -rf "$work"
  exit "$status"
}
trap cleanup EXIT

. "$here/../../../scripts/private_display.sh"
start_private_display "$work" 1024x768x24

# The slave side stays open here as well, so the master never reads an end while Wine has the
# port closed; raw, so that no byte is changed on its way.
python3 - "$work" COM1 COM2 >"$work/ports" <<'PY' &
import os, pty, select, sys, tty
folder, names = sys.argv[1], sys.argv[2:]
ports = []
for name in names:
    master, slave = pty.openpty()
    tty.setraw(slave)
    log = open(os.path.join(folder, "received-" + name), "wb", buffering=0)
    ports.append((name, master, slave, log))
    print(name + "=" + os.ttyname(slave), flush=True)
while True:
    live = [p for p in ports if not os.path.exists(os.path.join(folder, "hold-" + p[0]))]
    ready, _, _ = select.select([p[1] for p in live], [], [], 0.02)
    for _, master, _, log in live:
        if master in ready:
            log.write(os.read(master, 65536))
PY
relay_pid=$!
for _ in $(seq 100); do
  [ "$(wc -l <"$work/ports")" -ge 2 ] && break
  sleep 0.05
done
mapfile -t pairs <"$work/ports"
[ ${#pairs[@]} -eq 2 ] || { echo "run_window_test: no pseudo-terminals" >&2; exit 1; }

bash "$support/wine_ports.sh" "$WINEPREFIX" "${pairs[@]}"
LUMBRA_TEST_PORTS=$(winepath_of "$work") "$WINE" "$exe" "$@"
