#!/usr/bin/env bash
# Puts the Linux bundle where hosts look for the plug-ins of one user.
#
#   packaging/install.sh BUNDLE [FOLDER]
#
# FOLDER is ~/.vst unless it is given. A bundle that is there already is replaced as a whole.
set -euo pipefail

die() {
    printf '%s\n' "install: $*" >&2
    exit 2
}

[ $# -eq 1 ] || [ $# -eq 2 ] || die "one or two arguments are needed: BUNDLE [FOLDER]"
bundle=$1
[ -f "$bundle"/Contents/x86_64-linux/TvDelay.so ] ||
    die "$bundle is no Linux bundle; ./dev build makes build/linux/TvDelay.vst"
if [ $# -eq 2 ]; then
    folder=$2
else
    [ -n "${HOME:-}" ] || die "HOME is not set; name the folder to install into"
    folder=$HOME/.vst
fi
mkdir -p "$folder" 2>/dev/null || die "the folder $folder can't be made"

# Hosts that have the old one open keep its files.
incoming=$(mktemp -d "$folder"/.TvDelay.XXXXXX)
trap 'rm -rf "$incoming"' EXIT
cp -R "$bundle" "$incoming"/new
[ ! -e "$folder"/TvDelay.vst ] || mv "$folder"/TvDelay.vst "$incoming"/old
mv "$incoming"/new "$folder"/TvDelay.vst
printf '%s\n' "$folder/TvDelay.vst"
