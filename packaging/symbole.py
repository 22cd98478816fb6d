#!/usr/bin/env python3
"""Keeps debian/libkvobildzuordnung1.symbols: every name that the library publishes, with the version it came with.

Names that the compiler makes where it needs them (inline functions, what belongs to templates) stand there as optional. A name that is gone is written out of the list only when the soname has counted up.

Usage: packaging/symbole.py [--pruefe] BIBLIOTHEK   --pruefe writes nothing and ends with 1 where a name is gone or new
"""
import pathlib
import re
import subprocess
import sys

WURZEL = pathlib.Path(__file__).resolve().parent.parent
LISTE = WURZEL / "debian" / "libkvobildzuordnung1.symbols"
EINTRAG = re.compile(r'^ (?:\((?P<marken>[^)]*)\))?(?:"(?P<lang>[^"]+)@Base"|(?P<kurz>\S+)@Base) (?P<version>\S+)')


def laufe(*befehl, eingabe=None):
    return subprocess.run(befehl, input=eingabe, encoding="utf-8", check=True, stdout=subprocess.PIPE).stdout


def soname(bibliothek):
    return re.search(r"\[(libKVOBildZuordnung\.so\.\d+)\]", laufe("readelf", "-d", "-W", bibliothek)).group(1)


def veroeffentlicht(bibliothek):
    """Every name with whether it is weak; several symbols may have one name (kinds of constructors)."""
    zeilen = laufe("nm", "-D", "--defined-only", bibliothek).splitlines()
    roh = [zeile.split()[-2:] for zeile in zeilen]
    namen = laufe("c++filt", eingabe="".join(f"{name}\n" for _, name in roh)).splitlines()
    # Tables are weak everywhere; those of templates come and go with their use.
    starke = {name for (art, _), name in zip(roh, namen) if art in "TDBR" or (art == "V" and "<" not in name)}
    return {name: name not in starke for name in namen}


def gelistet():
    """soname of the list, and its names with their mark and version."""
    if not LISTE.exists():
        return None, {}
    zeilen = LISTE.read_text(encoding="utf-8").splitlines()
    eintraege = [EINTRAG.match(zeile) for zeile in zeilen]
    return zeilen[0].split()[0], {
        e["lang"] or e["kurz"]: ("optional" in (e["marken"] or ""), e["version"]) for e in eintraege if e}


def zeile(name, schwach, version):
    marken = "|".join(["c++"] * ("(" in name or "::" in name or " " in name) + ["optional"] * schwach)
    return f' ({marken})"{name}@Base" {version}' if marken else f" {name}@Base {version}"


def main():
    pruefe = sys.argv[1:2] == ["--pruefe"]
    if len(sys.argv) != 2 + pruefe:
        raise SystemExit(__doc__)
    bibliothek = sys.argv[-1]
    neue, (alter_soname, alte) = veroeffentlicht(bibliothek), gelistet()
    weg = sorted(name for name, (schwach, _) in alte.items() if not schwach and name not in neue)
    dazu = sorted(name for name, schwach in neue.items() if not schwach and alte.get(name, (True,))[0])
    for name in weg:
        print(f"symbole: gone: {name}", file=sys.stderr)
    if pruefe:
        for name in dazu:
            print(f"symbole: new, not in {LISTE.name}: {name}", file=sys.stderr)
        raise SystemExit(1 if weg or dazu or alter_soname != soname(bibliothek) else 0)
    if weg and alter_soname == soname(bibliothek):
        raise SystemExit(f"symbole: hosts may use them; before they go, {alter_soname} has to count up")
    version = re.search(r"^project\(KVOBildZuordnung VERSION (\S+)", (WURZEL / "CMakeLists.txt").read_text(), re.M).group(1)
    zeilen = [zeile(name, schwach, alte.get(name, (None, version))[1]) for name, schwach in neue.items()]
    kopf = [f"{soname(bibliothek)} libkvobildzuordnung1 #MINVER#", "* Build-Depends-Package: libkvobildzuordnung-dev"]
    LISTE.write_text("\n".join(kopf + sorted(zeilen, key=lambda z: z.split('"')[-2] if '"' in z else z)) + "\n", encoding="utf-8")
    print(f"{len(zeilen)} Namen in {LISTE.relative_to(WURZEL)}")


if __name__ == "__main__":
    main()
