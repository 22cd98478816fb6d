#!/usr/bin/env python3
"""Reads what the runs of a build with the preset "coverage" have counted, and prints lines and branches of each room, of
all, and the files that miss the most lines.

Usage: packaging/zeilentafel.py BAUORDNER [--offen DATEI…]

With --offen the lines of these files that nothing ran are listed instead. Branches that only exist for an exception to
fly do not count. What is counted comes from the objects of the product; code in headers that only tests compile is none.
"""
import collections
import concurrent.futures
import json
import pathlib
import subprocess
import sys

WURZEL = pathlib.Path(__file__).resolve().parent.parent
RAEUME = ("platform", "imaging", "exif", "store", "dialogs", "component", "host")


def zaehlung(gcda):
    """What one object has counted, as gcov tells it: (file, line) → count, (file, line, number of the branch) → count."""
    lauf = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", str(gcda)],
                          capture_output=True, text=True, check=True, cwd=gcda.parent)
    zeilen, zweige = collections.Counter(), collections.Counter()
    for text in lauf.stdout.splitlines():
        angaben = json.loads(text)
        ort = pathlib.Path(angaben["current_working_directory"])
        for datei in angaben["files"]:
            pfad = pathlib.Path(ort, datei["file"]).resolve()
            if not pfad.is_relative_to(WURZEL) or pfad.relative_to(WURZEL).parts[0] not in RAEUME:
                continue
            name = pfad.relative_to(WURZEL).as_posix()
            for zeile in datei["lines"]:
                zeilen[name, zeile["line_number"]] += zeile["count"]
                echte = [z for z in zeile["branches"] if not z["throw"]]
                for nummer, zweig in enumerate(echte if len(echte) > 1 else []):
                    zweige[name, zeile["line_number"], nummer] += zweig["count"]
    return zeilen, zweige


def anteil(getan, von):
    return f"{100 * getan / von:5.1f} %" if von else "      –"


def zeige(zeilen, zweige):
    je = collections.defaultdict(lambda: [0, 0, 0, 0])
    offen = collections.Counter()
    for versatz, alle in ((0, zeilen), (2, zweige)):
        for schluessel, anzahl in alle.items():
            for raum in (schluessel[0].split("/")[0], "alles"):
                je[raum][versatz] += anzahl > 0
                je[raum][versatz + 1] += 1
            if versatz == 0 and anzahl == 0:
                offen[schluessel[0]] += 1
    print(f"{'':12} {'Zeilen':>8} {'':>7} {'Zweige':>8}")
    for raum in (*RAEUME, "alles"):
        z = je[raum]
        print(f"{raum:12} {z[1]:8} {anteil(z[0], z[1])} {z[3]:8} {anteil(z[2], z[3])}")
    print("\nZeilen, die nicht liefen, die meisten zuerst:")
    for name, anzahl in offen.most_common(45):
        print(f"{anzahl:5}  {name}")


def main():
    bau = pathlib.Path(sys.argv[1])
    alle = [gcda for raum in RAEUME for gcda in sorted((bau / raum).rglob("*.gcda"))]
    zeilen, zweige = collections.Counter(), collections.Counter()
    with concurrent.futures.ThreadPoolExecutor() as arbeiter:
        for eine_Zeilen, eine_Zweige in arbeiter.map(zaehlung, alle):
            zeilen.update(eine_Zeilen)
            zweige.update(eine_Zweige)
    if sys.argv[2:3] == ["--offen"]:
        for name in sys.argv[3:]:
            nummern = sorted(zeile for datei, zeile in zeilen if datei == name and zeilen[datei, zeile] == 0)
            text = (WURZEL / name).read_text(encoding="utf-8").splitlines()
            print(name, *(f"{nummer:5}  {text[nummer - 1]}" for nummer in nummern), sep="\n")
    else:
        zeige(zeilen, zweige)


if __name__ == "__main__":
    main()
