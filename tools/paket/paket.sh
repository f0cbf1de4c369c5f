#!/usr/bin/env bash
# Makes the Debian package of a build tree, one of a lower version for the trial of an upgrade, and the update server's
# list; checks the package.
#   paket.sh BUILDTREE FOLDER
set -euo pipefail
tree=$(realpath "$1") folder=$(realpath -m "$2")
here=$(dirname "$(realpath "$0")")
list=$here/../../docs/aenderungen.txt

cmake --build "$tree" --target paketdateien
made=$tree/paketdateien
desktop-file-validate "$made/koben.desktop"
appstreamcli validate --no-net "$made/koben.metainfo.xml"

pack() {  # FOLDER [CPACK OPTION...]
    local to=$1
    shift
    rm -rf "$to"
    (umask 022 && cd "$tree" && cpack -B "$to" "$@" >"$tree/cpack.log" 2>&1) || { cat "$tree/cpack.log"; exit 1; }
    rm -rf "$to/_CPack_Packages"
}
pack "$folder"
pack "$folder/aelter" -D CPACK_PACKAGE_VERSION=2.0.0
cp "$list" "$folder/daten.txt"

lintian --allow-root --fail-on error --tag-display-limit 0 "$folder"/koben_*.deb
echo "Das Paket liegt in $folder: $(basename "$folder"/koben_*.deb)"
echo "Die Liste für den Server der Updates liegt daneben: daten.txt"
