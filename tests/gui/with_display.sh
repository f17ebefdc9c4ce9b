#!/usr/bin/env bash
# Runs its arguments on a display of their own: a private X server on a free
# number with a window manager, both ended afterwards.
#   TAVLO_SCREEN=1920x1080x24  another size than 1280x800x24
set -u
room=$(mktemp -d)
server=
manager=

clean_up() {
  [ -n "$manager" ] && kill "$manager" 2>/dev/null
  [ -n "$server" ] && kill "$server" 2>/dev/null
  wait 2>/dev/null
  rm -rf "$room"
}
trap clean_up EXIT
trap 'exit 143' INT TERM

mkfifo "$room/number"
# A key whose release comes late on a busy machine is not pressed again: no auto-repeat.
Xvfb -r -displayfd 3 -screen 0 "${TAVLO_SCREEN:-1280x800x24}" -nolisten tcp 3>"$room/number" \
  >"$room/server.log" 2>&1 &
server=$!
if ! read -r -t 20 number <"$room/number"; then
  echo "with_display: no X server could be started:" >&2
  cat "$room/server.log" >&2
  exit 1
fi
export DISPLAY=":$number"
export QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY QT_SCALE_FACTOR_ROUNDING_POLICY

openbox >"$room/manager.log" 2>&1 &
manager=$!
# The manager is ready when it answers for its desktops.
for left in $(seq 600 -1 0); do
  xdotool get_num_desktops >/dev/null 2>&1 && break
  if [ "$left" = 0 ]; then
    echo "with_display: the window manager did not start:" >&2
    cat "$room/manager.log" >&2
    exit 1
  fi
  sleep 0.05
done

"$@"
