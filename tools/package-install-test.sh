#!/bin/bash
# The test a user would do with the Debian package, in a clean Debian 12 root:
#   1. apt-get installs the package, which brings in its dependencies;
#   2. xdg-open 'kvfb://mode=bug,area=Other,lockarea/' starts the installed program;
#      it is found from outside by its title, and its window shows the bug report's
#      banner pixel for pixel; a screen reader's view of it (AT-SPI) shows the area
#      "Other" chosen and Start Over shown but disabled;
#   3. apt-get remove leaves no file of the package behind.
# Usage (as root, on an X display with a window manager; the lane runs it under
# tools/run-under-x.sh): tools/package-install-test.sh build-package/feedbackagent_*.deb
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
deb=$(realpath "$1")
[ "$(id -u)" = 0 ] || { echo "install-test: run as root (chroot and mount need it)" >&2; exit 2; }
[ -n "${DISPLAY:-}" ] || { echo "install-test: no DISPLAY" >&2; exit 2; }
tarball=$(bash "$top/tools/debian-root.sh")

work=$(mktemp -d /var/tmp/fb-package-root.XXXXXX)
root=$work/root
mkdir -p "$root"
program=
# The processes running inside the root (the program, the buses, the registry).
processes_in_root() {
    local proc
    for proc in /proc/[0-9]*; do
        [ "$(readlink "$proc/root" 2>/dev/null)" != "$root" ] || echo "${proc#/proc/}"
    done
}
cleanup() {
    [ -n "$program" ] && kill "$program" 2>/dev/null || true
    # They go first, so that nothing holds the mounts: asked, then after 5 s told.
    local tries=0 left
    while left=$(processes_in_root) && [ -n "$left" ] && [ $tries -lt 50 ]; do
        # shellcheck disable=SC2086
        if [ $tries -lt 25 ]; then kill $left 2>/dev/null; else kill -KILL $left 2>/dev/null; fi
        sleep 0.2
        tries=$((tries + 1))
    done
    local mount
    for mount in "$root/tmp/.X11-unix" "$root/dev" "$root/proc"; do
        umount -R "$mount" 2>/dev/null || umount -lR "$mount" 2>/dev/null || true
    done
    if grep -qF " $root" /proc/self/mounts; then
        echo "install-test: something is still mounted under $root; left in place"
    else
        rm -rf --one-file-system "$work"
    fi
}
trap cleanup EXIT
trap 'exit 130' INT TERM # so that the cleanup runs when the test is stopped

tar -C "$root" --numeric-owner -xzf "$tarball"
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev" && mount --make-rslave "$root/dev"
mkdir -p "$root/tmp/.X11-unix"
mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
cp /etc/resolv.conf "$root/etc/resolv.conf"
rm -f "$root/etc/apt/sources.list"
cp -a /etc/apt/sources.list /etc/apt/sources.list.d "$root/etc/apt/" 2>/dev/null || true
if [ -n "${XAUTHORITY:-}" ]; then
    cp "$XAUTHORITY" "$root/root/.Xauthority"
fi
mkdir -p -m 700 "$root/run/user/0"
in_root() {
    chroot "$root" /usr/bin/env -i HOME=/root LANG=C.UTF-8 DISPLAY="$DISPLAY" XAUTHORITY=/root/.Xauthority \
        XDG_RUNTIME_DIR=/run/user/0 \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"
}

# The user's machine: a desktop's way of opening links, and a session bus with the
# accessibility bus and registry that a screen reader reads.
in_root apt-get update -q >/dev/null
in_root apt-get install -y -q --no-install-recommends xdg-utils desktop-file-utils \
    dbus-daemon dbus-bin at-spi2-core python3-pyatspi >/dev/null
in_root find / -xdev -path /proc -prune -o -print | sort >"$work/before.txt"

cp "$deb" "$root/tmp/"
echo "install-test: apt-get install ./$(basename "$deb")"
in_root apt-get install -y -q --no-install-recommends "/tmp/$(basename "$deb")" >"$work/install.log"
grep -E '^(Setting up|The following NEW)' "$work/install.log" || true
in_root dpkg -L feedbackagent | sort >"$work/files.txt"
[ -x "$root/usr/bin/feedbackagent" ] || { echo "install-test: /usr/bin/feedbackagent is not there" >&2; exit 1; }
handler=$(in_root xdg-mime query default x-scheme-handler/kvfb)
echo "install-test: kvfb:// is handled by $handler"
[ "$handler" = com.korvane3d.feedbackagent.desktop ] || { echo "install-test: wrong handler" >&2; exit 1; }

bus=$(in_root dbus-daemon --session --fork --print-address=1)
in_root env DBUS_SESSION_BUS_ADDRESS="$bus" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 \
    xdg-open 'kvfb://mode=bug,area=Other,lockarea/' >"$work/program.log" 2>&1 &
program=$!
title_pattern='^Korvane 3D.* Feedback Agent.*  Build '
window=$(timeout 60 xdotool search --sync --onlyvisible --limit 1 --name "$title_pattern") || {
    echo "install-test: no window titled like '$title_pattern' within 60 s" >&2
    exit 1
}
echo "install-test: window $window: $(xdotool getwindowname "$window")"
# The bug report's banner, as the window shows it, against the picture the program
# carries: found row for row in a shot of the window, shot again until it is there (the
# first shots may come before the window is painted) or a minute has passed.
banner=$top/resources/images/Banner-Bug.png
convert "$banner" -depth 8 rgb:"$work/banner.rgb"
deadline=$((SECONDS + 60))
until import -window "$window" png:"$work/shot.png" 2>/dev/null &&
    convert "$work/shot.png" -depth 8 rgb:"$work/shot.rgb" &&
    python3 - "$work/shot.rgb" "$(identify -format %w "$work/shot.png")" \
        "$work/banner.rgb" "$(identify -format %w "$banner")" <<'PY'
import sys
shot = open(sys.argv[1], 'rb').read(); width = int(sys.argv[2])
banner = open(sys.argv[3], 'rb').read(); bw = int(sys.argv[4]); bh = len(banner) // (3 * bw)
rows = [banner[i * 3 * bw:(i + 1) * 3 * bw] for i in range(bh)]
height = len(shot) // (3 * width)
def row(y): return shot[y * 3 * width:(y + 1) * 3 * width]
for y in range(height - bh + 1):
    x = row(y).find(rows[0])
    while x >= 0:
        if x % 3 == 0 and all(row(y + i)[x:x + 3 * bw] == rows[i] for i in range(bh)):
            print(f"install-test: the bug report's banner is at {x // 3},{y} in the {width}x{height} window")
            sys.exit(0)
        x = row(y).find(rows[0], x + 1)
sys.exit(1)
PY
do
    if [ $SECONDS -ge $deadline ]; then
        echo "install-test: the bug report's banner is not in the window" >&2
        exit 1
    fi
    sleep 0.2
done

# The same window through AT-SPI. The accessibility bus starts once the window is up:
# started before the program, it was never joined ("Not connected to D-Bus server");
# started after, it is joined every time.
pid=$(xdotool getwindowpid "$window")
in_root env DBUS_SESSION_BUS_ADDRESS="$bus" /usr/libexec/at-spi-bus-launcher --launch-immediately \
    >"$work/launcher.log" 2>&1 &
cp "$top/tools/atspi-launch-state.py" "$root/tmp/"
seen=$(in_root env DBUS_SESSION_BUS_ADDRESS="$bus" timeout 120 python3 /tmp/atspi-launch-state.py "$pid") || {
    echo "install-test: the program's and the accessibility bus's output:" >&2
    cat "$work/program.log" "$work/launcher.log" >&2
    exit 1
}
expected_seen=$'area-list|Other\nstart-over|showing,disabled'
if [ "$seen" != "$expected_seen" ]; then
    echo "install-test: through AT-SPI the window shows" >&2
    echo "$seen" >&2
    echo "install-test: instead of" >&2
    echo "$expected_seen" >&2
    exit 1
fi
echo "install-test: through AT-SPI: $(echo "$seen" | tr '\n' ' ')"
kill "$pid"
wait "$program" 2>/dev/null || true
program=

echo "install-test: apt-get remove feedbackagent"
in_root apt-get remove -y -q feedbackagent >/dev/null
left=0
while read -r path; do
    [ -e "$root$path" ] || continue
    # A folder that was there before, or that another package holds, may stay.
    if [ -d "$root$path" ] && { grep -qxF "$path" "$work/before.txt" || in_root dpkg -S "$path" >/dev/null 2>&1; }; then
        continue
    fi
    echo "install-test: left behind: $path" >&2
    left=1
done <"$work/files.txt"
[ "$left" = 0 ] || exit 1
echo "install-test: $(wc -l <"$work/files.txt") paths of the package, none left behind"
