#!/usr/bin/env bash
# Runs a program in a virtual display with a window manager, and ends both with it.
set -euo pipefail

pids=()
finish() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
}
trap finish EXIT

exec 3< <(exec Xvfb -displayfd 1 -screen 0 1366x768x24 -nolisten tcp 2>/dev/null & echo "pid $!"; wait)
display=""
while read -r -t 20 line <&3; do
  case $line in
    pid\ *) pids+=("${line#pid }") ;;
    *) display=$line; break ;;
  esac
done
[ -n "$display" ] || { echo "No virtual display" >&2; exit 1; }
export DISPLAY=:$display
unset WAYLAND_DISPLAY
openbox >/dev/null 2>&1 &
pids+=($!)
"$@"
