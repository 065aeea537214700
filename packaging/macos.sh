#!/usr/bin/env bash
# Packs the macOS bundle for release.
#
#   packaging/macos.sh BUNDLE MAC_CHECK FOLDER
#
# MAC_CHECK is the program that checks the bundle on Macs. Leaves TvDelay-VERSION-macos-x86_64.zip in FOLDER and prints its path.
set -euo pipefail
. "$(dirname "$0")"/archive.sh

[ $# -eq 3 ] || die "three arguments are needed: BUNDLE MAC_CHECK FOLDER"
bundle=$1
check=$2
[ -f "$bundle"/Contents/MacOS/TvDelay ] ||
    die "$bundle is not a macOS bundle; ./dev mac makes build/macos/TvDelay.vst"
[ "$(head -c 4 "$check" 2>/dev/null | od -An -tx1)" = " cf fa ed fe" ] ||
    die "$check is not a program for macOS; ./dev mac makes build/macos/mac-check/mac-check"
need_tools zip
begin "$3"

name=TvDelay-$version-macos-x86_64
mkdir "$staging/$name"
cp -R "$bundle" "$staging/$name"/TvDelay.vst
cp "$check" "$staging/$name"/mac-check
cp "$source_folder"/packaging/README.macos "$staging/$name"/README.txt
cp "$source_folder"/LICENSE "$staging/$name"
even_out "$name" mac-check TvDelay.vst/Contents/MacOS/TvDelay
(cd "$staging" && find "$name" -type f | sort | zip -q -9 -X -@ "$name.zip")

mv "$staging/$name.zip" "$folder"
printf '%s\n' "$folder/$name.zip"
