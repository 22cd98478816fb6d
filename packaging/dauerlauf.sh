#!/usr/bin/env bash
# A long run under the sanitizers for address and undefined behaviour: damaged pictures of all formats through the
# commands of kvobild, drawn roads through the dialog, all fuzz targets, desks on a share that are killed, kills on a
# disk of this machine. Memory, open handles and temporary files of the long processes have to stay flat; see
# messlauf.py for how that is judged. The last lines are a table; the exit code is 1 where anything was found.
#
# dauerlauf.sh [--ohne-sanitizer] [MINUTEN]    an hour unless told otherwise
#
# --ohne-sanitizer takes the build of the preset "ci" instead of "asan", which a check has at hand anyway.
# KVO_SAAT is the seed of everything; without it the day's date. What was found stays in build/dauerlauf/funde, by name.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

pruefbau=asan
if [ "${1:-}" = --ohne-sanitizer ]; then pruefbau=ci; shift; fi
minuten=${1:-60}
case $minuten in '' | *[!0-9]* | 0) echo 'dauerlauf.sh [--ohne-sanitizer] [MINUTEN]' >&2; exit 2 ;; esac
readonly pruefbau minuten
readonly sekunden=$((60 * minuten)) saat=${KVO_SAAT:-$(date +%Y%m%d)}

bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" "${PAKETE_TEST[@]}" clang || melde 'Ohne alle Pakete weiter'
# Where systemd runs it would start the server for the whole network at once.
if [ ! -d /run/systemd/system ]; then installiere "${PAKETE_CI[@]}" || melde 'Ohne Freigabe weiter'; fi
cd "$KVO_ORDNER"

readonly bau=build/$pruefbau haus=build/dauerlauf
rm -rf "$haus"
mkdir -p "$haus/funde" "$haus/laeufe"
# Short, since a server's sockets lie below it. Pictures go where no disk has to be waited for.
tmp=$(mktemp -d "${TMPDIR:-/tmp}/kvo-dauer-XXXXXX")
schnell=$tmp/schnell
if [ -w /dev/shm ]; then schnell=$(mktemp -d /dev/shm/kvo-dauer-XXXXXX); fi
readonly tmp schnell ergebnis=$KVO_ORDNER/$haus/ergebnis.tsv

# With the sanitizers freed memory waits a while, here for less than the growth that counts; and every way to an
# allocation that was ever seen is kept, which with more frames than two grows by hundreds of MB an hour. An allocation
# that no system grants is refused as the system does it. A process stops before it takes the machine's memory.
grenzen=detect_leaks=1:quarantine_size_mb=8:malloc_context_size=2:allocator_may_return_null=1:hard_rss_limit_mb=8192
export ASAN_OPTIONS=${ASAN_OPTIONS:-$grenzen}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
export LSAN_OPTIONS=suppressions=$KVO_ORDNER/packaging/lsan.supp:print_suppressions=0
# The journal that the commands write is not its user's.
export QT_QPA_PLATFORM=offscreen TZ=Europe/Berlin XDG_DATA_HOME=$tmp/daten
if [ -z "${KVO_TESTDATEN:-}" ] && [ -d ../shared/testdata ]; then
  KVO_TESTDATEN=$(cd ../shared/testdata && pwd)
  export KVO_TESTDATEN
fi

# messe NAME ORDNER PROTOKOLL [--urteile] -- PROGRAMM…: one program under the eye of messlauf.py, which ends with us.
messe() {
  local name=$1 ordner=$2 protokoll=$3
  shift 3
  packaging/messlauf.py --name "$name" --tmp "$ordner" --protokoll "$protokoll" --ergebnis "$ergebnis" "$@" &
  echo $! >"$haus/laeufe/$!"
  local code=0
  wait $! || code=$?
  rm -f "$haus/laeufe/$!"
  return "$code"
}

# What was done, for the table: zaehle TEIL ANZAHL
zaehle() { printf '%s\t%s\n' "$1" "$2" >>"$haus/zahlen.tsv"; }

# Behind a crash it goes on with the next picture; the one that did it stays among the finds.
verstuemmelte_Bilder() {
  local ende=$((SECONDS + $1)) ab=0 protokoll=$haus/bilder.log letzte code
  while [ $SECONDS -lt "$ende" ]; do
    code=0
    messe Bilder "$schnell/bilder" "$protokoll" --urteile -- "$bau/tests/dauer/test_schaden" --saat "$saat" \
      --ab "$ab" --anzahl 1000000000 --sekunden $((ende - SECONDS)) --funde "$haus/funde/bilder" || code=$?
    # 3 is an end in order, with finds.
    if [ "$code" -eq 0 ] || [ "$code" -eq 3 ]; then break; fi
    letzte=$(find "$haus/funde/bilder" -name "s${saat}_n*" | sed 's/.*_n\([0-9]*\)_.*/\1/' | sort -n | tail -n 1)
    if [ -z "$letzte" ] || [ "$letzte" -lt "$ab" ]; then break; fi
    cp "$haus/funde/bilder/meldungen.txt" "$haus/funde/bilder/absturz_n$letzte.txt"
    ab=$((letzte + 1))
  done
  zaehle Bilder "$(grep -o '^bis [0-9]*' "$protokoll" | tail -n 1 | cut -c 5-)"
}

# The first roads tell how long one takes; the rest of the time goes to one process.
wege() {
  local ende=$((SECONDS + $1)) protokoll=$haus/wege.log anzahl=8 nummer=0 beginn rest
  while :; do
    beginn=$SECONDS
    if ! KVO_WEGE=$anzahl KVO_WEGE_SAAT=$((saat + nummer)) messe Wege "$tmp/wege" "$protokoll" --urteile -- \
      "$bau/tests/wege/test_wege" '--gtest_filter=GezogeneWege.*'; then
      cp "$protokoll" "$haus/funde/wege.log"
      break
    fi
    nummer=$((nummer + 1)) rest=$((ende - SECONDS))
    anzahl=$((anzahl * rest * 9 / 10 / (SECONDS - beginn + 1)))
    if [ $anzahl -lt 8 ]; then break; fi
  done
  zaehle Wege "$(awk 'match($0, /max_success=[0-9]+/) { n = substr($0, RSTART + 12, RLENGTH - 12) }
    /^\[ +OK \]/ { alle += n } END { print alle + 0 }' "$protokoll")"
}

fuzze() {
  local ziele=() ziel name je korpus
  for ziel in build/fuzz/tests/fuzz/fuzz_*; do
    if [ -f "$ziel" ] && [ -x "$ziel" ] && [[ $ziel != *_saaten ]]; then ziele+=("$ziel"); fi
  done
  if [ ${#ziele[@]} -eq 0 ]; then zaehle Fuzzing 'ausgelassen: keine Ziele, clang fehlt'; return 0; fi
  je=$(($1 / ${#ziele[@]}))
  for ziel in "${ziele[@]}"; do
    name=${ziel##*/} korpus=$haus/korpus/${ziel##*/}
    mkdir -p "$korpus"
    "${ziel}_saaten" "$korpus"
    messe "$name" "$tmp/$name" "$haus/$name.log" -- "$ziel" -max_total_time="$je" -timeout=20 -rss_limit_mb=2048 \
      -seed="$saat" -print_final_stats=1 -artifact_prefix="$haus/funde/$name-" "$korpus" || true
    zaehle "$name" "$(sed -n 's/^stat::number_of_executed_units: *//p' "$haus/$name.log" | tail -n 1)"
  done
}

# toete TEIL SEKUNDEN PROGRAMM FILTER: again and again with other moments; each is a whole test with its own servers.
toete() {
  local teil=$1 ende=$((SECONDS + $2)) programm=$3 filter=$4 nummer=0 protokoll=$haus/$1.log
  while [ $nummer -eq 0 ] || [ $SECONDS -lt "$ende" ]; do
    if ! KVO_ABBRUECHE=$((sekunden < 300 ? 4 : 25)) KVO_ABBRUECHE_SAAT=$(((saat + 7919 * nummer) % 1000000000 + 1)) \
      messe "$teil" "$tmp/$teil" "$protokoll" -- "$programm" "--gtest_filter=$filter"; then
      cp "$protokoll" "$haus/funde/$teil.log"
      break
    fi
    nummer=$((nummer + 1))
  done
  if grep -q 'no share can be mounted' "$protokoll"; then
    zaehle "$teil" "ausgelassen: $(grep -om 1 'no share can be mounted.*' "$protokoll")"
  else
    zaehle "$teil" "$(sed -n 's/^killed: //p' "$protokoll" | awk '{ n += $1 } END { print n + 0 }')"
  fi
}

# Two at a time: pictures the whole time, everything else one after the other.
zweite_Spur() {
  wege $((sekunden * 35 / 100))
  fuzze $((sekunden * 25 / 100))
  toete Freigabe $((sekunden * 25 / 100)) "$bau/tests/freigabe/test_freigabe" \
    'AmNetz.WhoeverOfTwoDesks*:AmNetz.ACommandThatIsKilled*:AmNetz.AServerThatIsKilled*'
  toete Platte $((sekunden * 15 / 100)) "$bau/tests/freigabe/test_abbruch" '*'
}

# Programs that have our folder for temporary files, by their ids.
eigene_Prozesse() {
  local umgebung pid
  for umgebung in /proc/[0-9]*/environ; do
    pid=${umgebung#/proc/} pid=${pid%/environ}
    if [ "$pid" = $$ ] || [ "$pid" = "$BASHPID" ]; then continue; fi
    if tr '\0' '\n' 2>/dev/null <"$umgebung" | grep -qsF -e "TMPDIR=$tmp/" -e "TMPDIR=$schnell/"; then echo "$pid"; fi
  done
}
eigene_Einhaengungen() { awk -v ort="$tmp/" 'index($2, ort) == 1 { print $2 }' /proc/mounts; }

# Ends what is left, and tells it: after a whole run nothing is.
raeume_auf() {
  local lauf pid ort uebrig=0
  for lauf in "$haus"/laeufe/*; do
    if [ -f "$lauf" ]; then kill -TERM "$(cat "$lauf")" 2>/dev/null || true; fi
  done
  for spur in "${spuren[@]}"; do kill -TERM "$spur" 2>/dev/null || true; done
  wait || true
  # A server that has lost its client takes a moment.
  for _ in $(seq 50); do [ -n "$(eigene_Prozesse)$(eigene_Einhaengungen)" ] || break; sleep 0.1; done
  while read -r ort; do melde "Noch eingehängt: $ort"; fusermount3 -uz "$ort" || true; uebrig=1; done \
    < <(eigene_Einhaengungen)
  while read -r pid; do
    melde "Läuft noch: $pid $(tr '\0' ' ' <"/proc/$pid/cmdline" 2>/dev/null || true)"
    kill -KILL "$pid" 2>/dev/null || true
    uebrig=1
  done < <(eigene_Prozesse)
  rm -rf "$tmp" "$schnell"
  return "$uebrig"
}

tabelle() {
  printf '\n%s min, Preset %s, Saat %s\n\n' "$minuten" "$pruefbau" "$saat"
  printf '%-16s %14s\n' Teil Anzahl
  while IFS=$'\t' read -r teil anzahl; do printf '%-16s %14s\n' "$teil" "$anzahl"; done <"$haus/zahlen.tsv"
  # Of a part that ran in many processes the longest and every one with a fault.
  printf '\n%-16s %8s %16s %12s %14s %8s  %s\n' Prozess Sekunden 'Speicher MB' Griffe Dateien übrig Urteil
  sort -t $'\t' -k 1,1 -k 8,8r -k 2,2nr "$ergebnis" | awk -F '\t' '$8 != "" || !gesehen[$1]++' |
    while IFS=$'\t' read -r name dauer _ speicher griffe dateien uebrig urteil; do
      printf '%-16s %8s %16s %12s %14s %8s  %s\n' "$name" "$dauer" "$speicher" "$griffe" "$dateien" "$uebrig" \
        "${urteil:-gut}"
    done
}

spuren=()
trap 'trap - EXIT; raeume_auf; exit 130' INT TERM
trap 'raeume_auf || true' EXIT
baue "$pruefbau" "$pruefbau" dauerlauf
if command -v clang++ >/dev/null; then baue fuzz fuzz tests/fuzz/all; fi

melde "Dauerlauf: $minuten min, Preset $pruefbau, Saat $saat"
: >"$haus/zahlen.tsv"
: >"$ergebnis"
verstuemmelte_Bilder "$sekunden" & spuren+=($!)
zweite_Spur & spuren+=($!)
code=0
for spur in "${spuren[@]}"; do wait "$spur" || code=1; done
spuren=()
trap - EXIT
raeume_auf || code=1
tabelle
if awk -F '\t' '$8 != "" { gefunden = 1 } END { exit !gefunden }' "$ergebnis"; then code=1; fi
find "$haus/funde" -type f -printf 'Fund: %p\n'
exit "$code"
