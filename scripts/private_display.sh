# Sourced: start_private_display WORK SIZE starts Xvfb on a free display of its choosing, waits
# until it accepts clients, and sets xvfb_pid and DISPLAY. WORK is a scratch folder of the caller;
# the caller stops the server (kill "$xvfb_pid") when it is done.
start_private_display() {
  local work=$1 size=$2
  # Xvfb writes the display's number once it accepts clients.
  Xvfb -displayfd 3 -screen 0 "$size" -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
  xvfb_pid=$!
  for _ in $(seq 100); do
    [ -s "$work/display" ] && break
    kill -0 "$xvfb_pid" 2>/dev/null || { cat "$work/xvfb.log" >&2; return 1; }
    sleep 0.1
  done
  [ -s "$work/display" ] || { echo "Xvfb did not start" >&2; return 1; }
  export DISPLAY=":$(head -n1 "$work/display")"
}
