#!/usr/bin/env bash
# Builds the small libraries for Windows into the cache: SQLite, libxlsxwriter, libzip, libqrencode,
# cpp-httplib; with "test" GoogleTest, too. A minute and a half together; each only when its version or this recipe has changed.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"

# NAME PACKAGE BUILDER: BUILDER is run in an empty folder with $source.
library() {
    local name=$1 package=$2 builder=$3 version sum
    read -r source version < <("$WINDOWS/holen.sh" "$package")
    sum=$(recipe_sum "$version" "$WINDOWS/bibliotheken.sh" "$WINDOWS/$package"-*.patch)
    is_built "$name" "$sum" && return
    say "$name $version wird für Windows gebaut."
    rm -rf "${WORK:?}/$name"
    mkdir -p "$WORK/$name"
    (cd "$WORK/$name" && "$builder" >build.log 2>&1) || { tail -30 "$WORK/$name/build.log" >&2; fail "$name lässt sich nicht bauen."; }
    built "$name" "$sum"
    rm -rf "${WORK:?}/$name"
}

with_cmake() {  # OPTION...
    cmake -G Ninja -S "$source" -B . -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_C_FLAGS="$REPRODUCIBLE" -DCMAKE_CXX_FLAGS="$REPRODUCIBLE" -DCMAKE_INSTALL_PREFIX="$INST" "$@"
    ninja -j"$JOBS" install
}

# A static library says here what it needs itself.
describe() {  # NAME VERSION LIBS
    mkdir -p "$INST/lib/pkgconfig"
    printf '%s\n' 'prefix=${pcfiledir}/../..' "Name: $1" "Description: $1" "Version: $2" \
        "Libs: -L\${prefix}/lib $3" 'Cflags: -I${prefix}/include' >"$INST/lib/pkgconfig/$1.pc"
}

# Debian's own options for SQLite, so that both systems understand the same statements; what an amalgamation made
# without its generator cannot have (limits in UPDATE and DELETE) and FTS3's extras are left out, KOBEN uses neither.
SQLITE=(SECURE_DELETE ENABLE_COLUMN_METADATA SOUNDEX=1 ENABLE_UNLOCK_NOTIFY OMIT_LOOKASIDE=1 ENABLE_DBSTAT_VTAB
    ALLOW_ROWID_IN_VIEW ENABLE_LOAD_EXTENSION LIKE_DOESNT_MATCH_BLOBS THREADSAFE=1 USE_URI=1 MAX_SCHEMA_RETRY=25
    ENABLE_PREUPDATE_HOOK ENABLE_SESSION ENABLE_STMTVTAB MAX_VARIABLE_NUMBER=250000 MAX_DEFAULT_PAGE_SIZE=32768
    ENABLE_MATH_FUNCTIONS ENABLE_FTS4 ENABLE_FTS5 ENABLE_RTREE=1)
sqlite() {
    "$source/configure" --disable-tcl --disable-readline --build=x86_64-linux-gnu
    make sqlite3.c
    $TRIPLET-gcc-posix -O2 -fno-strict-aliasing $REPRODUCIBLE "${SQLITE[@]/#/-DSQLITE_}" -c sqlite3.c
    mkdir -p "$INST/lib" "$INST/include"
    rm -f "$INST/lib/libsqlite3.a"
    $TRIPLET-ar rcsD "$INST/lib/libsqlite3.a" sqlite3.o
    cp sqlite3.h "$INST/include/"
    describe sqlite3 "$(cat "$source/VERSION")" -lsqlite3
}

xlsxwriter() {
    with_cmake -DBUILD_SHARED_LIBS=OFF
    describe xlsxwriter 1 "-lxlsxwriter -lz"
}

zip() {
    local options=(-DBUILD_SHARED_LIBS=OFF)
    for part in BUILD_TOOLS BUILD_REGRESS BUILD_EXAMPLES BUILD_DOC ENABLE_BZIP2 ENABLE_LZMA ENABLE_OPENSSL ENABLE_GNUTLS \
        ENABLE_MBEDTLS ENABLE_COMMONCRYPTO ENABLE_WINDOWS_CRYPTO; do options+=("-D$part=OFF"); done
    with_cmake "${options[@]}"
    describe libzip 1.7 "-lzip -lz -ladvapi32"
}

# LGPL: a DLL of its own, which can be exchanged.
qrencode() {
    with_cmake -DBUILD_SHARED_LIBS=ON -DWITH_TOOLS=NO -DWITH_TESTS=NO -DWITHOUT_PNG=ON
    describe libqrencode 4.1 -lqrencode
}

# A header alone, without encryption and compression; the sockets are the system's.
httplib() {
    mkdir -p "$INST/include"
    cp "$source/httplib.h" "$INST/include/"
    describe cpp-httplib 0.11.4 "-liphlpapi -lws2_32"
}

googletest() {
    source=/usr/src/googletest with_cmake -DBUILD_GMOCK=ON -DINSTALL_GTEST=ON -DBUILD_SHARED_LIBS=OFF
}

library SQLite sqlite3 sqlite
library libxlsxwriter libxlsxwriter xlsxwriter
library libzip libzip zip
library libqrencode qrencode qrencode
library cpp-httplib cpp-httplib httplib

[ "${1:-}" = test ] || exit 0
version=$(dpkg-query -W -f '${Version}' googletest)
sum=$(recipe_sum "$version" "$WINDOWS/bibliotheken.sh")
if ! is_built GoogleTest "$sum"; then
    say "GoogleTest $version wird für Windows gebaut."
    rm -rf "$WORK/gtest" && mkdir -p "$WORK/gtest"
    (cd "$WORK/gtest" && googletest >build.log 2>&1) || { tail -30 "$WORK/gtest/build.log" >&2; fail "GoogleTest lässt sich nicht bauen."; }
    built GoogleTest "$sum"
    rm -rf "$WORK/gtest"
fi
