#!/bin/bash
# Runs one command on a private headless Wayland desktop: sway with XWayland, a
# session bus of its own, pipewire and the desktop portal with its wlroots backend,
# as GNOME and KDE users have a portal. Used by the tests of the screen shot on
# Wayland; the exit status is the command's. Run as root.
#
# sway refuses to run as root, so it runs as the unprivileged user nobody; the bus,
# the portal and the command run as root (a portal answers only callers of its own
# user) and reach sway's socket by its full path.
#
# The command gets WAYLAND_DISPLAY, DISPLAY (XWayland, started on the first X
# client), XDG_RUNTIME_DIR, DBUS_SESSION_BUS_ADDRESS, SWAYSOCK, XDG_CURRENT_DESKTOP,
# and FB_SWAY_SHARED_DIR, a folder sway's user can read (for a background picture,
# which the command sets with swaymsg).
#   FB_SWAY_SIZE=WxH      the output's size (default 1920x1080)
#   FB_SWAY_NO_PORTAL=1   no portal backend at all: the Screenshot call fails
set -euo pipefail
[ "$(id -u)" = 0 ] || { echo "run-under-sway: run as root" >&2; exit 2; }
[ $# -ge 1 ] || { echo "usage: run-under-sway.sh command [arguments]" >&2; exit 2; }
here=$(cd "$(dirname "$0")" && pwd)
user=nobody
size=${FB_SWAY_SIZE:-1920x1080}

# Every helper here starts in a process group of its own, ended by group at the end.
groups=()
runtime=$(mktemp -d /tmp/fb-sway.XXXXXX) # sway's XDG_RUNTIME_DIR, 0700, its user's
bus_runtime=$(mktemp -d /tmp/fb-sway-root.XXXXXX)
cleanup() {
    local status=$? group i
    for group in "${groups[@]}"; do kill -- "-$group" 2>/dev/null || true; done
    for i in $(seq 40); do
        local alive=0
        for group in "${groups[@]}"; do kill -0 "$group" 2>/dev/null && alive=1; done
        [ $alive = 0 ] && break
        sleep 0.05
    done
    for group in "${groups[@]}"; do kill -9 -- "-$group" 2>/dev/null || true; done
    wait 2>/dev/null || true
    if [ $status -ne 0 ] && [ -s "$runtime/sway.log" ]; then
        echo "run-under-sway: sway said:" >&2
        tail -n 20 "$runtime/sway.log" >&2
    fi
    rm -rf "$runtime" "$bus_runtime"
    exit $status
}
trap cleanup EXIT
trap 'exit 130' INT TERM
chown "$user:$(id -g "$user")" "$runtime"
chmod 0700 "$runtime"
chmod 0700 "$bus_runtime"
# XWayland runs as sway's user; the X socket folder must stay root's, as X servers expect.
install -d -m 1777 -o root -g root /tmp/.X11-unix
# The wlroots backend has grim write its picture to /tmp/out.png: an old one of
# another user would be in the way.
rm -f /tmp/out.png

cat >"$runtime/sway.config" <<CONFIG
output * bg #000000 solid_color
output HEADLESS-1 resolution $size position 0,0 scale 1
default_border none
default_floating_border none
focus_follows_mouse no
mouse_warping none
swaynag_command -
xwayland enable
seat * hide_cursor 1
exec sh -c 'echo "WAYLAND_DISPLAY=\$WAYLAND_DISPLAY DISPLAY=\$DISPLAY" >"\$XDG_RUNTIME_DIR/ready"'
CONFIG
chown "$user:$(id -g "$user")" "$runtime/sway.config"

setsid setpriv --reuid="$user" --regid="$(id -g "$user")" --init-groups -- env -i HOME="$runtime" USER="$user" \
    PATH=/usr/local/bin:/usr/bin:/bin XDG_RUNTIME_DIR="$runtime" \
    WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 \
    sway -c "$runtime/sway.config" >"$runtime/sway.log" 2>&1 &
groups+=($!)
for _ in $(seq 400); do
    [ -s "$runtime/ready" ] && break
    sleep 0.05
done
[ -s "$runtime/ready" ] || { echo "run-under-sway: sway did not start" >&2; exit 1; }
eval "$(cat "$runtime/ready")"
# XWayland admits sway's user only.
setpriv --reuid="$user" --regid="$(id -g "$user")" --init-groups -- env -i DISPLAY="$DISPLAY" \
    XDG_RUNTIME_DIR="$runtime" WAYLAND_DISPLAY="$WAYLAND_DISPLAY" xhost +si:localuser:root >/dev/null

# Qt's Wayland plugin leaves its protocol objects to the end of the process, and it is
# built without frame pointers: only full unwinding shows it in the leak stacks, where
# the leak suppressions (tools/lsan.supp) can name it.
[ -n "${ASAN_OPTIONS:-}" ] && export ASAN_OPTIONS="$ASAN_OPTIONS:fast_unwind_on_malloc=0"

portals=$here/wayland/portals
[ "${FB_SWAY_NO_PORTAL:-}" = 1 ] && portals=$runtime/no-portals && mkdir "$portals"
# The command keeps the caller's environment (the test's settings) with the desktop's.
setsid env XDG_RUNTIME_DIR="$bus_runtime" WAYLAND_DISPLAY="$runtime/$WAYLAND_DISPLAY" DISPLAY="$DISPLAY" \
    SWAYSOCK="$(ls "$runtime"/sway-ipc.*.sock)" XDG_CURRENT_DESKTOP=sway XDG_SESSION_TYPE=wayland \
    XDG_DESKTOP_PORTAL_DIR="$portals" FB_SWAY_SHARED_DIR="$runtime" \
    dbus-run-session -- "$here/wayland/session.sh" "$@" &
command_group=$!
groups+=($command_group)
status=0
wait $command_group || status=$?
exit $status
