# A Windows of our own to try things in: a Wine prefix in the build folder. Read by the other scripts, not run.
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/gemeinsam.sh"

export WINEPREFIX=${KOBEN_WINEPREFIX:-$OUT/wine} WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export LC_ALL=C.UTF-8 QT_LOGGING_RULES=
# No questions for Mono and Gecko, no entries in this machine's menus.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

# Fonts that Windows has and Wine has not are played by those of the same widths.
fonts() {
    local name
    {
        printf 'REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\n'
        for name in "Courier New=Liberation Mono" "Arial=Liberation Sans" "Times New Roman=Liberation Serif" \
            "Segoe UI=Liberation Sans" "MS Shell Dlg 2=Liberation Sans" "MS Shell Dlg=Liberation Sans" "Tahoma=Liberation Sans"; do
            printf '"%s"="%s"\n' "${name%%=*}" "${name#*=}"
        done
    } >"$WINEPREFIX/schriften.reg"
    wine regedit /S "$(winepath -w "$WINEPREFIX/schriften.reg")"
}

# A fresh prefix takes some seconds; what an earlier run left goes.
fresh_windows() {
    wineserver -k 2>/dev/null || true
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    wineboot -i >/dev/null 2>&1
    fonts
    wineserver -w
}

# The DLLs beside the programs of the build folder, as a setup would lay them.
lay_dlls() {
    cp -u "$OUT"/paket/bin/*.dll "$INST"/bin/Qt6Test.dll "$OUT/bau/bin/"
    printf '[Paths]\r\nPlugins = %s\r\nTranslations = %s\r\n' "Z:$INST/plugins" "Z:/usr/share/qt6/translations" >"$OUT/bau/bin/qt.conf"
}
