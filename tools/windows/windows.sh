#!/usr/bin/env bash
# ./koben windows: builds the program for Windows and its setup; with an argument tries, measures, or compiles alone.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"
cd "$PROJECT"

libraries() {
    "$WINDOWS/qt.sh"
    "$WINDOWS/bibliotheken.sh" "$@"
}

case "${1:-setup}" in
    setup)
        libraries
        "$WINDOWS/koben.sh"
        "$WINDOWS/setup.sh"
        ;;
    test)
        shift
        libraries test
        "$WINDOWS/koben.sh" all
        "$WINDOWS/setup.sh"
        exec "$WINDOWS/test.sh" "$@"
        ;;
    messen)
        libraries
        "$WINDOWS/koben.sh" koben koben-bench koben-skript koben-herdengenerator
        exec "$WINDOWS/messen.sh"
        ;;
    etagen)  # for continuous integration: what needs no window, where everything for it is there
        if ! command -v $TRIPLET-g++-posix >/dev/null; then
            say "Windows: nicht übersetzt, der Compiler $TRIPLET-g++-posix fehlt (./koben windows richtet ihn ein)."
        elif ! [ -f "$DONE/qt" ] || ! [ -f "$DONE/cpp-httplib" ]; then
            say "Windows: nicht übersetzt, Qt und die Bibliotheken sind noch nicht gebaut (./koben windows baut sie)."
        else
            "$WINDOWS/koben.sh" koben-skript
        fi
        ;;
    *)
        fail "unbekannt: $1. Möglich sind: setup, test, messen, etagen."
        ;;
esac
