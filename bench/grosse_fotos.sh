#!/bin/bash
# grosse_fotos.sh ZIEL [MOTIVE]
#
# Fills ZIEL with JPEGs that are as hard to decode as a camera's: photographs from Debian's wallpaper packages, brought
# to 12 and 24 megapixels, with a sensor's noise, quality 92. Each motif comes in a size that is a multiple of 16, in
# one that is not, and at 24 megapixels; each of these baseline 4:2:0, baseline 4:4:4 and progressive. What is there
# already is not made again.
set -euo pipefail

ziel=${1:?usage: grosse_fotos.sh ZIEL [MOTIVE]}
motive=${2:-1}

werkzeuge() {
  command -v vips >/dev/null && command -v cjpeg >/dev/null && compgen -G '/usr/share/backgrounds/*' >/dev/null
}

if ! werkzeuge; then
  pakete=(libvips-tools libjpeg-turbo-progs lomiri-wallpapers-16.04 mate-backgrounds)
  if [[ $(id -u) != 0 ]]; then
    echo "Bitte installieren: ${pakete[*]}" >&2
    exit 1
  fi
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${pakete[@]}" >/dev/null
fi

mkdir -p "$ziel"
arbeit=$(mktemp -d)
trap 'rm -rf "$arbeit"' EXIT

# The largest wallpapers have the finest detail; by name, so that every machine takes the same ones.
mapfile -t vorlagen < <(find /usr/share/backgrounds -iname '*.jpg' -size +800k | LC_ALL=C sort | head -n "$motive")
if [[ ${#vorlagen[@]} == 0 ]]; then
  echo "Keine Fotos unter /usr/share/backgrounds." >&2
  exit 1
fi

foto() { # VORLAGE BREITE HOEHE -> $arbeit/foto.ppm
  vips thumbnail "$1" "$arbeit/motiv.v" "$2" --height "$3" --size both --crop centre
  vips gaussnoise "$arbeit/rauschen.v" "$2" "$3" --sigma 4 --mean 0 --seed 1
  vips add "$arbeit/motiv.v" "$arbeit/rauschen.v" "$arbeit/summe.v"
  vips cast "$arbeit/summe.v" "$arbeit/foto.ppm" uchar
}

for i in "${!vorlagen[@]}"; do
  for groesse in 4032x3024 4031x3021 6000x4000; do
    name="$ziel/foto$((i + 1))_$groesse"
    [[ -s ${name}_420_prog.jpg ]] && continue
    foto "${vorlagen[$i]}" "${groesse%x*}" "${groesse#*x}"
    cjpeg -quality 92 -sample 2x2 -outfile "${name}_420.jpg" "$arbeit/foto.ppm"
    cjpeg -quality 92 -sample 1x1 -outfile "${name}_444.jpg" "$arbeit/foto.ppm"
    cjpeg -quality 92 -sample 2x2 -progressive -outfile "${name}_420_prog.jpg" "$arbeit/foto.ppm"
  done
done
