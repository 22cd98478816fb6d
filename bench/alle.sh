#!/usr/bin/env bash
# alle.sh [ORDNER]: builds the release preset and runs every benchmark. The photos and databases are made in ORDNER
# (default: build/bench in the project); what is there already is used again.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/../packaging/gemeinsam.sh"

bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" pkg-config libexif-dev libturbojpeg0-dev libgtest-dev python3 xvfb xauth
ordner=${1:-$KVO_ORDNER/build/bench}
mkdir -p "$ordner"
"$KVO_ORDNER/bench/grosse_fotos.sh" "$ordner/fotos"
baue release release all -DKVO_TESTS=OFF
export QT_QPA_PLATFORM=offscreen

printf 'Machine: %s, %s cores; %s\n' "$(sed -n 's/^model name\s*: //p' /proc/cpuinfo | head -n 1)" "$(nproc)" "$(date +%F)"
cd "$KVO_ORDNER/build/release/bench"
printf '\n-- bench_store\n'
./bench_store "$ordner"
printf '\n-- bench_odbc\n'
./bench_odbc
printf '\n-- bench_exif\n'
./bench_exif
printf '\n-- bench_bilder\n'
./bench_bilder "$ordner/fotos"
printf '\n-- bench_streifen\n'
./bench_streifen "$ordner/fotos"
printf '\n-- bench_dialog\n'
./bench_dialog "$ordner/fotos"
printf '\n-- bench_suche\n'
./bench_suche "$ordner/fotos"
printf '\n-- bench_uebersicht\n'
./bench_uebersicht
printf '\n-- bench_drehen\n'
./bench_drehen "$ordner/fotos"
printf '\n-- bench_fenster\n'
# Without -noreset the server starts anew whenever its last window has gone.
env -u QT_QPA_PLATFORM xvfb-run -a -s '-screen 0 1600x1200x24 -noreset' ./bench_fenster
