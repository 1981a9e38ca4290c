#!/bin/bash
# Rehearses CI on a fresh Debian 12: a new minimal root made by debootstrap, the
# current commit cloned into it with ../shared beside it, and `.ci/run` run inside it
# as root with CI=true and no input, as CI runs it on a new machine. Prints the exit
# status, the total time and the time of each lane. Run as root, before a change that
# touches dependencies, lanes or CI; a green run here cannot lean on anything that was
# installed on this machine by hand.
#
# With --prepare it only makes the cached root.
#
#   FB_FRESH_ROOT_CACHE  folder of the cached debootstrap tarball
#                        (default /var/cache/feedbackagent-fresh-root)
#   FB_FRESH_ROOT_WORK   folder under which the root is made (default /var/tmp)
#   FB_FRESH_ROOT_KEEP=1 keeps the root after the run (for a look inside)
#   FB_DEBIAN_MIRROR     the mirror debootstrap and the root's apt use
#                        (default: the first one this machine's apt uses)
#   FB_FRESH_ROOT_LANG   a LANG to start .ci/run with (default: none, as a CI runner,
#                        a cron job or a service may start it with no locale at all)
set -euo pipefail
top=$(git -C "$(dirname "$0")" rev-parse --show-toplevel)
shared=$(cd "$top/../shared" 2>/dev/null && pwd) || { echo "fresh-root: no ../shared beside $top" >&2; exit 2; }
[ "$(id -u)" = 0 ] || { echo "fresh-root: run as root (debootstrap, mount and chroot need it)" >&2; exit 2; }
commit=$(git -C "$top" rev-parse HEAD)
if [ -n "$(git -C "$top" status --porcelain --untracked-files=no)" ]; then
    echo "fresh-root: note: uncommitted changes are not rehearsed; this runs $commit"
fi

cache=${FB_FRESH_ROOT_CACHE:-/var/cache/feedbackagent-fresh-root}
tarball=$(bash "$top/tools/debian-root.sh")
[ "${1:-}" = --prepare ] && { echo "fresh-root: cached root ready: $tarball"; exit 0; }

work=$(mktemp -d "${FB_FRESH_ROOT_WORK:-/var/tmp}/fb-fresh-root.XXXXXX")
root=$work/root
mkdir -p "$root"
cleanup() {
    umount -R "$root" 2>/dev/null || umount -lR "$root" 2>/dev/null || true
    if [ "${FB_FRESH_ROOT_KEEP:-0}" = 1 ]; then
        echo "fresh-root: the root stays at $root"
    elif grep -qF " $root" /proc/self/mounts; then
        # Never delete through a mount that is still there.
        echo "fresh-root: something is still mounted under $root; left in place"
    else
        rm -rf --one-file-system "$work"
    fi
}
trap cleanup EXIT
trap 'exit 130' INT TERM # so that the cleanup runs when the rehearsal is stopped

# The root is a mount point of its own, as / is on a real machine: tests that make
# their mounts private (unshare -m, mount --make-rprivate /) need one.
mount --bind "$root" "$root"
mount --make-private "$root"
echo "fresh-root: unpacking a new root in $root"
tar -C "$root" --numeric-owner -xzf "$tarball"

# What a real machine has mounted.
mount -t proc proc "$root/proc"
mount --rbind /sys "$root/sys" && mount --make-rslave "$root/sys"
mount --rbind /dev "$root/dev" && mount --make-rslave "$root/dev"
mount -t tmpfs -o mode=755 tmpfs "$root/run"
mkdir -p "$root/run/lock"
mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm" 2>/dev/null || true
cp /etc/resolv.conf "$root/etc/resolv.conf"
cp /etc/hosts "$root/etc/hosts"
# The same package sources as this machine, as a new machine of the same kind has.
rm -f "$root/etc/apt/sources.list"
cp -a /etc/apt/sources.list /etc/apt/sources.list.d "$root/etc/apt/" 2>/dev/null || true

# The commit as CI clones it, with ../shared beside it.
mkdir -p "$root/work"
git clone -q --no-local "$top" "$root/work/main"
git -C "$root/work/main" checkout -q "$commit"
cp -a "$shared" "$root/work/shared"

echo "fresh-root: CI=true bash .ci/run in the new root ($commit), LANG=${FB_FRESH_ROOT_LANG:-(unset)}"
log=$work/ci.log
start=$(date +%s)
status=0
locale=()
[ -n "${FB_FRESH_ROOT_LANG:-}" ] && locale=("LANG=$FB_FRESH_ROOT_LANG")
chroot "$root" /usr/bin/env -i HOME=/root CI=true "${locale[@]}" TERM=dumb \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    bash -c 'cd /work/main && bash .ci/run' </dev/null 2>&1 | tee "$log" || status=${PIPESTATUS[0]}
end=$(date +%s)
cp "$log" "$cache/last-ci.log"

echo
echo "fresh-root: .ci/run exited $status after $((end - start)) s ($(( (end - start) / 60 )) min $(( (end - start) % 60 )) s)"
echo "fresh-root: lanes:"
sed -n '/^lane times:/,$p' "$log" | sed '1d' | sed 's/^/    /'
echo "fresh-root: the whole log is $cache/last-ci.log"
exit "$status"
