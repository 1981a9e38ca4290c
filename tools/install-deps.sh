#!/bin/bash
# Installs every Debian package the project needs (lists in tools/deps/*.txt).
# Run as root on a fresh Debian 12 machine.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
packages=$(cat "$here"/deps/*.txt | sed 's/#.*//' | tr -s ' \n' '\n' | sort -u | tr '\n' ' ')
export DEBIAN_FRONTEND=noninteractive
apt-get update -q
# shellcheck disable=SC2086
apt-get install -y -q --no-install-recommends $packages

# A test switches the C library to German, to prove that the machine description
# does not follow the user's language; Debian generates only the locales it is told.
if ! locale -a 2>/dev/null | grep -qx 'de_DE.utf8'; then
    grep -qx 'de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' >>/etc/locale.gen
    locale-gen
fi
