#!/bin/sh
# Runs one script and compares its transcript with the expected one beside it: vergleiche.sh PROGRAM NAME.skript [neu]
# The run's own folder, which has another name each time, stands there as ORDNER. Of the commands only those that were
# answered stand there. With "neu" the transcript becomes the expected one.
# A script that must end otherwise than with status 0 says so in a line "# Status: N".
set -u
program=$1
script=$2
expected="${script%.skript}.soll"
status=$(sed -n 's/^# Status: \([0-9]\)$/\1/p' "$script" | head -n 1)
got=$(mktemp) && wanted=$(mktemp) || exit 1
trap 'rm -f "$got" "$wanted"' EXIT
answered() { LC_ALL=C awk '/^> / { held = $0; next } { if (held != "") print held; held = ""; print }' "$1"; }
cd "$(dirname "$script")" || exit 1
LC_ALL=C.UTF-8 "$program" "$script" >"$wanted"
ended=$?
sed -i 's|/[^ ]*/koben-skript-[A-Za-z0-9]*/|ORDNER/|g' "$wanted"  # messages may name the fresh folder
answered "$wanted" >"$got"
if [ "${3:-}" = neu ]; then cp "$got" "$expected"; fi
answered "$expected" >"$wanted" && diff -u "$wanted" "$got" || exit 1
if [ "$ended" -ne "${status:-0}" ]; then
    echo "$script: status $ended instead of ${status:-0}" >&2
    exit 1
fi
