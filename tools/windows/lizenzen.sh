#!/usr/bin/env bash
# Gathers the licences of all that travels with the Windows setup: lizenzen.sh FOLDER.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"
to=$1
mkdir -p "$to"
source_of() { "$WINDOWS/holen.sh" "$@" 2>/dev/null | cut -d' ' -f1; }
qt_version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
qt=$(source_of qt6-base "$qt_version")
xlsx=$(source_of libxlsxwriter)

# Copies that Qt has within it: what they are, whose, and under which terms. Those of other systems and of the tests
# are not in what is built here.
qt_parts() {
    local told folder field
    find "$qt/src" -name qt_attribution.json |
        grep -vE 'vulkan|VulkanMemory|testlib|dbus|xcb|wasm|android|gradle|forkfd|cocoa' | LC_ALL=C sort | while read -r told; do
        folder=$(dirname "$told")
        printf '\n%s\n\n' "======================================================================"
        for field in Name Version License Copyright; do
            sed -n "s/^ *\"$field\": \"\(.*\)\",\{0,1\}$/$field: \1/p" "$told"
        done
        sed -n 's/^ *"LicenseFiles\{0,1\}"://p' "$told" | tr -d '[]",' | tr ' ' '\n' | LC_ALL=C sort -u | while read -r file; do
            [ -n "$file" ] && [ -f "$folder/$file" ] || continue
            printf '\n-- %s\n\n' "$(basename "$file")"
            tr -d '\r' <"$folder/$file"
        done
    done
}

cp "$qt/LICENSES/LGPL-3.0-only.txt" "$to/Qt-LGPL-3.txt"
cp "$qt/LICENSES/GPL-3.0-only.txt" "$to/GPL-3.txt"
{ echo "Teile anderer Urheber, die in Qt enthalten sind"; qt_parts; } >"$to/Qt-Bestandteile.txt"
cp "$xlsx/License.txt" "$to/libxlsxwriter.txt"
cp "$(source_of libzip)/LICENSE" "$to/libzip.txt"
[ ! -f "$2/libqrencode.dll" ] || cp "$(source_of qrencode)/COPYING" "$to/libqrencode-LGPL-2.1.txt"
cp "$(source_of cpp-httplib)/LICENSE" "$to/cpp-httplib.txt"
cp /usr/share/doc/gcc-mingw-w64-base/copyright "$to/GCC-Laufzeit.txt"
cp /usr/share/doc/mingw-w64-common/copyright "$to/MinGW-w64-Laufzeit.txt"
cp /usr/share/doc/libz-mingw-w64/copyright "$to/zlib.txt"
cp "$PROJECT/ui/icons/LICENSE-bootstrap-icons.txt" "$to/Zeichen.txt"
cat >"$to/LIESMICH.txt" <<TEXT
Mit KOBEN kommen diese Bibliotheken auf Ihren Rechner:

Qt $qt_version (Qt6*.dll und der Ordner plugins)   LGPL 3, siehe Qt-LGPL-3.txt, GPL-3.txt und Qt-Bestandteile.txt
SQLite                       gemeinfrei
libxlsxwriter                BSD, siehe libxlsxwriter.txt
libzip                       BSD, siehe libzip.txt
libqrencode (wo enthalten)   LGPL 2.1, siehe libqrencode-LGPL-2.1.txt
cpp-httplib                  MIT, siehe cpp-httplib.txt
zlib                         siehe zlib.txt
Laufzeit von GCC (libstdc++-6.dll, libgcc_s_seh-1.dll)   GPL 3 mit Ausnahme für Laufzeiten, siehe GCC-Laufzeit.txt
Laufzeit von MinGW-w64 (libwinpthread-1.dll)             siehe MinGW-w64-Laufzeit.txt
Zeichen der Werkzeugleiste   MIT, siehe Zeichen.txt
Setup-Programm: NSIS (zlib), Kompression LZMA (CPL 1.0 mit Ausnahme für Setup-Programme)

Die Bibliotheken unter LGPL liegen als eigene Dateien im Ordner bin und können gegen andere Fassungen getauscht werden.
Ihre Quelltexte sind die gleichnamigen Quellpakete von Debian (qt6-base $qt_version, qrencode) im Archiv
den Servern von Debian; KOBEN ändert an ihnen nichts.
TEXT
sed -i 's/$/\r/' "$to"/*.txt
