#!/bin/sh
# Lässt den Benutzer eine Bilddatei wählen und öffnet dann die Bilder eines Belegs.
# Aufruf: zuordnen.sh BELEGART NUMMER; das Kennwort der Datenbank steht in der Datei, die KENNWORTDATEI nennt.
set -eu

if [ -n "${KENNWORTDATEI:-}" ]; then
  KVOBILD_KENNWORT=$(cat "$KENNWORTDATEI")
  export KVOBILD_KENNWORT
fi

bildzuordnung dialog suche --eines --titel "Bild für $1 $2"

ausgang=0
bildzuordnung dialog zuordnung --typ1 BEL --key1 "$1" --key2 "$2" --titel "Beleg $1 $2" || ausgang=$?
case $ausgang in
  0) ;;
  1) echo 'Nicht alles ist gespeichert.' >&2 ;;
  2) echo 'Der Aufruf ist falsch, oder es gibt keinen Bildschirm.' >&2 ;;
  3) echo 'Die Datenbank ist nicht zu erreichen.' >&2 ;;
  4) echo 'Die Bildablage ist nicht zu erreichen.' >&2 ;;
esac
exit "$ausgang"
