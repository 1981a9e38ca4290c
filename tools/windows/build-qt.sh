#!/bin/bash
# Builds Qt for 64-bit Windows (qtbase only) from Debian's own source package with
# Debian's mingw-w64 cross compiler, and installs it into a cache folder outside the
# checkout. A folder that is already complete is reused, so only the first run on a
# machine pays for the build (about 13 minutes on 2 cores).
#
# Prints the folder (the Qt prefix) as its last line. Run as root: it installs the
# packages it needs with apt-get.
#
#   FB_WIN_QT_CACHE  where the Qt builds are kept (default /var/cache/feedbackagent)
#   FB_WIN_QT_PREFIX the Qt prefix itself; overrides the folder derived below
set -euo pipefail
jobs=$(nproc)

# What the program and its tests need, and no more: widgets, network with TLS through
# Windows itself (schannel), PNG and JPEG, and the windows, offscreen and minimal
# platforms. Debian's source is "dfsg" (src/3rdparty/wintab is removed), hence no
# tablet events.
configure_options=(
    -opensource -confirm-license -release -shared
    -xplatform win32-g++ -device-option CROSS_COMPILE=x86_64-w64-mingw32-
    -nomake examples -nomake tests
    -no-opengl -no-dbus -no-icu -no-direct2d
    -qt-zlib -qt-libpng -qt-libjpeg -qt-pcre -qt-freetype -qt-harfbuzz
    -no-feature-sql -no-feature-concurrent -no-feature-tabletevent
    -schannel -no-openssl
)

export DEBIAN_FRONTEND=noninteractive
need_packages=(g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
               dpkg-dev xz-utils perl python3 make)
missing=()
for package in "${need_packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    apt-get update -q
    apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# Debian's source lists, deb-src only, in a private apt state: the machine's own
# apt configuration is left as it is.
apt_state=$(mktemp -d)
trap 'rm -rf "$apt_state"' EXIT
chmod 755 "$apt_state" # apt's downloader runs as _apt
mkdir -p "$apt_state/lists/partial" "$apt_state/cache/archives/partial"
apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 2>/dev/null | sort -u |
    while read -r uri release component; do
        case "$uri" in *debian*) echo "deb-src $uri $release $component" ;; esac
    done >"$apt_state/sources.list"
if [ ! -s "$apt_state/sources.list" ]; then
    echo "build-qt: this machine's apt knows no Debian archive to get sources from" >&2
    exit 1
fi
private_apt=(-o Dir::Etc::SourceList="$apt_state/sources.list" -o Dir::Etc::SourceParts=/dev/null
             -o Dir::State::Lists="$apt_state/lists" -o Dir::Cache="$apt_state/cache")
apt-get "${private_apt[@]}" update -q >/dev/null
version=$(apt-cache "${private_apt[@]}" showsrc qtbase-opensource-src |
    sed -n 's/^Version: //p' | sort -V | tail -n 1)
[ -n "$version" ] || { echo "build-qt: no qtbase-opensource-src in $(cat "$apt_state/sources.list")" >&2; exit 1; }
upstream=${version%%+*}

key=$(printf '%s\n' "$version" "${configure_options[@]}" | sha256sum | cut -c1-12)
cache=${FB_WIN_QT_CACHE:-/var/cache/feedbackagent}
prefix=${FB_WIN_QT_PREFIX:-$cache/qt-$upstream-win64-$key}
if [ -e "$prefix/.complete" ]; then
    echo "$prefix"
    exit 0
fi

mkdir -p "$cache"
work=$(mktemp -d "$cache/build-qt.XXXXXX")
chmod 755 "$work"
trap 'rm -rf "$apt_state" "$work"' EXIT
trap 'exit 130' INT TERM # so that the folders above go when the build is stopped
cd "$work"
echo "build-qt: qtbase-opensource-src $version into $prefix" >&2
apt-get "${private_apt[@]}" source --download-only -q "qtbase-opensource-src=$version" >&2
dpkg-source --no-check -x qtbase-opensource-src_*.dsc src >&2

# The posix-thread variant of the cross compiler (std::thread and friends), reached
# through a private folder of links rather than update-alternatives.
bin=$work/bin
mkdir -p "$bin"
for tool in gcc g++; do
    ln -s "/usr/bin/x86_64-w64-mingw32-$tool-posix" "$bin/x86_64-w64-mingw32-$tool"
done
# Qt's schannel backend links -lSecur32 -lCrypt32; mingw-w64 names them in lower case,
# and case matters on Linux.
libs=$work/lib
mkdir -p "$libs"
ln -s /usr/x86_64-w64-mingw32/lib/libsecur32.a "$libs/libSecur32.a"
ln -s /usr/x86_64-w64-mingw32/lib/libcrypt32.a "$libs/libCrypt32.a"
export PATH="$bin:$PATH"

mkdir build
cd build
start=$(date +%s)
../src/configure -prefix "$prefix" "${configure_options[@]}" -L "$libs" >configure.log 2>&1 ||
    { tail -n 40 configure.log >&2; exit 1; }
echo "build-qt: configured in $(($(date +%s) - start)) s" >&2
make -j"$jobs" >build.log 2>&1 || { grep -m 20 -B 5 -E 'error|Error' build.log >&2; exit 1; }
echo "build-qt: built in $(($(date +%s) - start)) s" >&2
rm -rf "$prefix"
make install >install.log 2>&1 || { tail -n 20 install.log >&2; exit 1; }
echo "$version" >"$prefix/debian-source-version"
printf '%s\n' "${configure_options[@]}" >"$prefix/configure-options"
touch "$prefix/.complete"
echo "build-qt: installed in $(($(date +%s) - start)) s" >&2
echo "$prefix"
