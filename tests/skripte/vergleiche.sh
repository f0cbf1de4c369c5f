#!/bin/sh
# Runs one script and compares its transcript whole with the expected one beside it: vergleiche.sh PROGRAM NAME.skript
# The run's own folder, which has another name each time, stands there as ORDNER.
# A script that must end otherwise than with status 0 says so in a line "# Status: N".
set -u
program=$1
script=$2
expected="${script%.skript}.soll"
status=$(sed -n 's/^# Status: \([0-9]\)$/\1/p' "$script" | head -n 1)
got=$(mktemp) || exit 1
trap 'rm -f "$got"' EXIT
cd "$(dirname "$script")" || exit 1
LC_ALL=C.UTF-8 "$program" "$script" >"$got"
ended=$?
sed -i 's|/[^ ]*/koben-skript-[A-Za-z0-9]*/|ORDNER/|g' "$got"  # messages may name the fresh folder
diff -u "$expected" "$got" || exit 1
if [ "$ended" -ne "${status:-0}" ]; then
    echo "$script: status $ended instead of ${status:-0}" >&2
    exit 1
fi
