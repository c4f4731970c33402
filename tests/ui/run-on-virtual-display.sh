#!/usr/bin/env bash
# Runs a GUI test program on a private virtual display (Xvfb). Without Xvfb it runs with no
# display at all, so that the program skips instead of opening windows on the desktop.
if command -v xvfb-run >/dev/null 2>&1; then
  exec xvfb-run -a -s "-screen 0 1280x1024x24" env GDK_BACKEND=x11 NO_AT_BRIDGE=1 "$@"
fi
exec env -u DISPLAY -u WAYLAND_DISPLAY "$@"
