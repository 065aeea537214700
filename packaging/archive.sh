# What the scripts that pack archives share; they source it. The same products give the same bytes,
# whoever packs them, when and where.
export LC_ALL=C TZ=UTC
umask 022
source_folder=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
version=$(head -n 1 "$source_folder"/VERSION)

# The time that all files in the archives bear: 2020-01-01.
timestamp=1577836800

die() {
    printf '%s\n' "$(basename "$0" .sh): $*" >&2
    exit 2
}

need_tools() {
    local tool
    for tool in "$@"; do
        command -v "$tool" >/dev/null || die "there is no $tool; the Debian packages binutils, tar, gzip and zip have what is needed"
    done
}

# begin FOLDER: makes it, and $staging in it for as long as the script runs.
begin() {
    mkdir -p "$1" 2>/dev/null || die "the folder $1 can't be made"
    folder=$(cd "$1" && pwd)
    staging=$(mktemp -d "$folder"/staging.XXXXXX)
    trap 'rm -rf "$staging"' EXIT
}

# even_out NAME EXECUTABLE ...: the same permissions and times for all below $staging/NAME.
even_out() {
    local root=$staging/$1 executable
    shift
    find "$root" -type d -exec chmod 755 {} +
    find "$root" -type f -exec chmod 644 {} +
    for executable in "$@"; do
        chmod 755 "$root/$executable"
    done
    find "$root" -exec touch -h -d "@$timestamp" {} +
}
