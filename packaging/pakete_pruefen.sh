#!/usr/bin/env bash
# pakete_pruefen.sh [ORDNER]: tries the Debian packages of ORDNER (made first where none is named) as a firm's administrator
# would: in fresh, minimal systems of their own below build/, with apt and nothing else at hand. One system runs the programs,
# upgrades, goes back and removes them; one with a compiler builds the small host. Says what it cost.
# Where such a system can't be made, it says so and ends with 0.
# What others are to expand stands in single quotes.
# shellcheck disable=SC2016
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

bereite_umgebung_vor
cd "$KVO_ORDNER"
readonly WERK=$KVO_ORDNER/build/pruefung
readonly VORRAT=$KVO_ORDNER/build/vorrat
readonly BETRIEB=$WERK/betrieb WERKSTATT=$WERK/werkstatt
readonly PROGRAMME=(bildzuordnung kvobild libkvobildzuordnung1)
readonly VERBINDUNG='Provider=SQLite;Data Source=/home/anna/daten/betrieb.db'

lass_es() {
  melde "Ohne Prüfung der Pakete: $1"
  exit 0
}

scheitere() {
  melde "FEHLER: $1"
  exit 1
}

# --- What is needed -----------------------------------------------------------------------------------------------

[ "$(id -u)" -eq 0 ] || lass_es 'ein frisches System kann nur root anlegen'
unshare --mount true 2>/dev/null || lass_es 'hier darf nichts eingehängt werden'
installiere mmdebstrap || lass_es 'mmdebstrap fehlt'

# The machine's own sources of Debian; what else it takes programs from does not belong into a fresh system.
mapfile -t quellen < <(find /etc/apt -maxdepth 2 \( -name sources.list -o -name 'debian*.sources' \) -size +0)
[ ${#quellen[@]} -gt 0 ] || lass_es 'diese Maschine nennt keine Quellen von Debian'

if [ $# -gt 0 ]; then
  pakete=$(cd "$1" && pwd)
else
  pakete=$KVO_ORDNER/build/pakete_fertig
  rm -rf "$pakete"
  packaging/pakete.sh "$pakete"
fi
version=$(dpkg-deb --field "$(find "$pakete" -name 'kvobild_*.deb')" Version)

# --- The systems --------------------------------------------------------------------------------------------------

# im_System BAUM BEFEHL…: as root in a fresh system, with its own mounts, which go with it.
im_System() {
  local baum=$1
  shift
  mkdir -p "$VORRAT/partial"
  unshare --mount bash -c '
    baum=$1 vorrat=$2; shift 2
    mount -t proc proc "$baum/proc"
    mount --bind /dev "$baum/dev"
    mkdir -p "$baum/var/cache/apt/archives"
    mount --bind "$vorrat" "$baum/var/cache/apt/archives"
    exec chroot "$baum" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive "$@"
  ' - "$baum" "$VORRAT" "$@" </dev/null
}

# als_Anna BEFEHL…: as a user without a display, in the system of the firm.
als_Anna() {
  im_System "$BETRIEB" setpriv --reuid=1000 --regid=1000 --clear-groups env HOME=/home/anna TZ=Europe/Berlin "$@"
}

apt_dort() {
  local baum=$1
  shift
  im_System "$baum" apt-get -q -y -o APT::Keep-Downloaded-Packages=true -o Dpkg::Use-Pty=0 "$@" >>"$WERK/apt.log" 2>&1 || {
    tail -n 40 "$WERK/apt.log" >&2
    scheitere "apt-get $1"
  }
}

groesse() { du -smx --exclude=./proc --exclude=./dev --exclude=./home --exclude=./var/cache/apt --exclude=./paket* "$1" | cut -f1; }

# The files of a system that somebody could call left over: not what every use of apt writes, and no home.
bestand() {
  (cd "$1" && find . -xdev \( -path ./proc -o -path ./dev -o -path ./home -o -path ./root -o -path ./tmp -o -path ./run \
    -o -path ./var/log -o -path ./var/cache -o -path ./var/lib/apt -o -path ./var/lib/dpkg -o -path './paket*' \) -prune \
    -o -print | LC_ALL=C sort)
}

# The files of the packages by a version, as they lie in the system.
datei() { printf '/%s/%s\n' "$1" "$(basename "$(find "$pakete" -name "$2_*.deb" ! -name '*dbgsym*')")"; }

lege_System_an() {
  local baum=$1
  mkdir -p "$baum"
  mmdebstrap --quiet --variant=minbase --skip=cleanup/apt/lists bookworm "$baum" "${quellen[@]}" </dev/null >>"$WERK/apt.log" 2>&1 || {
    tail -n 5 "$WERK/apt.log" >&2
    return 1
  }
  mkdir -p "$baum/paket"
  find "$pakete" -name '*.deb' ! -name '*dbgsym*' -exec cp -t "$baum/paket" {} +
}

# The same packages under a higher version, as the next release would bring them.
mache_hoehere() {
  local paket ordner=$BETRIEB/paket_neu
  mkdir -p "$ordner"
  for paket in "${PROGRAMME[@]}"; do
    rm -rf "$WERK/umbau"
    dpkg-deb --raw-extract "$BETRIEB$(datei paket "$paket")" "$WERK/umbau"
    sed -i "s/^Version: .*/&+probe1/" "$WERK/umbau/DEBIAN/control"
    dpkg-deb --root-owner-group --build "$WERK/umbau" "$ordner/$(basename "$(datei paket "$paket")")" >/dev/null
  done
}

# --- What the user has ----------------------------------------------------------------------------------------------

lege_Daten_an() {
  local ordner=$BETRIEB/home/anna
  install -d -o 1000 -g 1000 "$ordner"
  als_Anna kvobild beispieldaten /home/anna/daten >/dev/null
  # The program remembers its connection, and makes its own data folder in a first start without one.
  starte_bis "$ordner/.local/share/kvobildzuordnung/betrieb.db" bildzuordnung --beispiele
  starte_bis "$ordner/.config/bildzuordnung/Verbindung.ini" bildzuordnung --verbindung "$VERBINDUNG" --bilder /home/anna/daten/bilder
}

# starte_bis DATEI PROGRAMM…: lets a program with windows run until it has written that file.
starte_bis() {
  local datei=$1 versuche
  shift
  als_Anna timeout 60 "$@" >>"$WERK/programm.log" 2>&1 &
  local lauf=$!
  for ((versuche = 0; versuche < 300; versuche++)); do
    if [ -s "$datei" ] || ! kill -0 "$lauf" 2>/dev/null; then break; fi
    sleep 0.2
  done
  sleep 1
  # The program itself, below those who prepared its surroundings.
  pkill -TERM -P "$lauf" 2>/dev/null || true
  kill "$lauf" 2>/dev/null || true
  wait "$lauf" 2>/dev/null || true
  [ -s "$datei" ] || scheitere "$1 hat ${datei#"$BETRIEB"} nicht geschrieben"
}

daten_der_Anna() {
  (cd "$BETRIEB/home/anna" && find . -path ./.cache -prune -o -type f ! -name '*-wal' ! -name '*-shm' -print0 | LC_ALL=C sort -z | xargs -0 sha256sum)
}

erwarte_Daten() {
  daten_der_Anna >"$WERK/daten_jetzt"
  diff "$WERK/daten_vorher" "$WERK/daten_jetzt" >&2 || scheitere "$1 hat die Daten der Benutzerin geändert"
  melde "$1: alle $(wc -l <"$WERK/daten_jetzt") Dateien der Benutzerin sind, wie sie waren"
}

erwarte_Version() {
  local da
  da=$(im_System "$BETRIEB" dpkg-query -W -f '${Version}' bildzuordnung)
  [ "$da" = "$1" ] || scheitere "installiert ist $da statt $1"
  als_Anna kvobild lesen --verbindung "$VERBINDUNG" --bilder /home/anna/daten/bilder --typ1 BEL --key1 AB --key2 24-1001 >"$WERK/gelesen"
  cmp -s "$WERK/gelesen" "$WERK/gelesen_vorher" || scheitere 'die Zuordnungen sind nicht mehr dieselben'
}

# --- The trial -----------------------------------------------------------------------------------------------------

pruefe_Betrieb() {
  local paket vorher sekunden gerechnet_1 gerechnet_2 nachher ohne_Qt
  melde 'Ein frisches System ohne Compiler'
  vorher=$(groesse "$BETRIEB")
  bestand "$BETRIEB" >"$WERK/bestand_vorher"
  # What our packages need and recommend, without what those recommend in turn: that is the business of their desktop.
  local dateien=()
  for paket in "${PROGRAMME[@]}"; do
    dateien+=("$(datei paket "$paket")")
    mapfile -t -O "${#dateien[@]}" dateien < <(dpkg-deb --field "$BETRIEB$(datei paket "$paket")" Recommends | tr -d ' ' | tr , '\n' | sed '/^$/d')
  done
  apt_dort "$BETRIEB" install --no-install-recommends --download-only "${dateien[@]}"
  im_System "$BETRIEB" apt-get -q -s install --no-install-recommends libqt6widgets6 libqt6printsupport6 libqt6svg6 qt6-image-formats-plugins \
    qt6-translations-l10n | sed -n 's/^Inst \([^ ]*\).*/\1/p' >"$WERK/qt"
  { TIMEFORMAT='%0R %0U %0S'; time apt_dort "$BETRIEB" install --no-install-recommends "${dateien[@]}"; } 2>"$WERK/dauer"
  # As if they had come by themselves, so that they go with the programs.
  im_System "$BETRIEB" apt-mark auto libheif1 tdsodbc xdg-utils >/dev/null
  read -r sekunden gerechnet_1 gerechnet_2 <"$WERK/dauer"
  nachher=$(groesse "$BETRIEB")
  ohne_Qt=$(im_System "$BETRIEB" dpkg-query -W -f '${Package} ${Installed-Size}\n' |
    grep -vxFf <(sed 's/$/ /' "$WERK/qt") | awk -v qt="$WERK/qt" -v alt="$WERK/pakete_vorher" '
      BEGIN { while ((getline z < qt) > 0) weg[z] = 1; while ((getline z < alt) > 0) weg[z] = 1 }
      !($1 in weg) { summe += $2 } END { printf "%.0f", summe / 1024 }')
  melde "Installiert in $sekunden s mit gefülltem Vorrat, davon $((gerechnet_1 + gerechnet_2)) s gerechnet; auf der Platte $((nachher - vorher)) MB, davon $ohne_Qt MB neben Qt"
  # Who else is busy on this machine lengthens the one, not the other.
  [ $((gerechnet_1 + gerechnet_2)) -le 60 ] || scheitere 'das Installieren dauert länger als 60 s'
  [ "$ohne_Qt" -le 120 ] || scheitere 'neben Qt sind es mehr als 120 MB'
  for paket in g++ gcc cc cmake; do
    if im_System "$BETRIEB" sh -c "command -v $paket" >/dev/null; then scheitere "$paket ist in diesem System"; fi
  done
}

pruefe_Programme() {
  lege_Daten_an
  melde 'kvobild führt sich vor'
  mkdir -p "$BETRIEB/home/anna/vorfuehrung/packaging"
  cp packaging/gemeinsam.sh packaging/vorfuehrung_kvobild.sh "$BETRIEB/home/anna/vorfuehrung/packaging/"
  chown -R 1000:1000 "$BETRIEB/home/anna/vorfuehrung"
  als_Anna /home/anna/vorfuehrung/packaging/vorfuehrung_kvobild.sh /usr/bin/kvobild >"$WERK/vorfuehrung.txt" 2>&1 || {
    tail -n 20 "$WERK/vorfuehrung.txt" >&2
    scheitere 'die Vorführung'
  }
  grep '^Zuordnungen: ' "$WERK/vorfuehrung.txt" >&2 || scheitere 'die Vorführung sagt nicht, was die Tabelle hält'
  melde 'bildzuordnung geht durch seine Fenster'
  als_Anna bildzuordnung --rundgang /home/anna/rundgang >"$WERK/rundgang.txt" 2>&1 || {
    tail -n 20 "$WERK/rundgang.txt" >&2
    scheitere 'der Rundgang'
  }
  tail -n 1 "$WERK/rundgang.txt" >&2
  als_Anna kvobild lesen --verbindung "$VERBINDUNG" --bilder /home/anna/daten/bilder --typ1 BEL --key1 AB --key2 24-1001 >"$WERK/gelesen_vorher"
  [ -s "$WERK/gelesen_vorher" ] || scheitere 'die Beispieldaten halten keine Zuordnung'
  rm -rf "$BETRIEB/home/anna/vorfuehrung" "$BETRIEB/home/anna/rundgang"
  daten_der_Anna >"$WERK/daten_vorher"
  grep -q Verbindung.ini "$WERK/daten_vorher" || scheitere 'keine Verbindung ist gemerkt'
}

pruefe_Wechsel() {
  local paket alte=() neue=()
  mache_hoehere
  for paket in "${PROGRAMME[@]}"; do
    alte+=("$(datei paket "$paket")")
    neue+=("$(datei paket_neu "$paket")")
  done
  apt_dort "$BETRIEB" install "${neue[@]}"
  erwarte_Version "$version+probe1"
  erwarte_Daten 'Nach dem Wechsel zur höheren Version'
  apt_dort "$BETRIEB" install --allow-downgrades "${alte[@]}"
  erwarte_Version "$version"
  erwarte_Daten 'Nach dem Wechsel zurück'
  apt_dort "$BETRIEB" remove "${PROGRAMME[@]}"
  erwarte_Daten 'Nach dem Entfernen'
  # What is not installed any more apt does not know, since it came from a file.
  apt_dort "$BETRIEB" install --no-install-recommends "${alte[@]}"
  apt_dort "$BETRIEB" purge "${PROGRAMME[@]}"
  apt_dort "$BETRIEB" autoremove --purge
  erwarte_Daten 'Nach dem Entfernen mit allen Einstellungen'
  bestand "$BETRIEB" >"$WERK/bestand_nachher"
  comm -13 "$WERK/bestand_vorher" "$WERK/bestand_nachher" >"$WERK/uebrig"
  if [ -s "$WERK/uebrig" ]; then
    cat "$WERK/uebrig" >&2
    scheitere "übrig sind $(wc -l <"$WERK/uebrig") Dateien"
  fi
  melde 'Übrig ist nichts als die Daten der Benutzerin'
}

pruefe_Werkstatt() {
  local probe=$WERKSTATT/tmp/probe
  melde 'Ein frisches System mit Compiler'
  apt_dort "$WERKSTATT" install --no-install-recommends g++ cmake make pkg-config "$(datei paket libkvobildzuordnung1)" \
    "$(datei paket libkvobildzuordnung-dev)"
  # The example as it is installed, and beside it the hand that uses it.
  mkdir -p "$probe/host/rundgang" "$probe/bilder"
  cp -r "$WERKSTATT/usr/share/doc/libkvobildzuordnung-dev/examples" "$probe/beispiel"
  find "$probe/beispiel" -name '*.gz' -exec gunzip {} +
  cp host/rundgang/Hand.h host/rundgang/Hand.cpp host/rundgang/Schrittfolge.h host/rundgang/Schrittfolge.cpp "$probe/host/rundgang/"
  cp tests/component/Fuehrung.cpp "$probe/"
  cp "$(find "$BETRIEB/home/anna/daten/eingang" -name '*.jpg' -print -quit)" "$probe/bilder/kessel.jpg"
  im_System "$WERKSTATT" sh -euc '
    cd /tmp/probe
    cmake -S beispiel -B bau >/dev/null
    cmake --build bau >/dev/null
    test -x bau/minimaler_wirt
    g++ -std=c++20 -fPIC -I. -o wirt beispiel/minimaler_wirt.cpp Fuehrung.cpp host/rundgang/Hand.cpp host/rundgang/Schrittfolge.cpp \
      $(pkg-config --cflags --libs KVOBildZuordnung)
    sql=$(pkg-config --variable=sql KVOBildZuordnung)/sqlite/Bild_Zuordnungen.sql
    export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 KVO_FUEHRUNG=anhaengen
    timeout 120 ./wirt /tmp/probe/betrieb.db /tmp/probe/bilder "$sql"
    ls bilder/Belege/24-1001/kessel*.jpg
  ' >"$WERK/werkstatt.txt" 2>&1 || {
    tail -n 40 "$WERK/werkstatt.txt" >&2
    scheitere 'der kleine Wirt'
  }
  melde "Der kleine Wirt hat zugeordnet: $(tail -n 1 "$WERK/werkstatt.txt")"
}

rm -rf "$WERK"
mkdir -p "$WERK"
lege_System_an "$BETRIEB" || lass_es 'mmdebstrap kann hier kein System anlegen'
cp -a "$BETRIEB" "$WERKSTATT"
im_System "$BETRIEB" dpkg-query -W -f '${Package}\n' >"$WERK/pakete_vorher"
pruefe_Betrieb
pruefe_Programme
pruefe_Wechsel
pruefe_Werkstatt
rm -rf "$BETRIEB" "$WERKSTATT"
melde "Die Pakete von $version sind geprüft ($SECONDS s)"
