#!/usr/bin/env bash
# alle.sh [ORDNER]: builds the release preset and runs every benchmark. The photos and databases are made in ORDNER
# (default: build/bench in the project); what is there already is used again.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/../packaging/gemeinsam.sh"

bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" pkg-config libexif-dev libturbojpeg0-dev imagemagick img2pdf libgtest-dev python3 xvfb xauth \
  libfuse3-dev fuse3 smbnetfs
# Where systemd runs, installing this server starts it for the whole network: that is for who owns the machine to do.
if [ ! -d /run/systemd/system ]; then installiere samba; fi
ordner=${1:-$KVO_ORDNER/build/bench}
mkdir -p "$ordner"
"$KVO_ORDNER/bench/grosse_fotos.sh" "$ordner/fotos"
baue release release all -DKVO_TESTS=OFF
export QT_QPA_PLATFORM=offscreen
# Small pictures that another run kept would be measured, and the user's own are none of a benchmark's business.
XDG_CACHE_HOME=$(mktemp -d)
export XDG_CACHE_HOME
trap 'rm -rf "$XDG_CACHE_HOME"' EXIT

printf 'Machine: %s, %s cores; %s\n' "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -n 1)" "$(nproc)" "$(date +%F)"
cd "$KVO_ORDNER/build/release/bench"

verfehlt=()
# miss NAME BEFEHL…: a bound that is missed, or a benchmark that fails, does not keep the others from running.
miss() {
  local name=$1
  shift
  printf '\n-- %s\n' "$name"
  "$@" || verfehlt+=("$name")
}

miss bench_store ./bench_store "$ordner"
miss bench_odbc ./bench_odbc
miss bench_exif ./bench_exif
miss bench_bilder ./bench_bilder "$ordner/fotos"
miss bench_streifen ./bench_streifen "$ordner/fotos"
miss bench_dialog ./bench_dialog "$ordner/fotos"
miss bench_suche ./bench_suche "$ordner/fotos"
miss bench_freigabe ./bench_freigabe "$ordner/fotos"
miss bench_uebersicht ./bench_uebersicht
miss bench_drehen ./bench_drehen "$ordner/fotos"
miss bench_bericht ./bench_bericht "$ordner/fotos"
miss bench_vorgaenge env -u QT_QPA_PLATFORM xvfb-run -a -s '-screen 0 1600x1200x24 -noreset' ./bench_vorgaenge "$ordner"
# Without -noreset the server starts anew whenever its last window has gone.
miss bench_fenster env -u QT_QPA_PLATFORM xvfb-run -a -s '-screen 0 1600x1200x24 -noreset' ./bench_fenster

if [ ${#verfehlt[@]} -gt 0 ]; then
  printf '\nMissed a bound or failed: %s\n' "${verfehlt[*]}"
  exit 1
fi
printf '\nAll bounds were kept\n'
