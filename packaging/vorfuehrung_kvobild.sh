#!/usr/bin/env bash
# Shows the command line: pictures are assigned to a business record on the embedded database, read back, changed,
# renamed and removed. Builds what it needs, unless it is told which program to show: vorfuehrung_kvobild.sh [PROGRAMM].
#
# The sample data lies in KVOBILD_BEISPIEL (default: kvobild-beispiel in the user's data folder). It is made once; later
# runs go on with it, since what a user put there belongs to the user.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

bereite_umgebung_vor
kvobild=${1:-}
if [ -z "$kvobild" ]; then
  installiere "${PAKETE_BAU[@]}"
  baue dev start kvobild -DKVO_TESTS=OFF
  kvobild=$KVO_ORDNER/build/start/host/kvobild
fi

beispiel=${KVOBILD_BEISPIEL:-$(datenheim)/kvobild-beispiel}
if [ -f "$beispiel/betrieb.db" ]; then
  melde "Die Beispieldaten liegen schon in $beispiel"
else
  melde "Beispieldaten nach $beispiel"
  # Made beside and renamed, so that an interrupted run leaves no half of them.
  mkdir -p "$(dirname "$beispiel")"
  neu=$(mktemp -d "$beispiel.XXXXXX")
  trap 'rm -rf "$neu"' EXIT
  chmod 755 "$neu"
  "$kvobild" beispieldaten "$neu"
  mv -T "$neu" "$beispiel"
  trap - EXIT
fi

export KVOBILD_VERBINDUNG="Provider=SQLite;Data Source=\"$beispiel/betrieb.db\""
export KVOBILD_BILDER=$beispiel/bilder
# A demonstration leaves nothing in the user's cache.
export XDG_CACHE_HOME=$KVO_ORDNER/build/cache
vorgang=(--typ1 BEL --key1 AN --key2 24-3005)
ordner='Belege\24-3005'

schritt() { printf '\n--- %s\n' "$*"; }

schritt 'Drei neue Bilder kommen zum Beleg AN 24-3005'
neue=$("$kvobild" zuordnen "${vorgang[@]}" --ordner "$ordner" --beschreibung "Besichtigung" \
  "$beispiel/eingang/Baustelle_23.jpg" "$beispiel/eingang/Rohrbruch_24.jpg" "$beispiel/eingang/Übergabe_25.jpg")
printf '%s\n' "$neue"
mapfile -t bild <<<"$neue"

schritt 'Gelesen steht da'
"$kvobild" lesen "${vorgang[@]}"

schritt "Geändert: ${bild[2]} kommt nach vorn, mit anderem Text, als Anhang auf eigener Seite"
"$kvobild" aendern "${vorgang[@]}" --sortierung 0 --beschreibung 'Übergabe der Schlüssel' --anhang ja \
  --neue-seite ja "${bild[2]}"

schritt "Umbenannt: ${bild[0]}, mit Textdatei"
stamm=${bild[0]#Baustelle_23}
name=Rathaus_$stamm
# Two runs within one second give two pictures the same stamp.
for ((nummer = 2; ; nummer++)); do
  [ -e "$KVOBILD_BILDER/${ordner//\\//}/$name" ] || break
  name=Rathaus_${nummer}_$stamm
done
"$kvobild" umbenennen --ordner "$ordner" "${bild[0]}" "$name"

schritt "Entfernt: ${bild[1]}; die Datei bleibt in der Ablage"
"$kvobild" entfernen "${vorgang[@]}" "${bild[1]}"

schritt 'Die Tabelle hält jetzt zu diesem Beleg'
"$kvobild" lesen "${vorgang[@]}"

schritt 'Die Bildablage hält jetzt in seinem Ordner'
(cd "$KVOBILD_BILDER/${ordner//\\//}" && ls -l --time-style=+%F)

schritt "Exif von $name"
"$kvobild" exif "$KVOBILD_BILDER/${ordner//\\//}/$name"

schritt 'Die Tabelle hält insgesamt'
"$kvobild" lesen --json | wc -l | sed 's/^ */Zuordnungen: /'

cat <<TEXT

Weiter von Hand, etwa:
  export KVOBILD_VERBINDUNG='$KVOBILD_VERBINDUNG'
  export KVOBILD_BILDER='$KVOBILD_BILDER'
  $kvobild lesen --typ1 BEL --key1 AB --key2 24-1001
  $kvobild --hilfe
TEXT
