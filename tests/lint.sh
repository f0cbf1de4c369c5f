#!/usr/bin/env bash
# Style and floors: formatting, includes that climb, widgets below the windows, doors of the libraries, circles between
# units, actions without a name.
set -u
cd "$(dirname "$0")/.."
temp=$(mktemp -d)
trap 'rm -rf "$temp"' EXIT
bad=0
fail() { echo "lint: $*"; bad=1; }

declare -A floor=([store]=1 [core]=2 [forms]=3 [output]=4 [herd]=5 [cycle]=5 [bookings]=5 [plans]=5 [stock]=5
    [analytics]=5 [figures]=5 [exchange]=5 [order]=5 [help]=5 [ui]=6 [app]=7)

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
    hits=$(grep -rlE "#include <($pattern)" store core forms output herd cycle bookings plans stock analytics figures exchange order help \
        ui app tools 2>/dev/null | grep -vE "^(${allowed%|})/")
    [ -z "$hits" ] || fail "not here: <$pattern> in $hits"
}
door 'sqlite3\.h' store
door 'xlsxwriter' output
door 'qrencode' output
door 'zip\.h' exchange
door 'httplib\.h' exchange
door 'mdbtools' store
door 'Q(Widget|Application|Dialog|MainWindow|TableView|Printer|Painter|LineEdit|Layout|Push|Combo|Label|Menu|Gui)' ui app tools/bilder tools/handbuch

# A unit is X.h with X.cpp and with every X_*.cpp that has no header of its own. Units that include each other in a
# circle are one unit in truth. Folders cannot form one: each lies below or beside the other.
unit() {  # FILE
    local name=${1%.*} shorter
    if [[ $1 == *.cpp && ! -e $name.h ]]; then
        shorter=$name
        while [[ ${shorter##*/} == *_* ]]; do
            shorter=${shorter%_*}
            [ -e "$shorter.h" ] && name=$shorter && break
        done
    fi
    echo "$name"
}
for folder in "${!floor[@]}" tools bench tests; do
    [ -d "$folder" ] || continue
    while IFS=: read -r file _ include; do
        from=$(unit "$file") to=${include%.*}
        [ "$from" = "$to" ] || echo "$from $to"
    done < <(grep -rnoP "^#include \"\K$folder/[^\"]+" "$folder" --include='*.h' --include='*.cpp') |
        sort -u >"$temp/edges"
    tsort "$temp/edges" 2>"$temp/circles" >/dev/null
    while read -r circle; do
        fail "circle: $circle"
    done < <(awk '/loop:$/ { if (way) print way " -> " first; way = ""; next }
                  { sub(/^tsort: /, ""); if (way) way = way " -> " $0; else way = first = $0 }
                  END { if (way) print way " -> " first }' "$temp/circles")
done

# What a user does to her data has a name: outside store/ and core/ it is an Action.
nameless=$(grep -rlE '\bTransaction [a-z]+[({]' forms output herd cycle bookings plans stock analytics figures exchange order help ui app 2>/dev/null)
[ -z "$nameless" ] || fail "a Transaction instead of a named Action in" $nameless

# Two types of one name in one namespace are one to the linker, which takes either's functions for both.
twice=$(git ls-files -- '*.h' '*.cpp' | grep -v '^tests/' | xargs awk '
    FNR == 1 { depth = 0; space = "" }
    /^(inline )?namespace/ { names[++depth] = space; space = space "/" ($2 == "{" ? "~" : $2); next }
    /^\}  \/\/ namespace/ { space = names[depth--]; next }
    space !~ /~/ && /^(struct|class|enum class|enum) [A-Za-z_0-9]+( final)?( :[^:]|  *\{)/ {
        print space "::" ($1 == "enum" && $2 == "class" ? $3 : $2), FILENAME }' | sort -u |
    awk '{ n[$1]++; at[$1] = at[$1] " " $2 } END { for (name in n) if (n[name] > 1) print name at[name] }')
[ -z "$twice" ] || fail "one name for two types: $twice"

if command -v clang-format >/dev/null; then
    files=$(git ls-files -co --exclude-standard -- '*.h' '*.cpp' | while read -r f; do [ -e "$f" ] && echo "$f"; done)
    [ -z "$files" ] || clang-format --dry-run -Werror $files >"$temp/format" 2>&1 ||
        { grep -E 'error' "$temp/format" | cut -d: -f1 | sort | uniq -c; fail "formatting (clang-format -i)"; }
fi
[ $bad -eq 0 ] && echo "lint: style and floors hold"
exit $bad
