#!/bin/bash
# Prints the path of a cached minimal Debian 12 root (a debootstrap minbase tarball),
# making it first when there is none. Run as root. Used by tools/fresh-root.sh and
# by the package lane's install test.
#
#   FB_FRESH_ROOT_CACHE  folder of the cached tarball
#                        (default /var/cache/feedbackagent-fresh-root)
#   FB_DEBIAN_MIRROR     the mirror debootstrap uses
#                        (default: the first one this machine's apt uses)
set -euo pipefail
cache=${FB_FRESH_ROOT_CACHE:-/var/cache/feedbackagent-fresh-root}
tarball=$cache/bookworm-minbase.tar.gz
mirror=${FB_DEBIAN_MIRROR:-}
if [ -z "$mirror" ]; then
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 2>/dev/null | grep -m1 -v security || true)
    mirror=${mirror:-http://deb.debian.org/debian/}
fi

if [ ! -s "$tarball" ]; then
    command -v debootstrap >/dev/null || { apt-get update -q && apt-get install -y -q debootstrap; } >&2
    mkdir -p "$cache"
    echo "debian-root: making the cached root (debootstrap bookworm from $mirror)" >&2
    build=$(mktemp -d "$cache/build.XXXXXX")
    # A debootstrap that fails may leave its /proc mounted: never delete through it.
    trap 'umount -R "$build/root/proc" 2>/dev/null || true
          grep -qF " $build/" /proc/self/mounts || rm -rf --one-file-system "$build"' EXIT
    trap 'exit 130' INT TERM
    debootstrap --variant=minbase bookworm "$build/root" "$mirror" >&2
    # The finished root, so that each use only unpacks it.
    tar -C "$build/root" --numeric-owner -czf "$build/root.tar.gz" .
    mv "$build/root.tar.gz" "$tarball"
fi
echo "$tarball"
