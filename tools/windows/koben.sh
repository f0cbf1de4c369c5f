#!/usr/bin/env bash
# Builds KOBEN for Windows into build/windows/bau: koben.sh [TARGET...], the program alone where none is named.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"

SOURCE_DATE_EPOCH=$(git -C "$PROJECT" log -1 --format=%ct 2>/dev/null || echo $SOURCE_DATE_EPOCH)
QT_RCC_SOURCE_DATE_OVERRIDE=$SOURCE_DATE_EPOCH
[ $# -gt 0 ] || set -- koben
tests=OFF
[ ! -f "$DONE/GoogleTest" ] || tests=ON
mkdir -p "$OUT"
log=$OUT/einrichten.log
cmake -G Ninja -S "$PROJECT" -B "$OUT/bau" -DCMAKE_TOOLCHAIN_FILE="$TOOLCHAIN" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_CXX_FLAGS_RELEASE=-O2 -DCMAKE_CXX_FLAGS="$REPRODUCIBLE" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$MULTIARCH/cmake" -DKOBEN_WERROR=ON -DKOBEN_BENCH=ON -DKOBEN_TESTS=$tests >"$log" 2>&1 ||
    { tail -20 "$log" >&2; fail "KOBEN lässt sich für Windows nicht einrichten."; }
ninja -C "$OUT/bau" -j"$JOBS" "$@"
