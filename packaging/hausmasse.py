#!/usr/bin/env python3
"""Counts what tells how easily the product's code is read and changed: lines, lengths of functions, lines that begin far
to the right, places that stand twice, files in a folder, includes that point upwards. Reads the sources that git knows;
tests, benchmarks and examples do not count.

Usage: packaging/hausmasse.py [--stellen]    --stellen also lists the places behind the figures
"""
import collections
import pathlib
import re
import statistics
import subprocess
import sys

WURZEL = pathlib.Path(__file__).resolve().parent.parent
PRODUKT = ("platform", "imaging", "exif", "store", "dialogs", "component", "host")
# From the ground up; a folder may include from its own floor and from those below.
STOCKWERKE = {"platform": 1, "imaging": 2, "exif": 2, "store": 3, "dialogs": 4, "component": 5, "host": 6}
FENSTER_ZEILEN = 6
RECHTS = 32


def quellen():
    namen = subprocess.run(["git", "ls-files", "--", *PRODUKT], cwd=WURZEL, capture_output=True, text=True, check=True)
    return [n for n in namen.stdout.split("\n") if n.endswith((".cpp", ".h"))]


def ohne_worte(zeile, im_kommentar):
    """The line without comments, strings and characters, so that braces count only where they are code."""
    zeile = re.sub(r'"(\\.|[^"\\])*"|\'(\\.|[^\'\\])\'', '""', zeile)
    if im_kommentar:
        if "*/" not in zeile:
            return "", True
        zeile = zeile.split("*/", 1)[1]
    zeile = re.sub(r"/\*.*?\*/", "", zeile)
    if "/*" in zeile:
        return zeile.split("/*", 1)[0], True
    return zeile.split("//", 1)[0], False


def funktionen(zeilen):
    """(first line, number of lines of the body) of each function that is defined here."""
    tiefe, kopf, offene, im_kommentar = 0, "", [], False
    for nummer, roh in enumerate(zeilen, 1):
        zeile, im_kommentar = ohne_worte(roh, im_kommentar)
        if not zeile.strip() or zeile.lstrip().startswith("#"):
            continue
        kopf += " " + zeile.strip()
        for zeichen in zeile:
            if zeichen == "{":
                art = re.search(r"\b(namespace|class|struct|enum|union)\b[^()]*\{?$", kopf.split("{")[0])
                ist_funktion = "(" in kopf.split("{")[0] and not art and not any(o[1] for o in offene)
                offene.append((nummer, ist_funktion))
                tiefe += 1
            elif zeichen == "}" and offene:
                anfang, ist_funktion = offene.pop()
                tiefe -= 1
                if ist_funktion:
                    yield anfang, max(nummer - anfang - 1, 1)
        if zeile.rstrip().endswith((";", "{", "}", ":")):
            kopf = ""


def tragende(zeilen):
    """Lines that count for repetition, with their numbers: no blanks, comments, includes or lone punctuation."""
    for nummer, zeile in enumerate(zeilen, 1):
        kern = re.sub(r"\s+", " ", zeile.strip())
        if re.search(r"[A-Za-z0-9]", kern) and not kern.startswith(("//", "#", "*", "using ")):
            yield nummer, kern


def doppelte(dateien):
    """Pairs of places that share a run of at least FENSTER_ZEILEN lines."""
    fenster = collections.defaultdict(list)
    laeufe = {name: list(tragende(zeilen)) for name, zeilen in dateien.items()}
    for name, lauf in laeufe.items():
        for i in range(len(lauf) - FENSTER_ZEILEN + 1):
            fenster[tuple(k for _, k in lauf[i:i + FENSTER_ZEILEN])].append((name, i))
    paare = []
    for stellen in fenster.values():
        for a in range(len(stellen)):
            for b in range(a + 1, len(stellen)):
                (na, ia), (nb, ib) = stellen[a], stellen[b]
                davor = ia > 0 and ib > 0 and laeufe[na][ia - 1][1] == laeufe[nb][ib - 1][1]
                if not davor:
                    paare.append((na, laeufe[na][ia][0], nb, laeufe[nb][ib][0]))
    return sorted(paare)


def einbindungen(dateien):
    for name, zeilen in dateien.items():
        for zeile in zeilen:
            treffer = re.match(r'#include "([^"]+)"', zeile)
            if treffer and treffer.group(1) in dateien:
                yield name, treffer.group(1)


def kreise(pfeile):
    """The groups of places that lead back to themselves (Tarjan)."""
    nach = collections.defaultdict(set)
    for von, zu in pfeile:
        nach[von].add(zu)
        nach.setdefault(zu, set())
    nummer, tief, stapel, gruppen = {}, {}, [], []

    def besuche(ort):
        nummer[ort] = tief[ort] = len(nummer)
        stapel.append(ort)
        for ziel in nach[ort]:
            if ziel not in nummer:
                besuche(ziel)
            if ziel in stapel:
                tief[ort] = min(tief[ort], tief[ziel])
        if tief[ort] == nummer[ort]:
            gruppe = stapel[stapel.index(ort):]
            del stapel[len(stapel) - len(gruppe):]
            gruppen.append(gruppe)

    for ort in list(nach):
        if ort not in nummer:
            besuche(ort)
    return [g for g in gruppen if len(g) > 1]


def ordner_von(datei):
    return datei.rsplit("/", 1)[0]


def liegt_in(ordner, aussen):
    return ordner.startswith(aussen + "/")


def aufwaerts(dateien):
    """Includes from a floor into one above it; what leads in a circle from folder to folder; and what an inner folder
    includes of the one it lies in, where that header stands on the inner folder itself. The outer folder holds what
    others see, so it includes its inner ones; the headers that both need stand there too and include none of them.
    """
    pfeile = list(einbindungen(dateien))
    for von, zu in pfeile:
        if STOCKWERKE[von.split("/")[0]] < STOCKWERKE[zu.split("/")[0]]:
            yield von, zu
    ordner = {(ordner_von(v), ordner_von(z)) for v, z in pfeile}
    for kreis in kreise((v, z) for v, z in ordner if not liegt_in(v, z) and not liegt_in(z, v)):
        yield from ((v, z) for v, z in ordner if v in kreis and z in kreis and v != z)
    koepfe = collections.defaultdict(set)
    for von, zu in pfeile:
        if von.endswith(".h"):
            koepfe[von].add(zu)

    def steht_auf(kopf, innen, gesehen):
        gesehen.add(kopf)
        return any(ordner_von(z) == innen or z not in gesehen and steht_auf(z, innen, gesehen) for z in koepfe[kopf])

    for von, zu in pfeile:
        if liegt_in(ordner_von(von), ordner_von(zu)) and steht_auf(zu, ordner_von(von), set()):
            yield von, zu


def main():
    dateien = {n: (WURZEL / n).read_text(encoding="utf-8").split("\n") for n in quellen()}
    laengen = sorted((laenge, name, zeile) for name, zeilen in dateien.items() for zeile, laenge in funktionen(zeilen))
    rechts = [(n, i) for n, zeilen in dateien.items() for i, z in enumerate(zeilen, 1)
              if re.match(r" {%d,}[^ ]" % RECHTS, z)]
    ordner = collections.Counter(n.rsplit("/", 1)[0] for n in dateien)
    paare = doppelte(dateien)
    hoch = list(aufwaerts(dateien))
    zahlen = [laenge for laenge, _, _ in laengen]
    print(f"Dateien                          {len(dateien)}")
    print(f"Zeilen                           {sum(len(z) - 1 for z in dateien.values())}")
    print(f"Funktionen                       {len(zahlen)}, Median {statistics.median(zahlen):g}, "
          f"p90 {zahlen[len(zahlen) * 9 // 10]}, längste {zahlen[-1]}")
    print(f"Zeilen ab Spalte {RECHTS + 1}              {len(rechts)}")
    print(f"Paare gleicher Stellen (>= {FENSTER_ZEILEN})      {len(paare)}")
    print(f"Ordner mit mehr als 30 Dateien   {sum(1 for n in ordner.values() if n > 30)}")
    print(f"Includes nach oben               {len(hoch)}")
    if "--stellen" not in sys.argv[1:]:
        return
    for laenge, name, zeile in laengen[::-1][:12]:
        print(f"  Funktion {laenge:3}  {name}:{zeile}")
    for name, anzahl in ordner.most_common():
        if anzahl > 30:
            print(f"  Ordner {anzahl:3}  {name}")
    for na, ia, nb, ib in paare:
        print(f"  gleich  {na}:{ia} ~ {nb}:{ib}")
    for name, zahl in collections.Counter(n for n, _ in rechts).most_common(15):
        print(f"  rechts {zahl:3}  {name}")
    for name, ziel in hoch:
        print(f"  aufwärts  {name} -> {ziel}")


if __name__ == "__main__":
    main()
