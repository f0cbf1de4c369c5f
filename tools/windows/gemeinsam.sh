# What all parts of the Windows build share: the places of the cache, the private package lists, the record of what is
# built already. Read by the other scripts of this folder, not run.
set -euo pipefail

WINDOWS=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")" && pwd)
PROJECT=$(cd "$WINDOWS/../.." && pwd)
CACHE=${KOBEN_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/koben-windows}
SOURCES=$CACHE/quellen    # what is fetched: sources, unpacked and patched
WORK=$CACHE/bau           # build folders; may be thrown away
INST=$CACHE/inst          # what is built for Windows: headers, libraries, DLLs, plugins
DONE=$CACHE/fertig        # one file for each library: the sum of its recipe and version
OUT=$PROJECT/build/windows
TOOLCHAIN=$WINDOWS/werkzeug.cmake
TRIPLET=x86_64-w64-mingw32
JOBS=${KOBEN_WINDOWS_JOBS:-$(nproc)}
MULTIARCH=$(dpkg-architecture -qDEB_HOST_MULTIARCH 2>/dev/null || echo x86_64-linux-gnu)

export KOBEN_WINDOWS_INST=$INST
export PKG_CONFIG_LIBDIR=$INST/lib/pkgconfig
# Times and paths of this machine stay out of what is built: two builds are the same.
export SOURCE_DATE_EPOCH=1700000000 QT_RCC_SOURCE_DATE_OVERRIDE=1700000000
REPRODUCIBLE="-ffile-prefix-map=$CACHE=. -ffile-prefix-map=$PROJECT=."

say() { printf '%s\n' "$*"; }
fail() {
    printf 'koben windows: %s\n' "$*" >&2
    exit 1
}

mkdir -p "$CACHE" "$SOURCES" "$WORK" "$INST" "$DONE"

# apt with lists and sources of its own, below the cache: the machine's own package lists stay as they are.
APT=(-o Dir::State::lists="$CACHE/listen" -o Dir::Cache="$CACHE/listen" -o Dir::Etc::sourcelist="$CACHE/quellen.list"
    -o Dir::Etc::sourceparts=/dev/null -o "APT::Sandbox::User=$(id -un)")

# The deb-src twins of the machine's own Debian sources.
list_sources() {
    mkdir -p "$CACHE/listen/partial" "$CACHE/listen/archives/partial"
    local release
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    local key=/usr/share/keyrings/debian-archive-keyring.gpg
    cat >"$CACHE/quellen.list" <<LIST
deb-src [signed-by=$key] ${KOBEN_DEBIAN:-$(apt-get indextargets --format '$(REPO_URI)' 'Codename: bookworm' | head -n 1)} $release main
deb-src [signed-by=$key] ${KOBEN_DEBIAN:-$(apt-get indextargets --format '$(REPO_URI)' 'Codename: bookworm' | head -n 1)} $release-updates main
deb-src [signed-by=$key] ${KOBEN_DEBIAN_SECURITY:-$(apt-get indextargets --format '$(REPO_URI)' 'Codename: bookworm-security' | head -n 1)} $release-security main
LIST
    apt-get "${APT[@]}" update -qq
}

# The sum that names one library's build: its version, its script and patches, the compiler.
recipe_sum() {  # VERSION FILE...
    local version=$1
    shift
    { echo "$version"; cat "$@" "$TOOLCHAIN" 2>/dev/null; $TRIPLET-g++-posix -dumpfullversion; } | sha256sum | cut -d' ' -f1
}
is_built() { [ -f "$DONE/$1" ] && [ "$(cat "$DONE/$1")" = "$2" ]; }  # NAME SUM
built() { echo "$2" >"$DONE/$1"; }
