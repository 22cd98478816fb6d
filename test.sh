#!/usr/bin/env bash
# Installs what is missing, builds with warnings as errors, checks the format, runs all tests and, where clang is at
# hand, each fuzz target for a short time. Its last line is the summary of ctest.
#
# test.sh [PRESET]: "ci" unless told otherwise; "asan" runs the tests under the sanitizers.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/packaging/gemeinsam.sh"

preset=${1:-ci}
bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" "${PAKETE_TEST[@]}"
cd "$KVO_ORDNER"

pruefe_format() {
  melde 'Prüfe das Format'
  local werkzeug
  werkzeug=$(command -v clang-format-14 || command -v clang-format)
  # Another version sets the same code in another way.
  case $("$werkzeug" --version) in
    *' 14.'*) quellen | xargs -d '\n' "$werkzeug" --dry-run -Werror ;;
    *) melde "Das Format ist nicht geprüft: $werkzeug hat nicht die Version 14" ;;
  esac
}

# Each target starts from the seeds that the program of its name and "_saaten" writes, if there is one, and keeps what it
# learns in build/.
fuzze() {
  if ! command -v clang++ >/dev/null || ! grep -qs '[^[:space:]]' tests/fuzz/CMakeLists.txt; then
    melde 'Ohne Fuzzing: clang oder die Ziele fehlen'
    return 0
  fi
  baue fuzz fuzz tests/fuzz/all || return 1
  local ziel name sekunden=${KVO_FUZZ_SEKUNDEN:-20}
  for ziel in build/fuzz/tests/fuzz/fuzz_*; do
    if [ ! -f "$ziel" ] || [ ! -x "$ziel" ] || [[ $ziel = *_saaten ]]; then continue; fi
    name=${ziel##*/}
    melde "Fuzze $name ($sekunden s)"
    mkdir -p "build/fuzz/korpus/$name"
    if [ -x "${ziel}_saaten" ]; then "${ziel}_saaten" "build/fuzz/korpus/$name" || return 1; fi
    if ! "$ziel" -max_total_time="$sekunden" -timeout=20 -rss_limit_mb=2048 -artifact_prefix="build/fuzz/$name-" \
      "build/fuzz/korpus/$name" </dev/null >"build/fuzz/$name.log" 2>&1; then
      tail -n 60 "build/fuzz/$name.log" >&2
      return 1
    fi
  done
}

if [ -z "${KVO_TESTDATEN:-}" ] && [ -d ../shared/testdata ]; then
  KVO_TESTDATEN=$(cd ../shared/testdata && pwd)
  export KVO_TESTDATEN
fi

# A failure of one check does not keep the others from running; it counts at the end.
ergebnis=0
pruefe_format || { melde 'Das Format stimmt nicht'; ergebnis=1; }
if ! baue "$preset" "$preset" all; then
  printf '\n0 passed, 1 failed\n'
  exit 1
fi
if [ "$preset" = ci ]; then fuzze || { melde 'Das Fuzzing ist gescheitert'; ergebnis=1; }; fi

melde 'Lasse die Tests laufen'
protokoll=build/$preset/ctest.txt
ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1} UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1} \
  ctest --test-dir "build/$preset" --output-on-failure --parallel "$(nproc)" </dev/null 2>&1 | tee "$protokoll" || ergebnis=$?
printf '\n%s\n' "$(grep -E 'tests passed, [0-9]+ tests? failed' "$protokoll" || echo '0 passed, 1 failed')"
exit "$ergebnis"
