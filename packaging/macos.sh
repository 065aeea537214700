#!/usr/bin/env bash
# Packs the macOS bundle for release.
#
#   packaging/macos.sh BUNDLE FOLDER
#
# leaves TvDelay-VERSION-macos-x86_64.zip in FOLDER and prints its path.
set -euo pipefail
. "$(dirname "$0")"/archive.sh

[ $# -eq 2 ] || die "two arguments are needed: BUNDLE FOLDER"
bundle=$1
[ -f "$bundle"/Contents/MacOS/TvDelay ] ||
    die "$bundle is not a macOS bundle; ./dev mac makes build/macos/TvDelay.vst"
need_tools zip
begin "$2"

name=TvDelay-$version-macos-x86_64
mkdir "$staging/$name"
cp -R "$bundle" "$staging/$name"/TvDelay.vst
cp "$source_folder"/README.md "$source_folder"/LICENSE "$staging/$name"
printf '%s\n' "mkdir -p ~/Library/Audio/Plug-Ins/VST && cp -R TvDelay.vst ~/Library/Audio/Plug-Ins/VST/" \
    >"$staging/$name"/INSTALL
even_out "$name" TvDelay.vst/Contents/MacOS/TvDelay
(cd "$staging" && find "$name" -type f | sort | zip -q -9 -X -@ "$name.zip")

mv "$staging/$name.zip" "$folder"
printf '%s\n' "$folder/$name.zip"
