#!/usr/bin/env bash
# usage: atspi.sh PROGRAM  - starts the program on a screen of its own and walks its main window as a screen reader does,
# from outside; with xdotool, and koben-skript beside the program, also the windows that keys open from there. Fails on a
# control without a name and on one that bears its name in the program; 77 where tools lack.
program=$1
skript=$(dirname "$program")/koben-skript
herd=$(realpath "$(dirname "$0")/../../beispiel/herde.csv")
launcher=$(ls /usr/libexec/at-spi-bus-launcher /usr/lib/at-spi2-core/at-spi-bus-launcher 2>/dev/null | head -1)
for tool in Xvfb dbus-run-session gdbus; do command -v $tool >/dev/null || { echo "$tool fehlt"; exit 77; }; done
[ -n "$launcher" ] || { echo "at-spi2-core fehlt"; exit 77; }
if [ -z "$ATSPI_INNER" ]; then
  home=$(mktemp -d)
  ATSPI_INNER=1 HOME=$home XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home timeout 120 dbus-run-session -- "$0" "$program"
  status=$?
  rm -rf "$home"
  exit $status
fi

further=no
if command -v xdotool >/dev/null && [ -x "$skript" ]; then
  further=yes
  printf '%s\n' "ordner $HOME/Daten/Sauenplaner_KOBEN2/" start "menue O_ImportExcelCSV" "antwort = $herd" \
    "klick comöffnen" "antwort ja" "klick ok" | "$skript" - >/dev/null || { echo "Der Bestand kam nicht herein"; exit 1; }
fi
exec 3< <(exec Xvfb -displayfd 1 -screen 0 1366x768x24 2>/dev/null)
screen=$!
read -r number <&3
export DISPLAY=:$number QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
"$launcher" --launch-immediately & bus=$!
"$program" >/dev/null 2>&1 & koben=$!
trap 'kill $koben $bus $screen 2>/dev/null' EXIT
sleep 1
address=$(gdbus call --session --dest org.a11y.Bus --object-path /org/a11y/bus --method org.a11y.Bus.GetAddress |
          sed "s/^('//;s/',)$//")

ask() { gdbus call --address "$address" --dest "$1" --object-path "$2" --method "${@:3}" 2>/dev/null; }
children() { ask "$1" "$2" org.a11y.atspi.Accessible.GetChildren | grep -o "':[^']*', [^)]*'" | sed "s/objectpath //g;s/[',]//g"; }
property() { ask "$1" "$2" org.freedesktop.DBus.Properties.Get org.a11y.atspi.Accessible "$3" | sed "s/^(<['\"]//;s/['\"]>,)$//"; }

for try in $(seq 80); do
  app=$(children org.a11y.atspi.Registry /org/a11y/atspi/accessible/root | head -1)
  [ -n "$app" ] && [ -n "$(children $app | head -1)" ] && break
  sleep 0.5
done
[ -n "$app" ] || { echo "Das Programm meldet sich nicht bei AT-SPI"; exit 1; }

seen=0 bad=0
walk() {
  local bus=$1 path=$2 depth=$3 role name
  role=$(ask "$bus" "$path" org.a11y.atspi.Accessible.GetRoleName | sed "s/^('//;s/',)$//")
  name=$(property "$bus" "$path" Name)
  case $role in
    "push button"|button|"check box"|"radio button"|text|entry|"combo box"|list|table|"page tab list"|"tool bar"|"menu bar")
      seen=$((seen + 1))
      if [ -z "$name" ] || [[ $name =~ ^(datali|li|gridli|Text1|t|tz|kom|tdat|schweinli|cmdok|optianzeige)(\([0-9]+\))?$ ]]; then
        bad=$((bad + 1))
        echo "ohne Namen: $role '$name' $path"
      fi ;;
  esac
  case $role in table|list|menu|"menu item"|"combo box") return ;; esac
  [ "$depth" -lt 12 ] && while read -r child; do [ -n "$child" ] && walk $child $((depth + 1)); done < <(children "$bus" "$path")
}
# A key; the windows that are there afterwards in `windows`, once they have become more or fewer.
press() {
  local before=$windows try
  xdotool key "$1"
  for try in $(seq 40); do
    sleep 0.25
    windows=$(children $app)
    [ "$(wc -l <<<"$windows")" -ne "$(wc -l <<<"$before")" ] && return 0
  done
  echo "Nach $1 kam kein Fenster und ging keines"
  bad=$((bad + 1))
}
# Each key opens a window from the one before, which is walked; then they close again.
open() {
  local known key
  for key in "$@"; do
    known=$windows
    press "$key"
    while read -r window; do walk $window 0; done < <(grep -vxF "$known" <<<"$windows")
  done
  for key in "$@"; do press Escape; done
}

walk $app 0
if [ $further = yes ]; then
  windows=$(children $app)
  open ctrl+1 ctrl+n F1
  open ctrl+p
fi
echo "$seen Bedienelemente, $bad ohne Namen"
[ "$seen" -gt 20 ] && [ "$bad" -eq 0 ]
