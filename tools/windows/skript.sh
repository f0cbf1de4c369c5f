#!/usr/bin/env bash
# koben-skript.exe under Wine as if it were koben-skript: paths in the transcript lose their drive and turn their
# strokes, so that transcripts of both systems can be compared whole.
. "$(dirname "$(readlink -f "$0")")/wine.sh"
set +e
wine "$OUT/bau/bin/koben-skript.exe" "$@" | sed -E ':a; s|([A-Z]:[^ "]*)\\(\S)|\1/\2|; ta; s|[A-Z]:/|/|g; s~([[:alnum:]])\\( |$)~\1/\2~g'
exit "${PIPESTATUS[0]}"
