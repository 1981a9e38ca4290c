#!/bin/sh
# Runs a test in network and mount namespaces of its own: only loopback, and a hosts
# file in which the feedback server and the test mail domain are this machine, so the
# default destination can be posted to without ever leaving it.
# Needs root, or unprivileged user namespaces (unshare then maps us to root). Where
# neither is available the test still runs, with FB_IN_PRIVATE_NET=unavailable.
set -eu
case "${FB_IN_PRIVATE_NET:-}" in
"")
    if [ "$(id -u)" = 0 ]; then flags=-mn; else flags=-rmn; fi
    if ! unshare $flags true 2>/dev/null; then
        FB_IN_PRIVATE_NET=unavailable exec "$@"
    fi
    FB_IN_PRIVATE_NET=setup exec unshare $flags -- "$0" "$@"
    ;;
setup)
    ip link set lo up
    dir=$(mktemp -d)
    printf '127.0.0.1 localhost\n::1 localhost\n127.0.0.1 feedback.korvane3d.com\n127.0.0.1 korvane3d.com\n' \
        >"$dir/hosts"
    printf 'hosts: files\n' >"$dir/nsswitch.conf"
    mount --bind "$dir/hosts" /etc/hosts
    mount --bind "$dir/nsswitch.conf" /etc/nsswitch.conf
    rm -rf "$dir" # the mounts keep the files
    FB_IN_PRIVATE_NET=1 exec "$@"
    ;;
esac
echo "privatenet.sh: unexpected FB_IN_PRIVATE_NET=$FB_IN_PRIVATE_NET" >&2
exit 2
