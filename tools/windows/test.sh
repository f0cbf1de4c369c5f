#!/usr/bin/env bash
# Tries the Windows build under Wine: test.sh [skripte|etagen|setup|fenster ...], all of them where none is named.
. "$(dirname "$(readlink -f "$0")")/wine.sh"

cd "$PROJECT"
bad=0
PICTURES=$OUT/bilder
DATA=$WINEPREFIX/drive_c/Daten/Sauenplaner_KOBEN2
good() { say "  gut    $*"; }
wrong() { say "  FALSCH $*"; bad=$((bad + 1)); }
check() {  # WHAT COMMAND...
    local what=$1
    shift
    if "$@"; then good "$what"; else wrong "$what"; fi
}
version() { sed -n 's/^project(koben VERSION \([0-9.]*\).*/\1/p' "$PROJECT/CMakeLists.txt"; }

# ------------------------------------------------------------------------------- the forms, by the same transcripts

skripte() {
    local script
    # the example day has no transcript of its own: that of this system's program is it
    local here
    here=$(ls -t build/*/bin/koben-skript 2>/dev/null | head -1 || true)
    "$WINDOWS/skript.sh" beispiel/beispieltag.skript >"$OUT/beispieltag.log" || wrong "Beispieltag läuft"
    [ -z "$here" ] || check "Beispieltag wie auf diesem System" same_day "$here"
    for script in "$PROJECT"/tests/skripte/*.skript; do
        if sh "$PROJECT/tests/skripte/vergleiche.sh" "$WINDOWS/skript.sh" "$script" >"$OUT/skript.log" 2>&1; then
            good "Skript $(basename "$script")"
        else
            wrong "Skript $(basename "$script")"
            head -20 "$OUT/skript.log"
        fi
    done
    check "ein Ordner mit Buchstaben außerhalb jeder Codepage" unicode
}

same_day() { "$1" beispiel/beispieltag.skript | diff - "$OUT/beispieltag.log" | head -20 >"$OUT/diff.log"; [ ! -s "$OUT/diff.log" ]; }

# Database, list, spreadsheet and backup in a folder whose name no code page has.
unicode() {
    local folder="$OUT/łódź Müller ☃"
    rm -rf "$folder"
    mkdir -p "$folder"
    cat >"$OUT/unicode.skript" <<SKRIPT
heute 16.07.2026
ordner $folder
start
menue O_ImportExcelCSV
antwort = $PROJECT/beispiel/herde.csv
klick comöffnen
antwort ja
klick ok
neustart
menue A_awalletiere
klick com_excel
schliesse
ende
SKRIPT
    "$WINDOWS/skript.sh" "$OUT/unicode.skript" >"$OUT/unicode.log" 2>&1
    [ "$(head -c 15 "$folder/koben2.mdb")" = "SQLite format 3" ]
}

# -------------------------------------------------------------------------------------------- the tests of all floors

etagen() {
    local program name filter log
    for program in "$OUT"/bau/bin/test_*.exe; do
        name=$(basename "$program" .exe)
        filter=$(sed -n "s/^$name  *\([^ ]*\).*/\1/p" "$WINDOWS/ausnahmen.txt" | paste -sd: -)
        log=$OUT/$name.log
        (cd "$OUT/bau" && QT_QPA_PLATFORM=offscreen wine "$program" --gtest_brief=1 --gtest_filter="*${filter:+-$filter}" >"$log" 2>&1) &&
            good "$name: $(grep -a 'PASSED' "$log" | tail -1)" ||
            { wrong "$name"; grep -aE -m 20 '^\[  FAILED|Failure|error' "$log" || true; }
    done
}

# ------------------------------------------------------------------------------------------------------------- the setup

INSTALLED() { ls -d "$WINEPREFIX"/drive_c/users/*/AppData/Local/Programs/KOBEN 2>/dev/null | head -1; }
uninstall_entry() { wine reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\KOBEN' /v "$1" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$1 *REG_[A-Z]* *//p"; }
shortcut() { [ -n "$(find "$WINEPREFIX/drive_c/users" -name KOBEN.lnk | head -1)" ]; }
run_setup() { wine "$1" /S; wineserver -w; }

setup() {
    local now old there
    now=$OUT/koben-$(version)-setup.exe
    old=$OUT/koben-1.9.9-setup.exe
    "$WINDOWS/setup.sh" 1.9.9 >/dev/null
    "$WINDOWS/setup.sh" >/dev/null
    run_setup "$old"
    check "Setup ohne Fragen" test -f "$(INSTALLED)/bin/koben.exe"
    check "Startmenü" shortcut
    check "Eintrag in der Systemsteuerung" grep -q 1.9.9 <<<"$(uninstall_entry DisplayVersion)"
    echo alt >"$(INSTALLED)/bin/uebrig.dll"
    mkdir -p "$DATA"
    echo Daten >"$DATA/bleibt.txt"
    run_setup "$now"
    check "neue Version über der alten" grep -q "$(version)" <<<"$(uninstall_entry DisplayVersion)"
    check "nichts von der alten übrig" test ! -e "$(INSTALLED)/bin/uebrig.dll"
    check "läuft von dort" starts
    there=$(INSTALLED)
    wine "$there/entfernen.exe" /S
    wineserver -w
    check "entfernt" test ! -e "$there/bin"
    check "kein Eintrag mehr" test -z "$(uninstall_entry DisplayVersion)"
    check "Daten bleiben" test -f "$DATA/bleibt.txt" -a -f "$DATA/koben2.mdb"
    rm -rf "$DATA"
}

# ---------------------------------------------------------------------------------------------------------- the window

export DISPLAY=:93
SCREEN=
with_screen() {
    [ -z "$SCREEN" ] || return 0
    Xvfb $DISPLAY -screen 0 1366x768x24 >/dev/null 2>&1 &
    SCREEN=$!
    trap 'kill $SCREEN 2>/dev/null; wineserver -k 2>/dev/null; true' EXIT
    sleep 2
}

# What KOBEN says of its folder from outside; "" where it does not answer.
ask() {  # STATEMENT
    printf 'ordner %s\nstart\nsql %s\nende\n' "C:/Daten/Sauenplaner_KOBEN2" "$1" >"$OUT/frage.skript"
    "$WINDOWS/skript.sh" "$OUT/frage.skript" 2>/dev/null | sed -n 's/^= //p' | tail -1
}
PROGRAM=
open_window() {
    PROGRAM=${PROGRAM:-$(INSTALLED)/bin/koben.exe}
    wine explorer /desktop=koben,1366x768 "$PROGRAM" >/dev/null 2>&1 &
    wait_for_window 60
}
process() { pgrep -f '\\koben\.exe|/koben\.exe' | while read -r p; do
    grep -qz "koben.exe" "/proc/$p/cmdline" && ! grep -qz explorer "/proc/$p/cmdline" && echo "$p"; done | head -1; }
locked() { [ -e "$DATA/koben.lock" ]; }
wait_for_window() {  # SECONDS
    local n
    for n in $(seq "$1"); do
        [ -s "$DATA/koben2.mdb" ] && locked && { sleep 3; return 0; }
        sleep 1
    done
    return 1
}
wait_for_end() {
    local n
    for n in $(seq 30); do
        [ -n "$(process)" ] || return 0
        sleep 1
    done
    return 1
}
picture() { mkdir -p "$PICTURES" && import -window root "$PICTURES/$1.png"; }
keys() { local k; for k in "$@"; do xdotool key --clearmodifiers "$k"; sleep 0.4; done; }
write() { xdotool type --delay 60 "$1"; sleep 0.4; }
close_window() { keys alt+F4; sleep 2; wait_for_end; }

# The program that is installed comes up and goes.
starts() {
    with_screen
    open_window || return 1
    picture erster-start
    keys Return Escape
    close_window || { picture geht-nicht-zu; return 1; }
    [ -s "$DATA/koben2.mdb" ] && ! locked
}

herd() {
    rm -rf "$DATA"
    cat >"$OUT/herde.skript" <<SKRIPT
ordner C:/Daten/Sauenplaner_KOBEN2
start
menue O_ImportExcelCSV
antwort = $PROJECT/beispiel/herde.csv
klick comöffnen
antwort ja
klick ok
SKRIPT
    "$WINDOWS/skript.sh" "$OUT/herde.skript" >"$OUT/herde.log" 2>&1
}

fenster() {
    local before after id
    with_screen
    [ -n "$(INSTALLED)" ] || run_setup "$OUT/koben-$(version)-setup.exe"
    herd
    before=$(ask "select count(*) as n from Belegung")
    check "Fenster kommt" open_window
    picture liste
    keys ctrl+f
    write 1002
    keys ctrl+1
    sleep 2
    picture buchungen
    keys ctrl+n
    sleep 2
    picture belegung
    keys t
    keys ctrl+Return
    sleep 2
    picture gebucht
    id=$(process)
    check "zweiter Start wird abgewiesen" second_start
    kill -9 "$id"
    wait_for_end || true
    after=$(ask "select count(*) as n from Belegung")
    check "Belegung mit der Tastatur gebucht, nach dem Abschuss noch da ($before, $after)" \
        test "${after:-0}" -eq $((${before:-0} + 1))
    check "Start nach dem Abschuss" open_window
    picture nach-abschuss
    keys Return
    check "geht zu" close_window
    check "Einstellungen in der Registry" settings
}

settings() { wine reg query 'HKCU\Software\KOBEN\KOBEN' >/dev/null 2>&1; }
second_start() {
    printf 'ordner %s\nstart\n' "C:/Daten/Sauenplaner_KOBEN2" >"$OUT/zweiter.skript"
    "$WINDOWS/skript.sh" "$OUT/zweiter.skript" 2>/dev/null | grep -q '^! Die Anwendung wurde bereits gestartet!'
}

[ $# -gt 0 ] || set -- skripte etagen setup fenster
fresh_windows
lay_dlls
for part in "$@"; do
    say "$part"
    "$part"
done
wineserver -k 2>/dev/null || true
[ $bad -eq 0 ] && say "Windows: alles gut." || fail "$bad Prüfungen sind fehlgeschlagen."
