# shellcheck shell=bash disable=SC2034
# Shared by start.sh, test.sh, .ci/run and the scripts beside this one. Sourced, not run; sets KVO_ORDNER and the surroundings that a bare container
# lacks.

KVO_ORDNER=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly KVO_ORDNER

# What the programs need to be built and to run.
readonly PAKETE_BAU=(
  g++ cmake ninja-build ccache
  qt6-base-dev libjpeg62-turbo-dev libsqlite3-dev unixodbc-dev libxcb1-dev
  unixodbc tdsodbc
  libqt6gui6 libqt6printsupport6 qt6-image-formats-plugins libqt6svg6 qt6-translations-l10n
  libheif-dev libheif1 libqpdf-dev libzip-dev zlib1g-dev
  fonts-dejavu-core
)
# What the tests need besides.
readonly PAKETE_TEST=(libgtest-dev libgmock-dev librapidcheck-dev clang-format xvfb xauth x11-xkb-utils xkb-data openbox libx11-dev libxtst-dev
  python3 openssl groff-base poppler-utils qpdf freetds-bin libh2-java default-jre-headless)
# What the packages need besides, and a fresh system to try them in.
readonly PAKETE_PAKETE=(build-essential fakeroot debhelper lintian pandoc python3 librsvg2-bin pkg-config appstream desktop-file-utils
  mmdebstrap)
# What the checks of a change need besides.
readonly PAKETE_CI=(git clang clang-tidy samba smbnetfs fuse3)

melde() { printf '== %s\n' "$*" >&2; }

bereite_umgebung_vor() {
  export DEBIAN_FRONTEND=noninteractive
  export LC_ALL=C.UTF-8
  # No session has made this folder, and Qt complains when anybody else could look into it.
  if [ -z "${XDG_RUNTIME_DIR:-}" ] || [ ! -d "${XDG_RUNTIME_DIR:-}" ]; then
    XDG_RUNTIME_DIR=$KVO_ORDNER/build/runtime
    mkdir -p "$XDG_RUNTIME_DIR"
    chmod 0700 "$XDG_RUNTIME_DIR"
    export XDG_RUNTIME_DIR
  fi
  # Without a home folder the compiler's cache would go to "/".
  if [ -z "${HOME:-}" ] || [ ! -w "${HOME:-}" ]; then
    export CCACHE_DIR=${CCACHE_DIR:-$KVO_ORDNER/build/ccache}
    export XDG_CACHE_HOME=${XDG_CACHE_HOME:-$KVO_ORDNER/build/cache}
  fi
  export CCACHE_BASEDIR=$KVO_ORDNER CCACHE_NOHASHDIR=1
  # Without these ccache passes over every source that uses precompiled headers.
  export CCACHE_SLOPPINESS=pch_defines,time_macros
}

# The folder for the data of programs, as the programs find it; without a home one in the project.
datenheim() {
  if [ -n "${XDG_DATA_HOME:-}" ]; then
    printf '%s\n' "$XDG_DATA_HOME"
  elif [ -n "${HOME:-}" ] && [ -w "$HOME" ]; then
    printf '%s\n' "$HOME/.local/share"
  else
    printf '%s\n' "$KVO_ORDNER/build/daten"
  fi
}

paket_fehlt() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" != installed ]
}

# installiere PAKET…: installs what is missing. The package lists are fetched only then, so that a second run needs no
# network.
installiere() {
  local paket fehlende=()
  for paket in "$@"; do
    if paket_fehlt "$paket"; then fehlende+=("$paket"); fi
  done
  if [ ${#fehlende[@]} -eq 0 ]; then return 0; fi
  if [ "$(id -u)" -ne 0 ]; then
    melde "Es fehlen Pakete, die nur root installieren kann: ${fehlende[*]}"
    return 1
  fi
  melde "Installiere ${fehlende[*]}"
  apt-get update -q </dev/null >&2
  apt-get install -q -y --no-install-recommends "${fehlende[@]}" </dev/null >&2
}

# baue PRESET ORDNER ZIEL [Angaben an CMake…]: configures a preset in a folder of build/ and builds one target there.
baue() {
  local preset=$1 ordner=build/$2 ziel=$3
  shift 3
  melde "Baue $ziel in $ordner"
  (cd "$KVO_ORDNER" && cmake --preset "$preset" -B "$ordner" "$@" && cmake --build "$ordner" --target "$ziel") \
    </dev/null >&2
}

# Sources of the project, one a line, with git or without.
quellen() {
  (
    cd "$KVO_ORDNER" || exit 1
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
      git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h'
    else
      find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print
    fi | while read -r datei; do
      if [ -f "$datei" ]; then printf '%s\n' "$datei"; fi
    done
  )
}
