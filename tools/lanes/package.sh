#!/bin/bash
# Lane: the Debian package. Builds the program for /usr in build-package/, makes
# feedbackagent_<version>_amd64.deb with CPack, and checks it: the exact list of files,
# the dependencies dpkg-shlibdeps found, the desktop entry and AppStream file as
# installed, and lintian with no error; then installs it into a clean Debian 12 root,
# opens a kvfb:// link with it and removes it (tools/package-install-test.sh). Run as
# root. $1 (the normal build folder) is not used.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
. "$root/tools/utf8-locale.sh"
cd "$root"
export CCACHE_BASEDIR=$root

cmake --preset package >/dev/null
cmake --build --preset package -j"$(nproc)"
rm -f build-package/feedbackagent_*.deb
(cd build-package && cpack -G DEB >/dev/null)
version=$(sed -n 's/^project(FeedbackAgent VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
deb=build-package/feedbackagent_${version}_amd64.deb
[ -f "$deb" ] || { echo "package: $deb was not made" >&2; exit 1; }
echo "package: $deb, $(stat -c %s "$deb") bytes"

id=com.korvane3d.feedbackagent
expected=$(cat <<LIST
./usr/bin/feedbackagent
./usr/share/applications/$id.desktop
./usr/share/doc/feedbackagent/changelog.gz
./usr/share/doc/feedbackagent/copyright
./usr/share/icons/hicolor/128x128/apps/$id.png
./usr/share/icons/hicolor/16x16/apps/$id.png
./usr/share/icons/hicolor/256x256/apps/$id.png
./usr/share/icons/hicolor/32x32/apps/$id.png
./usr/share/icons/hicolor/48x48/apps/$id.png
./usr/share/icons/hicolor/64x64/apps/$id.png
./usr/share/icons/hicolor/scalable/apps/$id.svg
./usr/share/man/man1/feedbackagent.1.gz
./usr/share/metainfo/$id.metainfo.xml
./usr/share/qt5/translations/feedback_de.qm
LIST
)
files=$(dpkg-deb --fsys-tarfile "$deb" | tar -t | grep -v '/$' | sort)
if [ "$files" != "$expected" ]; then
    echo "package: the files differ from the expected list:" >&2
    diff <(echo "$expected") <(echo "$files") >&2 || true
    exit 1
fi
echo "package: $(echo "$files" | wc -l) files, as expected"

depends=$(dpkg-deb --field "$deb" Depends)
echo "package: Depends: $depends"
for library in libqt5widgets5 libqt5network5 libqt5gui5 libqt5core5a libc6; do
    grep -q "$library" <<<"$depends" || { echo "package: no dependency on $library" >&2; exit 1; }
done

recommends=$(dpkg-deb --field "$deb" Recommends)
echo "package: Recommends: $recommends"
[ "$recommends" = "qtwayland5, xdg-desktop-portal, qttranslations5-l10n" ] ||
    { echo "package: the recommendations are not the Wayland and translation packages" >&2; exit 1; }

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb -x "$deb" "$unpacked"
desktop-file-validate "$unpacked/usr/share/applications/$id.desktop"
appstreamcli validate --no-net "$unpacked/usr/share/metainfo/$id.metainfo.xml"

# Errors fail the lane; warnings and notes are printed, for the reasons in the README.
lintian --fail-on error --info --display-level ">=warning" "$deb"
echo "package: lintian reports no error"

# What a user does with it: install it into a clean Debian 12 root, open a kvfb:// link,
# remove it again. Needs root (chroot and mount) and an X server, which the lane makes.
bash tools/run-under-x.sh bash tools/package-install-test.sh "$deb"
