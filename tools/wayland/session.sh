#!/bin/bash
# The session side of tools/run-under-sway.sh, inside dbus-run-session: pipewire and the
# desktop portal with its wlroots backend, then the command. The exit status is the
# command's.
set -u
# Services the bus starts must see the desktop.
dbus-update-activation-environment WAYLAND_DISPLAY DISPLAY XDG_RUNTIME_DIR XDG_CURRENT_DESKTOP \
    XDG_SESSION_TYPE SWAYSOCK XDG_DESKTOP_PORTAL_DIR
helpers=()
stop_helpers() {
    for pid in "${helpers[@]}"; do kill "$pid" 2>/dev/null; done
    wait 2>/dev/null
}
trap stop_helpers EXIT

bus_call() {
    gdbus call --session --timeout "$1" --dest "$2" --object-path "$3" --method "$4" "${@:5}"
}
has_owner() {
    bus_call 5 org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus.NameHasOwner "$1" 2>/dev/null |
        grep -q true
}

if [ -z "$(ls -A "$XDG_DESKTOP_PORTAL_DIR")" ]; then
    "$@"
    exit $?
fi

# The wlroots backend ends at once when no pipewire daemon runs, even for screen shots.
pipewire >"$XDG_RUNTIME_DIR/pipewire.log" 2>&1 &
helpers+=($!)
for _ in $(seq 250); do
    pw-cli info 0 >/dev/null 2>&1 && break
    sleep 0.02
done

# Debian 12's xdg-desktop-portal-wlr (0.7.0) can leave a message that arrives while it
# starts unread until another one comes, and the portal then waits 25 s for its first
# answer. So the backend is started here, and pinged until the portal is up.
/usr/libexec/xdg-desktop-portal-wlr >"$XDG_RUNTIME_DIR/portal-wlr.log" 2>&1 &
helpers+=($!)
for _ in $(seq 250); do
    has_owner org.freedesktop.impl.portal.desktop.wlr && break
    sleep 0.02
done
(
    while :; do
        bus_call 1 org.freedesktop.impl.portal.desktop.wlr /org/freedesktop/portal/desktop \
            org.freedesktop.DBus.Peer.Ping >/dev/null 2>&1 &
        sleep 0.2
    done
) &
pinger=$!
# The bus starts the portal on this first call, which returns once Screenshot is there.
if ! bus_call 60 org.freedesktop.portal.Desktop /org/freedesktop/portal/desktop \
    org.freedesktop.DBus.Properties.Get org.freedesktop.portal.Screenshot version >/dev/null; then
    kill $pinger
    echo "run-under-sway: the desktop portal offers no Screenshot" >&2
    exit 1
fi
kill $pinger
wait $pinger 2>/dev/null

"$@"
status=$?
# The services the bus started end with it; the portal by its process id, at once.
for name in org.freedesktop.portal.Desktop org.freedesktop.portal.Documents org.freedesktop.impl.portal.PermissionStore; do
    pid=$(bus_call 5 org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus.GetConnectionUnixProcessID \
        "$name" 2>/dev/null | tr -dc 0-9)
    [ -n "$pid" ] && kill "$pid" 2>/dev/null
done
exit $status
