#!/usr/bin/env bash
# Style and floors: formatting, includes that climb, widgets below the windows, doors of the libraries, circles.
set -u
cd "$(dirname "$0")/.."
bad=0
fail() { echo "lint: $*"; bad=1; }

declare -A floor=([store]=1 [core]=2 [forms]=3 [output]=4 [herd]=5 [cycle]=5 [bookings]=5 [plans]=5 [stock]=5
    [analytics]=5 [exchange]=5 [ui]=6 [app]=7)

while IFS=: read -r file _ include; do
    from=${file%%/*}
    to=${include%%/*}
    [ -n "${floor[$to]:-}" ] || continue
    [ "$from" = "$to" ] && continue
    [ "${floor[$to]}" -lt "${floor[$from]}" ] || fail "$file includes $include, which is not below it"
done < <(for folder in "${!floor[@]}"; do
    [ -d "$folder" ] && grep -rnoP '^#include "\K[^"]+' "$folder" --include='*.h' --include='*.cpp'
done)

door() {  # PATTERN FOLDER...: only these folders may include it
    local pattern=$1 hits; shift
    local allowed; allowed=$(printf '%s|' "$@")
    hits=$(grep -rlE "#include <($pattern)" store core forms output herd cycle bookings plans stock analytics exchange \
        ui app tools 2>/dev/null | grep -vE "^(${allowed%|})/")
    [ -z "$hits" ] || fail "not here: <$pattern> in $hits"
}
door 'sqlite3\.h' store
door 'xlsxwriter' output
door 'zip\.h' exchange
door 'mdbtools' store
door 'Q(Widget|Application|Dialog|MainWindow|TableView|Printer|Painter|LineEdit|Layout|Push|Combo|Label|Menu|Gui)' ui app tools/bilder

# What a user does to her data has a name: outside store/ and core/ it is an Action.
pending='bookings/Buchungseingabe.cpp|bookings/Ferkeleingabe.cpp|cycle/PV_Stichworte.cpp|forms/Stammdaten.cpp'
pending+='|herd/PB_Neues_Schwein_Speichern.cpp'
nameless=$(grep -rlE '\bTransaction [a-z]+[({]' forms output herd cycle bookings plans stock analytics exchange ui app \
    2>/dev/null | grep -vxE "$pending")
[ -z "$nameless" ] || fail "a Transaction instead of a named Action in" $nameless

if command -v clang-format >/dev/null; then
    files=$(git ls-files -co --exclude-standard -- '*.h' '*.cpp' | while read -r f; do [ -e "$f" ] && echo "$f"; done)
    [ -z "$files" ] || clang-format --dry-run -Werror $files >/tmp/koben-format.$$ 2>&1 ||
        { grep -E 'error' /tmp/koben-format.$$ | cut -d: -f1 | sort | uniq -c; fail "formatting (clang-format -i)"; }
    rm -f /tmp/koben-format.$$
fi
[ $bad -eq 0 ] && echo "lint: style and floors hold"
exit $bad
