#!/usr/bin/env bash
# Packs the Linux bundle and tvhost, as CMake built them in BUILD, for the system that this runs on.
#
#   packaging/linux.sh BUILD FOLDER
#
# leaves TvDelay-VERSION-SYSTEM-x86_64.tar.gz in FOLDER, as in TvDelay-1.0.0-debian12-x86_64.tar.gz,
# and prints its path.
set -euo pipefail
. "$(dirname "$0")"/archive.sh

[ $# -eq 2 ] || die "two arguments are needed: BUILD FOLDER"
build=$1
[ -f "$build"/TvDelay.vst/Contents/x86_64-linux/TvDelay.so ] && [ -f "$build"/tvhost ] ||
    die "$build does not hold the built plug-in and tvhost; ./dev build makes them in build/linux"
need_tools cmake objdump strip tar gzip dpkg-query
begin "$2"

system=$(. /etc/os-release && printf '%s%s' "$ID" "${VERSION_ID:-}")
system_name=$(. /etc/os-release && printf '%s %s' "${NAME% GNU/Linux}" "${VERSION_ID:-}")
name=TvDelay-$version-$system-x86_64

for component in plugin tvhost; do
    cmake --install "$build" --component $component --strip --prefix "$staging/installed" >/dev/null
done
mkdir "$staging/$name"
(cd "$staging"/installed && mv lib/vst/TvDelay.vst bin/tvhost lib/tvhost/tvhost-watch.so \
    share/man/man1/tvhost.1 "$staging/$name")
cp "$source_folder"/LICENSE "$staging/$name"

# packages_of FILE ...: those that hold the libraries which the files ask for.
packages_of() {
    objdump -p "$@" | awk '$1 == "NEEDED" { print $2 }' | sort -u | while read -r library; do
        dpkg-query -S "*/x86_64-linux-gnu/$library" 2>/dev/null || dpkg-query -S "/usr/lib/$library"
    done | sed 's/:.*//' | sort -u | grep -v '^libc6$' | paste -s -d ' '
}
plugin_packages=$(packages_of "$staging/$name"/TvDelay.vst/Contents/x86_64-linux/TvDelay.so)
tvhost_packages=$(packages_of "$staging/$name"/tvhost)
gnustep=$(grep -o 'libgnustep-gui[0-9.]*' <<<"$plugin_packages")
plugin_packages+=" gnustep-back${gnustep#libgnustep-gui}-cairo"
sed -e "s/@SYSTEM@/$system_name/" -e "s/@VERSION@/$version/" \
    -e "s/@PLUGIN_PACKAGES@/$plugin_packages/" -e "s/@TVHOST_PACKAGES@/$tvhost_packages/" \
    "$source_folder"/packaging/README.linux.in >"$staging/$name"/README

even_out "$name" tvhost TvDelay.vst/Contents/x86_64-linux/TvDelay.so
tar --create --directory="$staging" --format=ustar --sort=name --mtime="@$timestamp" \
    --owner=0 --group=0 --numeric-owner "$name" | gzip -9 --no-name >"$staging/$name.tar.gz"

mv "$staging/$name.tar.gz" "$folder"
printf '%s\n' "$folder/$name.tar.gz"
