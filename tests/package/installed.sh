#!/usr/bin/env bash
# installed.sh BUILD VERSION: makes the package, lets the distribution's own check look at it, unpacks it into a scratch root, and starts what lies there, headlessly and as
# somebody who has never started it. The program folder of that user must then hold all that was delivered.
set -euo pipefail
build=$1
version=$2
place=$(mktemp -d)
trap 'chmod -R u+w "$place"; rm -rf "$place"' EXIT
fail() {
    echo "$1" >&2
    exit 1
}

(cd "$build" && cpack -B "$place/made") >"$place/cpack.log" || { cat "$place/cpack.log" >&2; exit 1; }
package=$(echo "$place"/made/*.deb)
depends=$(dpkg-deb --field "$package" Depends)
for library in libqt6widgets6 libqt6svg6 libqt6printsupport6 libpq5 libxlsxwriter liborcus libc6; do
    grep -q "$library" <<<"$depends" || fail "the package does not ask for $library: $depends"
done
lintian --allow-root --fail-on error,warning "$package" || fail "lintian is not content with the package"
dpkg-deb --extract "$package" "$place/root"
for file in bin/tarvello lib/tarvello/Tarvello lib/tarvello/Tarvello.mdb lib/tarvello/Tarvello.hlp \
    lib/tarvello/tipoftheday.txt share/applications/tarvello.desktop share/icons/hicolor/scalable/apps/tarvello.svg \
    share/bash-completion/completions/tarvello-data \
    bin/tarvello-data share/man/man1/tarvello.1.gz share/man/man1/tarvello-data.1.gz share/doc/tarvello/server.md \
    share/doc/tarvello/copyright share/doc/tarvello/changelog.gz share/metainfo/tarvello.metainfo.xml \
    share/icons/hicolor/{16x16,22x22,24x24,32x32,48x48,64x64,128x128,256x256}/apps/tarvello.png; do
    [ -e "$place/root/usr/$file" ] || fail "the package has no $file"
done
latest=$(zcat "$place/root/usr/share/doc/tarvello/changelog.gz" | head -n 1)
[[ $latest == "tarvello ($version) "* ]] || fail "the changelog begins with \"$latest\", and this is $version"
grep -q "<release version=\"$version\"" "$place/root/usr/share/metainfo/tarvello.metainfo.xml" ||
    fail "software centres are not told of $version"
[ -z "$(find "$place/root" -name 'libsqlcipher*')" ] || fail "the record store is linked in, not delivered"
for verb in check compact copy export import import-products move queries repair; do
    "$place/root/usr/bin/tarvello-data" "$verb" --help >/dev/null || fail "the packaged tarvello-data knows no $verb"
done
delivered=$place/root/usr/lib/tarvello/Tarvello.mdb
env -u DISPLAY -u WAYLAND_DISPLAY "$place/root/usr/bin/tarvello-data" export "$delivered" "$place/books.xlsx" >/dev/null ||
    fail "the packaged tarvello-data writes no workbook"

mkdir -p "$place/home" "$place/pictures"
find "$place/root" -type d -exec chmod a-w {} +
before=$(cd "$place/root" && find . -type f -exec sha256sum {} + | sort)
env -u XDG_DATA_HOME -u XDG_CONFIG_HOME -u LC_ALL HOME="$place/home" LANG=C.UTF-8 XDG_RUNTIME_DIR="$place" \
    LC_NUMERIC=en_GB.UTF-8 LC_TIME=en_GB.UTF-8 LC_MONETARY=en_GB.UTF-8 \
    QT_QPA_PLATFORM=offscreen QT_PLUGIN_PATH="$build/walk" QT_QPA_GENERIC_PLUGINS="walk:first:$place/pictures:1" \
    QT_LOGGING_RULES="*.debug=false;qt.qpa.*=false;default.warning=false" \
    timeout 300 "$place/root/usr/bin/tarvello" || fail "the installed program ended with $?"

own=$place/home/.local/share/Tarvello
for file in Tarvello.mdb Tarvello.hlp tipoftheday.txt Tarvello.bkp; do
    [ -f "$own/$file" ] || fail "the user's program folder has no $file"
done
cmp -s "$own/Tarvello.mdb" "$place/root/usr/lib/tarvello/Tarvello.mdb" && fail "nothing was written into the user's records"
after=$(cd "$place/root" && find . -type f -exec sha256sum {} + | sort)
[ "$before" = "$after" ] || fail "the program has written into the folder where it is installed"
echo "installed, started, and left its folder as it was"
