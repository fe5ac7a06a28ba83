#!/usr/bin/env bash
# Runs the Windows window's test program under Wine, in the prefix WINEPREFIX names, on a private
# virtual display. COM1 and COM2 of the prefix point at pseudo-terminals made here (a Windows
# program cannot make one); what reaches each is copied into received-COM1 and received-COM2 of a
# folder that LUMBRA_TEST_PORTS names to the program. Every other COM port points at nothing, and COM1 and
# COM2 do again when the run ends.
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
  [ -n "$relay_pid" ] && kill "$relay_pid" 2>/dev/null && wait "$relay_pid" 2>/dev/null
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null && wait "$xvfb_pid" 2>/dev/null
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
    ports.append((master, slave, open(os.path.join(folder, "received-" + name), "wb", buffering=0)))
    print(name + "=" + os.ttyname(slave), flush=True)
while True:
    ready, _, _ = select.select([p[0] for p in ports], [], [])
    for master, _, log in ports:
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
