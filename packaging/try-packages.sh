#!/usr/bin/env bash
# Installs Debian packages into a fresh system, uses them, and removes them again. For root, with a
# network; takes some minutes.
#
#   packaging/try-packages.sh FOLDER [SUITE]
#
# FOLDER holds the packages of packaging/debian.sh; SUITE is the Debian to try them on, bookworm unless
# it is given. ROOT=FOLDER in the environment names a system that is there already, as debootstrap
# makes one; without it one is made and deleted.
set -euo pipefail

die() {
    printf '%s\n' "try-packages: $*" >&2
    exit 2
}

[ $# -eq 1 ] || [ $# -eq 2 ] || die "one or two arguments are needed: FOLDER [SUITE]"
suite=${2:-bookworm}
packages=("$1"/tvdelay_*.deb "$1"/tvdelay-soundlib-dev_*.deb)
[ ${#packages[@]} -eq 2 ] && [ -f "${packages[0]}" ] && [ -f "${packages[1]}" ] ||
    die "$1 does not hold one tvdelay_*.deb and one tvdelay-soundlib-dev_*.deb; packaging/debian.sh makes them"
[ "$(id -u)" -eq 0 ] || die "only root can make and enter a system of its own"
source_folder=$(cd "$(dirname "$0")/.." && pwd)

root=${ROOT:-}
if [ -z "$root" ]; then
    command -v debootstrap >/dev/null || die "there is no debootstrap; the Debian package of that name has it"
    root=$(mktemp -d)
    chmod 755 "$root" # apt fetches as a user of its own
    trap 'umount "$root"/proc 2>/dev/null; rm -rf --one-file-system "$root"' EXIT
    echo "Making a system of $suite in $root"
    debootstrap --variant=minbase "$suite" "$root" >"$root".log || die "debootstrap failed; see $root.log"
    rm "$root".log
fi

here=/tmp/try-packages
rm -rf "$root$here"
mkdir "$root$here"
cp "${packages[@]}" "$root$here"

# The manual's own program, by the manual's own lines.
block() { # PAGE LANGUAGE MARK: the fenced block of that language that holds MARK
    awk -v fence='```'"$2" -v mark="$3" '
        $0 == "```" && inside { if (block ~ mark) { printf "%s", block; exit } inside = 0 }
        inside { block = block $0 "\n" }
        $0 == fence { inside = 1; block = "" }' "$source_folder/docs/$1.md"
}
mkdir "$root$here"/echoes
block soundlib cmake find_package >"$root$here"/echoes/CMakeLists.txt
block soundlib-wav-reader cpp 'int main' >"$root$here"/echoes/echoes.cpp

cat >"$root$here"/try <<'END'
set -eu
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
# list FILE: all files but those that the package system keeps for itself.
list() {
    find / -xdev \( -path /proc -o -path /tmp -o -path /var/cache -o -path /var/lib/apt -o -path /var/log \
        -o -path /var/lib/dpkg \) -prune -o -type f -print | sort >"$1"
}
# quietly COMMAND: tells what it says only where it fails.
quietly() {
    "$@" >said 2>&1 || { cat said >&2; exit 1; }
}
cd /tmp/try-packages
apt-get update -qq
quietly apt-get install -y -qq --no-install-recommends cmake ninja-build g++
quietly apt-get install -y -qq --no-install-recommends ./*.deb
tvhost info | head -n 5
tvhost render --help >/dev/null
cmake -G Ninja -S echoes -B build >/dev/null
cmake --build build >/dev/null
(cd build && ./echoes)
quietly apt-get purge -y -qq tvdelay tvdelay-soundlib-dev
quietly apt-get autoremove --purge -y -qq
list after
if grep -i -E 'tvdelay|tvhost|TvDelay' after; then
    echo "these files of the packages are left" >&2
    exit 1
fi
END
mountpoint -q "$root"/proc || mount -t proc proc "$root"/proc
status=0
# What the caller has set, a compiler's launcher say, is no part of a fresh system.
env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root ${http_proxy:+"http_proxy=$http_proxy"} \
    chroot "$root" sh "$here"/try || status=1
rm -rf "$root$here"
[ $status -eq 0 ] || die "the packages failed on $suite"
echo "The packages install, work and go away on $suite."
