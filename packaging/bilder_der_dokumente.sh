#!/usr/bin/env bash
# bilder_der_dokumente.sh PROGRAMM: walks the tour of that bildzuordnung without a screen and puts its pictures into
# docs/screenshots, without their numbers. The tour works in /srv/rundgang, since some windows show where their data lie.
set -euo pipefail
programm=$1
ziel=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/docs/screenshots
arbeit=/srv/rundgang
env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=Europe/Berlin XDG_CACHE_HOME="$arbeit/cache" \
  "$programm" --rundgang "$arbeit"
mkdir -p "$ziel"
find "$ziel" -name '*.png' -delete
for bild in "$arbeit"/[0-9]*.png; do
  name=$(basename "$bild")
  cp "$bild" "$ziel/${name#*_}"
done
printf '%s Bilder in %s\n' "$(find "$ziel" -name '*.png' | wc -l)" "$ziel"
