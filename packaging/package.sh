#!/usr/bin/env bash
# Packs both bundles for release. The same bundles give the same bytes, whoever packs them, when and
# where.
#
#   packaging/package.sh LINUX_BUNDLE MACOS_BUNDLE FOLDER
#
# leaves TvDelay-VERSION-linux-x86_64.tar.gz and TvDelay-VERSION-macos-x86_64.zip in FOLDER.
set -euo pipefail
export LC_ALL=C TZ=UTC
umask 022
source_folder=$(cd "$(dirname "$0")/.." && pwd)

# The time that all files in the archives bear: 2020-01-01.
timestamp=1577836800

die() {
    printf '%s\n' "package: $*" >&2
    exit 2
}

[ $# -eq 3 ] || die "three arguments are needed: LINUX_BUNDLE MACOS_BUNDLE FOLDER"
linux_bundle=$1
macos_bundle=$2
[ -f "$linux_bundle"/Contents/x86_64-linux/TvDelay.so ] ||
    die "$linux_bundle is no Linux bundle; ./dev build makes build/linux/TvDelay.vst"
[ -f "$macos_bundle"/Contents/MacOS/TvDelay ] ||
    die "$macos_bundle is no macOS bundle; ./dev mac makes build/macos/TvDelay.vst"
mkdir -p "$3" 2>/dev/null || die "the folder $3 can't be made"
folder=$(cd "$3" && pwd)
for tool in strip tar gzip zip; do
    command -v "$tool" >/dev/null || die "there is no $tool; the Debian packages binutils, tar, gzip and zip have what is needed"
done

version=$(head -n 1 "$source_folder"/VERSION)
staging=$(mktemp -d "$folder"/staging.XXXXXX)
trap 'rm -rf "$staging"' EXIT

# lay_out NAME BUNDLE EXECUTABLE INSTALL_LINE: what goes into one archive, under $staging/NAME.
lay_out() {
    local root=$staging/$1
    mkdir -p "$root"
    cp -R "$2" "$root"/TvDelay.vst
    cp "$source_folder"/README.md "$source_folder"/LICENSE "$root"
    printf '%s\n' "$4" >"$root"/INSTALL
    find "$root" -type d -exec chmod 755 {} +
    find "$root" -type f -exec chmod 644 {} +
    chmod 755 "$root/TvDelay.vst/$3"
}

set_times() {
    find "$staging/$1" -exec touch -h -d "@$timestamp" {} +
}

linux=TvDelay-$version-linux-x86_64
lay_out "$linux" "$linux_bundle" Contents/x86_64-linux/TvDelay.so \
    "mkdir -p ~/.vst && cp -r TvDelay.vst ~/.vst/"
strip --strip-unneeded "$staging/$linux"/TvDelay.vst/Contents/x86_64-linux/TvDelay.so
set_times "$linux"
tar --create --directory="$staging" --format=ustar --sort=name --mtime="@$timestamp" \
    --owner=0 --group=0 --numeric-owner "$linux" | gzip -9 --no-name >"$staging/$linux.tar.gz"

macos=TvDelay-$version-macos-x86_64
lay_out "$macos" "$macos_bundle" Contents/MacOS/TvDelay \
    "mkdir -p ~/Library/Audio/Plug-Ins/VST && cp -R TvDelay.vst ~/Library/Audio/Plug-Ins/VST/"
set_times "$macos"
(cd "$staging" && find "$macos" -type f | sort | zip -q -9 -X -@ "$macos.zip")

mv "$staging/$linux.tar.gz" "$staging/$macos.zip" "$folder"
printf '%s\n' "$folder/$linux.tar.gz" "$folder/$macos.zip"
