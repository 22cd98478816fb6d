#!/usr/bin/env bash
# Installs what is missing, builds, and starts the program on the user's data folder, which the first start fills with
# samples. Where there is no display the program walks itself through its windows and leaves pictures of them in
# KVO_RUNDGANG (default: build/rundgang).
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/packaging/gemeinsam.sh"

bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}"
# In a folder of its own: a developer's build keeps its tests. Writing what a debugger reads takes a quarter of the time,
# and a first look needs none of it.
baue dev start host/all -DKVO_TESTS=OFF -DCMAKE_CXX_FLAGS_RELWITHDEBINFO='-O2 -DNDEBUG'
programme=$KVO_ORDNER/build/start/host

# A display may be named and not answer; then the program ends at once, even when only its help is asked for.
bildschirm_da() {
  if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then return 1; fi
  case ${QT_QPA_PLATFORM:-} in offscreen* | minimal*) return 1 ;; esac
  (ulimit -c 0 && timeout 20 "$programme/bildzuordnung" --hilfe) >/dev/null 2>&1
}

if bildschirm_da; then
  daten=$(datenheim)/kvobildzuordnung
  melde "Starte bildzuordnung auf $daten"
  "$programme/bildzuordnung" --datenordner "$daten" --beispiele
else
  rundgang=${KVO_RUNDGANG:-$KVO_ORDNER/build/rundgang}
  daten=$rundgang/daten/betrieb
  melde 'Kein Bildschirm: Das Programm geht allein durch seine Fenster'
  env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=offscreen XDG_CACHE_HOME="$rundgang/cache" "$programme/bildzuordnung" --rundgang "$rundgang"
  melde "Die Bilder der Fenster liegen in $rundgang"
fi

cat <<TEXT

Dieselben Daten auf der Befehlszeile:
  export KVOBILD_VERBINDUNG='Provider=SQLite;Data Source="$daten/betrieb.db"'
  export KVOBILD_BILDER='$daten/bilder'
  $programme/kvobild lesen --typ1 BEL --key1 RE --key2 24-2003
  $programme/kvobild --hilfe
Eine Vorführung davon: packaging/vorfuehrung_kvobild.sh
TEXT
