#!/usr/bin/env bash
# Fetches the sources of one Debian source package into the cache, unpacked, with the patches of this folder:
# holen.sh PACKAGE [VERSION]. Prints "FOLDER VERSION". What is there is not fetched again. Of a package in PLAIN the
# upstream archive alone will do, where the package archive has mislaid Debian's changes to it.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"

PLAIN=" qrencode "
package=$1
[ -f "$CACHE/quellen.list" ] || list_sources >&2
version=${2:-$(apt-cache "${APT[@]}" showsrc --only-source "$package" 2>/dev/null | sed -n 's/^Version: //p' | sort -V | tail -1)}
[ -n "$version" ] || fail "Das Quellpaket $package ist im Paketarchiv nicht zu finden."

patches=("$WINDOWS/$package"-*.patch)
[ -e "${patches[0]}" ] || patches=()
sum=$(cat "${patches[@]}" /dev/null | sha256sum | cut -c1-8)
folder=$SOURCES/$package-${version//[:~]/_}-$sum
if [ ! -d "$folder" ]; then
    rm -rf "$folder.neu" && mkdir -p "$folder.neu"
    fetch() { (cd "$folder.neu" && apt-get "${APT[@]}" source -qq -y --only-source "$@" "$package=$version" >&2); }
    if ! fetch; then
        [[ $PLAIN == *" $package "* ]] && fetch --tar-only --download-only ||
            fail "Das Quellpaket $package $version lässt sich nicht laden."
        tar -C "$folder.neu" -xf "$folder.neu"/*.orig.tar.*
    fi
    tree=$(find "$folder.neu" -mindepth 1 -maxdepth 1 -type d | head -1)
    [ -n "$tree" ] || fail "Das Quellpaket $package $version ließ sich nicht auspacken."
    for patch in "${patches[@]}"; do
        patch -d "$tree" -p1 -s <"$patch" >&2 || fail "Die Änderung $(basename "$patch") passt nicht zu $package $version."
    done
    mv "$tree" "$folder" && rm -rf "$folder.neu"
fi
echo "$folder $version"
