#!/bin/sh
# What docs/aenderungen.txt says, in the forms that others read.
#   aenderungen.sh version LIST                     the newest version
#   aenderungen.sh changelog LIST REVISION CONTACT  a Debian changelog
#   aenderungen.sh releases LIST                    the releases of AppStream metadata
set -eu
form=$1 list=$2
export LC_ALL=C.UTF-8
awk -v form="$form" -v revision="${3:-}" -v contact="${4:-}" '
    function day(text) { return substr(text, 7, 4) "-" substr(text, 4, 2) "-" substr(text, 1, 2) }
    function sign(  command, when) {
        if (version == "" || form != "changelog") return
        command = "date -u -R -d " day(date) "T12:00:00Z"
        command | getline when
        close(command)
        printf "\n -- %s  %s\n\n", contact, when
    }
    NR <= 2 { next }
    /^[0-9]/ {
        sign()
        version = substr($0, 1, index($0, ":") - 1)
        date = substr($0, index($0, ":") + 2)
        if (date !~ /^[0-3][0-9]\.[01][0-9]\.20[0-9][0-9]$/) {
            print FILENAME ":" NR ": hinter der Fassung fehlt der Tag" >"/dev/stderr"
            exit bad = 1
        }
        if (form == "version") { print version; exit }
        if (form == "changelog") printf "koben (%s-%s) stable; urgency=medium\n\n", version, revision
        if (form == "releases") printf "    <release version=\"%s\" date=\"%s\"/>\n", version, day(date)
        next
    }
    form == "changelog" { sub(/^ - /, "  * "); sub(/^   /, "    "); print }
    END { if (!bad) sign() }' "$list"
