#!/usr/bin/env bash
# pakete.sh [--zweimal] ZIEL: makes the Debian packages of this tree, with their sources, and puts them into ZIEL.
# What it needs it installs. --zweimal builds a second time in another folder, with nothing from the compiler's cache,
# and ends with 1 where a package is not the same byte for byte.
set -euo pipefail
# shellcheck source=packaging/gemeinsam.sh
. "$(dirname "${BASH_SOURCE[0]}")/gemeinsam.sh"

zweimal=nein
if [ "${1:-}" = --zweimal ]; then
  zweimal=ja
  shift
fi
if [ $# -ne 1 ]; then
  sed -n '2,4s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
  exit 2
fi
mkdir -p "$1"
ziel=$(cd "$1" && pwd)
case $ziel/ in
  "$KVO_ORDNER"/build/*) ;;
  "$KVO_ORDNER"/*)
    melde "Das Ziel liegt im Baum; die nächsten Quellen enthielten die Pakete"
    exit 2
    ;;
esac

bereite_umgebung_vor
installiere "${PAKETE_BAU[@]}" "${PAKETE_PAKETE[@]}"
# debhelper gives the build a home of its own.
if command -v ccache >/dev/null; then
  CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
  export CCACHE_DIR
fi
cd "$KVO_ORDNER"

name=$(dpkg-parsechangelog --show-field Source)
version=$(dpkg-parsechangelog --show-field Version)
if ! grep -q "^project(KVOBildZuordnung VERSION $version " CMakeLists.txt; then
  melde "debian/changelog sagt $version, CMakeLists.txt eine andere Version"
  exit 1
fi

# The tree without what builds leave in it, with git or without, and with the same rights wherever it was cloned.
lege_Quellen_hin() {
  local baum=$1
  rm -rf "$baum"
  mkdir -p "$baum"
  if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    git ls-files -z --cached --others --exclude-standard
  else
    find . \( -path ./build -o -path ./.git -o -name __pycache__ \) -prune -o \( -type f -o -type l \) -print0
  fi | while IFS= read -r -d '' datei; do
    if [ -e "$datei" ]; then printf '%s\0' "$datei"; fi
  done | tar --no-recursion --null --files-from=- -c | tar -x -C "$baum" --no-same-owner
  chmod -R u=rwX,go=rX "$baum"
}

# baue_Pakete ORDNER: leaves the packages in the folder, beside the tree that they were built from.
baue_Pakete() {
  local ordner=$1
  rm -rf "$ordner"
  lege_Quellen_hin "$ordner/$name-$version"
  (
    cd "$ordner/$name-$version"
    umask 022
    # A cache that names sources by another folder would put that into what a debugger reads.
    unset CCACHE_BASEDIR CCACHE_NOHASHDIR
    DEB_BUILD_OPTIONS="nocheck parallel=$(nproc)" nice -n 10 dpkg-buildpackage -us -uc </dev/null
  ) >"$ordner.log" 2>&1 || {
    tail -n 40 "$ordner.log" >&2
    return 1
  }
}

vergleiche() {
  local eine=$1 andere=$2 datei ergebnis=0
  for datei in "$eine"/*.deb "$eine"/*.dsc "$eine"/*.tar.*; do
    if cmp -s "$datei" "$andere/${datei##*/}"; then
      printf '  gleich: %s\n' "${datei##*/}" >&2
    else
      printf '  UNGLEICH: %s\n' "${datei##*/}" >&2
      ergebnis=1
    fi
  done
  return "$ergebnis"
}

melde "Baue die Pakete von $name $version"
anfang=$SECONDS
baue_Pakete "$KVO_ORDNER/build/pakete"
melde "Gebaut in $((SECONDS - anfang)) s"

# A failure of one check does not keep the others from running; it counts at the end.
ergebnis=0
melde 'Prüfe sie mit lintian'
lintian --allow-root --fail-on error,warning --tag-display-limit 0 build/pakete/"${name}_${version}"_*.changes >&2 || ergebnis=1

melde 'Prüfe, was ein Desktop liest'
desktop-file-validate resources/desktop/*.desktop >&2 || ergebnis=1
appstreamcli validate-tree --no-net "build/pakete/$name-$version/debian/bildzuordnung" >&2 || ergebnis=1
if ! grep -q "<release version=\"$version\"" resources/desktop/*.metainfo.xml; then
  melde "Die Beschreibung für den Desktop nennt $version nicht"
  ergebnis=1
fi

if [ "$zweimal" = ja ]; then
  # A plain path: dpkg keeps the folder of a build out of it only where its name needs no quoting.
  melde 'Baue sie ein zweites Mal, in einem anderen Ordner und ohne Zwischenspeicher'
  anfang=$SECONDS
  CCACHE_DISABLE=1 baue_Pakete "$KVO_ORDNER/build/anderswo/zweite"
  melde "Gebaut in $((SECONDS - anfang)) s"
  vergleiche build/pakete build/anderswo/zweite || ergebnis=1
  rm -rf build/anderswo
fi

find build/pakete -maxdepth 1 -type f -exec cp -t "$ziel" {} +
melde "Die Pakete liegen in $ziel"
ls -l "$ziel" >&2
exit "$ergebnis"
