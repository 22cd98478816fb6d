#!/usr/bin/env bash
# Runs the end-to-end suite with the program under valgrind: the clerk's morning in a real X window, every access to
# memory watched. Prints what valgrind says; its exit code tells whether the suite passed and valgrind found nothing.
#
# valgrind_ende.sh [BUILD FOLDER]: "build/dev" unless told otherwise; it is built when its test is missing.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" "${PAKETE_TEST[@]}" valgrind
cd "$KVO_ORDNER"
ordner=${1:-build/dev}
if [ ! -x "$ordner/tests/ende/test_ende" ]; then baue dev "${ordner#build/}" test_ende; fi

arbeit=$(mktemp -d)
trap 'rm -rf "$arbeit"' EXIT
protokoll=$arbeit/valgrind.txt
# The suite parts the words at blanks: no path of it may have one.
export KVO_ENDE_VORSPANN="valgrind --leak-check=full --show-leak-kinds=definite,indirect --num-callers=30
  --errors-for-leak-kinds=definite,indirect --suppressions=$KVO_ORDNER/packaging/valgrind_ende.supp
  --error-exitcode=99 --log-file=$protokoll"
export KVO_ENDE_VORSPANN=${KVO_ENDE_VORSPANN//$'\n'/ }
export KVO_ENDE_FAKTOR=${KVO_ENDE_FAKTOR:-10}
# Compiled patterns read whole vectors, beyond the end of a text too; valgrind can't know that this is harmless.
export QT_ENABLE_REGEXP_JIT=0
ergebnis=0
(cd "$arbeit" && QT_QPA_PLATFORM=offscreen TZ=Europe/Berlin "$KVO_ORDNER/$ordner/tests/ende/test_ende") || ergebnis=$?
cat "$protokoll"
if [ -f "$arbeit/ende_fehler.png" ]; then cp "$arbeit/ende_fehler.png" "$ordner/tests/ende/"; fi
exit "$ergebnis"
