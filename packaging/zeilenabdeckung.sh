#!/usr/bin/env bash
# How much of the product the tests run: builds the preset "coverage", runs the tests and writes a table of lines and
# branches, and the files of which the most lines did not run; `zeilentafel.py build/coverage --offen DATEI` tells which.
#
# zeilenabdeckung.sh [REGEX]    without the tests whose names match; those that only walk through the programs from
#                               outside are left out unless told otherwise
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

ohne=${1:-'^test_(rundgang|ende|ende_tds|installation)$'}
bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" "${PAKETE_TEST[@]}"
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

packaging/zeilentafel.py build/coverage
exit "$code"
