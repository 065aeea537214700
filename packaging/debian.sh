#!/usr/bin/env bash
# Makes Debian packages of what CMake built in BUILD, for the Debian that this runs on.
#
#   packaging/debian.sh BUILD FOLDER
#
# leaves tvdelay_VERSION_amd64.deb and tvdelay-soundlib-dev_VERSION_amd64.deb in FOLDER, whose version
# ends in the system's, as in 1.0.0+deb12, and prints their paths. SOURCE_DATE_EPOCH dates them; without
# it they bear the date of the archives.
set -euo pipefail
. "$(dirname "$0")"/archive.sh

[ $# -eq 2 ] || die "two arguments are needed: BUILD FOLDER"
[ -f "$1"/TvDelay.vst/Contents/x86_64-linux/TvDelay.so ] && [ -f "$1"/tvhost ] ||
    die "$1 does not hold the built plug-in and tvhost; ./dev build makes them in build/linux"
build=$(cd "$1" && pwd)
system=$(. /etc/os-release && printf '%s%s' "$ID" "${VERSION_ID:-}")
case $system in
debian[0-9]*) ;;
*) die "this is $system; packages are made on the Debian that they are for" ;;
esac
command -v dh >/dev/null || die "there is no dh; the Debian package debhelper has it"
need_tools cmake dpkg-deb strip
begin "$2"

tree=$staging/tvdelay
mkdir "$tree"
cp -R "$source_folder"/packaging/debian "$tree"/debian
full_version=$version+deb${system#debian}
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$timestamp}
cat >"$tree"/debian/changelog <<END
tvdelay ($full_version) unstable; urgency=medium

  * Version $version; the changes are told in changelog.gz.

 -- $(sed -n 's/^Maintainer: //p' "$tree"/debian/control)  $(date -R -d "@$SOURCE_DATE_EPOCH")
END
sed 's/^$/./; s/^/ /' "$source_folder"/LICENSE | sed '1,4d' >"$staging"/license
sed -e "/@LICENSE@/{r $staging/license
d}" "$tree"/debian/copyright.in >"$tree"/debian/copyright
rm "$tree"/debian/copyright.in
for page in README.md docs; do
    cp -R "$source_folder/$page" "$tree"
done
printf '%s\n' README.md docs >"$tree"/debian/tvdelay.docs

(cd "$tree" && BUILD=$build SOURCE=$source_folder ./debian/rules binary) >"$staging"/log 2>&1 ||
    { cat "$staging"/log >&2; die "the packages could not be made"; }
for package in "$staging"/*.deb; do
    mv "$package" "$folder"
    printf '%s\n' "$folder/$(basename "$package")"
done
