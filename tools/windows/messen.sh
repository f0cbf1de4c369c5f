#!/usr/bin/env bash
# Measures the program under Wine beside the same on this machine, one after the other, and the size of the setup.
. "$(dirname "$(readlink -f "$0")")/wine.sh"

sows=${KOBEN_WINDOWS_SAUEN:-1000}
rows='list: everything|start to shown|closing the frame, one service|closing the frame, new|service saved for 1|farrowing saved for 1|import'
options=(--ohne-boden --sauen "$sows" --jahre 5 --mal 5 --nur "$rows")
cmake --preset bench >"$OUT/bench.log" 2>&1 && cmake --build --preset bench --target koben-bench >>"$OUT/bench.log" 2>&1 ||
    { tail -20 "$OUT/bench.log" >&2; fail "koben-bench lässt sich nicht bauen."; }
fresh_windows
lay_dlls
mkdir -p build/bench/bench-cache "$OUT/bau/bench-cache"
say "Linux ..."
build/bench/bin/koben-bench "${options[@]}" 2>/dev/null >"$OUT/messung-linux.txt"
say "Windows unter Wine ..."
wine "$OUT/bau/bin/koben-bench.exe" "${options[@]}" 2>/dev/null | tr -d '\r' >"$OUT/messung-wine.txt"
# A row: its name in 40 characters, then the program's milliseconds.
paste -d'|' <(grep -E '^.{40} *[0-9.]+ ' "$OUT/messung-linux.txt" | cut -c1-52) \
    <(grep -E '^.{40} *[0-9.]+ ' "$OUT/messung-wine.txt" | cut -c1-52) |
    awk -F'|' '{ name = substr($1, 1, 40); a = substr($1, 41) + 0; b = substr($2, 41) + 0
                 printf "%s %9.1f ms Linux %9.1f ms Wine  Verhältnis %.2f\n", name, a, b, (a > 0 ? b / a : 0) }'
ls "$OUT"/koben-*-setup.exe 2>/dev/null | while read -r file; do
    say "$(basename "$file"): $(du -h --apparent-size "$file" | cut -f1)"
done
