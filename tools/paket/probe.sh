#!/usr/bin/env bash
# Tries a package in a bare Debian 12: installs it, starts it, upgrades it over an older one, removes and purges it; what a
# user keeps survives all of it.
#   probe.sh OLDER.deb PACKAGE.deb WORKFOLDER
# Needs root, and on this machine Xvfb, xdotool and debootstrap: the bare system gets nothing but the package.
set -euo pipefail
older=$(realpath "$1") package=$(realpath "$2") work=$(realpath -m "$3")
[ "$(id -u)" -eq 0 ] || { echo "Die Probe richtet ein eigenes Debian ein und braucht dafür root."; exit 77; }

root=$work/debian
display=:93
failed=0
export LC_ALL=C.UTF-8

# Where apt of this machine gets Debian 12 from, a line "URI SUITE COMPONENT" each.
sources() {
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' --format '$(REPO_URI) $(SUITE) $(RELEASE) $(COMPONENT)' |
        awk '$3 ~ /^bookworm(-updates|-security)?$/ && $4 == "main" { print $1, $3, $4 }' | sort -u
}

clean() {
    [ -z "${screen:-}" ] || kill "$screen" 2>/dev/null || true
    for each in dev/pts dev proc; do
        mountpoint -q "$root/$each" && umount "$root/$each"
    done
    rm -rf "$root"
}

bare() {
    local mirror
    mirror=$(sources | awk '$2 == "bookworm" { print $1; exit }')
    [ -n "$mirror" ] || { echo "apt kennt auf diesem Rechner keine Quelle für Debian 12."; exit 77; }
    if [ ! -e "$work/bare.tar" ]; then
        debootstrap --variant=minbase --include=ca-certificates bookworm "$root" "$mirror" >"$work/debootstrap.log" ||
            { tail -5 "$work/debootstrap.log"; exit 1; }
        sources | sed 's/^/deb /' >"$root/etc/apt/sources.list"
        chroot "$root" apt-get update -qq
        tar -C "$root" -cf "$work/bare.tar.neu" . && mv "$work/bare.tar.neu" "$work/bare.tar"
    else
        mkdir -p "$root" && tar -C "$root" -xf "$work/bare.tar"
    fi
    mount -t proc proc "$root/proc"
    mount --bind /dev "$root/dev"
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    chroot "$root" useradd --create-home bauer
    chroot "$root" install -d -m 700 -o bauer /run/bauer
}

expect() {  # TEXT COMMAND...
    local text=$1
    shift
    if "$@" >"$work/expect.log" 2>&1; then
        echo "ja    $text"
    else
        echo "NEIN  $text"
        sed 's/^/      /' "$work/expect.log" | head -20
        failed=1
    fi
}

install() {  # PACKAGE
    cp "$1" "$root/tmp/"
    DEBIAN_FRONTEND=noninteractive chroot "$root" apt-get install -y -qq --no-install-recommends "/tmp/${1##*/}"
}

user=(chroot --userspec=bauer:bauer "$root" env -i HOME=/home/bauer XDG_RUNTIME_DIR=/run/bauer PATH=/usr/bin:/bin LANG=C.UTF-8)

# Starts the program, waits for its window, and ends it as the end of a session does.
starts() {
    local window='' i
    "${user[@]}" DISPLAY=$display koben >"$work/koben.log" 2>&1 &
    local program=$!
    for ((i = 0; i < 60; ++i)); do
        window=$(DISPLAY=$display xdotool search --onlyvisible --class '^koben$' 2>/dev/null | head -1) && [ -n "$window" ] && break
        kill -0 $program 2>/dev/null || break
        sleep 0.5
    done
    DISPLAY=$display xdotool search --onlyvisible --class '^koben$' getwindowname %@ 2>/dev/null || true
    kill $program 2>/dev/null || true
    wait $program 2>/dev/null || true
    cat "$work/koben.log"
    [ -n "$window" ] && [ ! -s "$work/koben.log" ]
}

# What the user has, by content. The database's log lies beside it until the program is next closed.
kept() { (cd "$root/home/bauer" && find . -type f -exec sha256sum {} + | sort -k 2); }
unchanged() { diff "$work/kept" <(kept); }

version_is() { [ "$(chroot "$root" dpkg-query -W -f '${Version}' koben)" = "$(dpkg-deb -f "$1" Version)" ]; }
whole() { ! chroot "$root" dpkg -V koben | grep .; }
linked() { ! chroot "$root" ldd /usr/bin/koben /usr/libexec/koben/koben-altdaten | grep 'not found'; }
plain_rights() { ! dpkg-deb -c "$package" | grep -E '^.{3}[sS]|^.{6}[sS]|^-.{4}w|^-.{7}w|^d.{7}w'; }
says_no_display() { grep -q 'kein Bildschirm' <("${user[@]}" koben 2>&1); }

# An old database is read by the program that lies aside: whoever is put in its place is called.
reads_old() {
    local reader=$root/usr/libexec/koben/koben-altdaten data=$root/home/bauer/alt/Daten/Sauenplaner_KOBEN2
    mkdir -p "$data"
    { printf '\0\1\0\0Standard Jet DB\0\1'; head -c 8171 /dev/zero; } >"$data/koben2.mdb"
    chmod -R a+rwX "$root/home/bauer/alt"
    mv "$reader" "$reader.echt"
    printf '#!/bin/sh\ntouch /home/bauer/alt/gerufen\nexec "$0.echt" "$@"\n' >"$reader"
    chmod 755 "$reader"
    "${user[@]}" HOME=/home/bauer/alt DISPLAY=$display timeout 10 koben || true
    mv "$reader.echt" "$reader"
    [ -e "$root/home/bauer/alt/gerufen" ] && rm -r "$root/home/bauer/alt"
}
gone() { ! find "$root/usr" "$root/etc" "$root/var/lib/dpkg/info" -ipath '*koben*' | grep .; }
present() {
    local file
    for file in share/koben/HILFEKOBEN.HLP share/koben/herde.csv share/doc/koben/KOBEN-Handbuch.pdf \
        share/applications/koben.desktop share/icons/hicolor/{16x16,512x512}/apps/koben.png \
        share/icons/hicolor/scalable/apps/koben.svg share/man/man1/koben.1.gz share/man/de/man1/koben.1.gz; do
        [ -s "$root/usr/$file" ] || { echo "$file fehlt"; return 1; }
    done
}

rm -rf "$root"
mkdir -p "$work"
trap clean EXIT
bare
Xvfb $display -screen 0 1366x768x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
screen=$!

expect "installiert sich mit allem, was es braucht" install "$older"
expect "ist da, in der älteren Fassung" version_is "$older"
expect "jede Bibliothek ist da" linked
expect "Hilfe, Handbuch, Beispielherde, Zeichen und Handbuchseiten sind da" present
expect "sagt ohne Bildschirm, was fehlt" says_no_display
expect "startet mit einem Fenster und ohne Klagen" starts
expect "hat den Datenordner angelegt" test -s "$root/home/bauer/Daten/Sauenplaner_KOBEN2/koben2.mdb"
"${user[@]}" sh -c 'cd && mkdir Daten/Betrieb2 && echo x >Daten/Betrieb2/koben2.mdb && echo y >Daten/Sauenplaner_KOBEN2/Notiz.txt'
kept >"$work/kept"
expect "eine neuere Fassung kommt darüber" install "$package"
expect "ist da, in der neueren Fassung" version_is "$package"
expect "jede Datei ist wie im Paket" whole
expect "keine Datei hat besondere Rechte" plain_rights
expect "die Daten sind, wie sie waren" unchanged
expect "startet auf ihnen" starts
expect "fragt bei einer alten Datenbank den Leser" reads_old
kept >"$work/kept"
expect "lässt sich entfernen" chroot "$root" apt-get remove -y -qq koben
expect "die Daten sind, wie sie waren" unchanged
expect "kommt wieder, auf die alten Daten" install "$package"
expect "lässt sich ganz entfernen" chroot "$root" apt-get purge -y -qq koben
expect "die Daten sind, wie sie waren" unchanged
expect "sonst ist nichts geblieben" gone
[ $failed -eq 0 ] && echo "Probe bestanden: $(basename "$package")"
exit $failed
