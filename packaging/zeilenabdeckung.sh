#!/usr/bin/env bash
# How much of the product the tests run: builds the preset "coverage", runs the tests and writes a table of lines and
# branches, file by file, and the lines that nothing ran.
#
# zeilenabdeckung.sh [REGEX]    without the tests whose names match; those that only walk through the programs from
#                               outside are left out unless told otherwise
# Branches that only exist for an exception to fly, and those of code that can't be reached, do not count.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

ohne=${1:-'^test_(rundgang|ende|ende_tds|installation)$'}
bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" "${PAKETE_TEST[@]}" "${PAKETE_ABDECKUNG[@]}"
cd "$KVO_ORDNER"
if [ -z "${KVO_TESTDATEN:-}" ] && [ -d ../shared/testdata ]; then
  KVO_TESTDATEN=$(cd ../shared/testdata && pwd)
  export KVO_TESTDATEN
fi

baue coverage coverage all
find build/coverage -name '*.gcda' -delete
code=0
ctest --test-dir build/coverage --output-on-failure --timeout 1800 -E "$ohne" </dev/null >build/coverage/ctest.txt 2>&1 ||
  code=$?
grep -E '\*\*\*|tests passed' build/coverage/ctest.txt >&2 || true

melde 'Zähle'
raeume=(platform imaging exif store dialogs component host)
gcovr --root . --object-directory build/coverage -j "$(nproc)" --exclude-throw-branches --exclude-unreachable-branches \
  --filter "($(IFS='|'; echo "${raeume[*]}"))/" --txt build/coverage/zeilen.txt \
  --json-summary build/coverage/zeilen.json "${raeume[@]/#/build/coverage/}"
packaging/zeilentafel.py build/coverage/zeilen.json
exit "$code"
