#!/usr/bin/env bash
# Gathers what travels in build/windows/paket and packs it: setup.sh [VERSION]. The version is that of the program;
# another one is for trying upgrades.
. "$(dirname "$(readlink -f "$0")")/gemeinsam.sh"

version=${1:-$(sed -n 's/^project(koben VERSION \([0-9.]*\).*/\1/p' "$PROJECT/CMakeLists.txt")}
SOURCE_DATE_EPOCH=$(git -C "$PROJECT" log -1 --format=%ct 2>/dev/null || echo $SOURCE_DATE_EPOCH)
dist=$OUT/paket
rm -rf "$dist"
mkdir -p "$dist/bin" "$dist/plugins" "$dist/translations" "$dist/share/koben"

cp "$OUT/bau/bin/koben.exe" "$dist/bin/"
for plugin in platforms/qwindows tls/qschannelbackend imageformats/qjpeg; do
    mkdir -p "$dist/plugins/$(dirname $plugin)"
    cp "$INST/plugins/$plugin.dll" "$dist/plugins/$plugin.dll"
done

# The DLLs that these want, and those that they want, but for Windows' own.
runtime=$(dirname "$($TRIPLET-gcc-posix -print-file-name=libstdc++-6.dll)")
wanted() { $TRIPLET-objdump -p "$@" | sed -n 's/^\tDLL Name: //p' | sort -u; }
while :; do
    more=no
    for dll in $(wanted "$dist"/bin/* "$dist"/plugins/*/*); do
        [ ! -e "$dist/bin/$dll" ] || continue
        for folder in "$INST/bin" "$INST/lib" "$runtime" "/usr/$TRIPLET/lib"; do
            [ -e "$folder/$dll" ] || continue
            cp "$folder/$dll" "$dist/bin/"
            more=yes
            break
        done
    done
    [ $more = yes ] || break
done
$TRIPLET-strip --strip-unneeded "$dist"/bin/*.exe "$dist"/bin/*.dll "$dist"/plugins/*/*.dll
# Without this file Qt looks for its plugins in bin alone; the argument gives dark frames to windows on a dark desktop.
printf '%s\r\n' '[Paths]' 'Prefix = ..' '[Platforms]' 'WindowsArguments = darkmode=1' >"$dist/bin/qt.conf"
cp /usr/share/qt6/translations/qtbase_de.qm "$dist/translations/"

cp "$PROJECT"/beispiel/*.csv "$PROJECT"/hilfe/*.HLP "$OUT/bau/share/koben/Stall.html" "$dist/share/koben/"
manual=$(ls "$PROJECT"/build/handbuch/*.pdf 2>/dev/null | head -1)
if [ -n "$manual" ]; then
    cp "$manual" "$dist/share/koben/KOBEN-Handbuch.pdf"
else
    say "Ohne Handbuch: ./koben handbuch legt es nach build/handbuch."
fi
"$WINDOWS/lizenzen.sh" "$dist/lizenzen" "$dist/bin"
cp "$OUT/bau/app/koben.ico" "$OUT/koben.ico"

find "$dist" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$dist" && find . -type f | LC_ALL=C sort | xargs sha256sum) >"$OUT/inhalt.sha256"
makensis -V2 -NOCD -INPUTCHARSET UTF8 -DQUELLE="$dist" -DVERSION="$version" -DICON="$OUT/koben.ico" \
    -DZIEL="$OUT/koben-$version-setup.exe" -DGROESSE="$(du -sk "$dist" | cut -f1)" "$WINDOWS/koben.nsi"
touch -d "@$SOURCE_DATE_EPOCH" "$OUT/koben-$version-setup.exe"
say "build/windows/koben-$version-setup.exe: $(du -h --apparent-size "$OUT/koben-$version-setup.exe" | cut -f1)," \
    "installiert $(du -sh --apparent-size "$dist" | cut -f1)"
