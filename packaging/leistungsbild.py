#!/usr/bin/env python3
"""Draws docs/leistung.svg: each measured job of docs/LEISTUNG.md beside its aim, by the tables there.

A row with a short name in its column "Kurz" is drawn, under the heading of its table: the bar is the measured value as a share
of the aim, so that all end at or before the same line where the aim is kept. A row with an upper bound and no short name ends it.

Usage: packaging/leistungsbild.py [--pruefe]   --pruefe writes nothing and ends with 1 where the drawing is not up to date
"""
import html
import pathlib
import re
import sys

WURZEL = pathlib.Path(__file__).resolve().parent.parent
TABELLEN = WURZEL / "docs" / "LEISTUNG.md"
BILD = WURZEL / "docs" / "leistung.svg"

KOPFZEILE = ["Kurz", "Was", "Programm", "Ziel", "Gemessen"]
ZAHL, EINHEIT = r"\d[\d.]*(?:,\d+)?", r"×|ms|MB|%"
ZIEL = re.compile(rf"[≤<] ({ZAHL}) ({EINHEIT})")

BREITE, RAND, ZEILE, KOPF = 1000, 16, 22, 30
LINKS, BALKEN, ZIELLINIE = 270, 460, 400  # where the bars begin, how long the longest is, and where their aim lies
HELL = {"grund": "#fff", "schrift": "#222", "leise": "#666", "feld": "#eef2f7", "gut": "#3c78b4", "schlecht": "#c8551b", "ziel": "#222"}
DUNKEL = {"grund": "#16191d", "schrift": "#e4e7ea", "leise": "#9aa4ae", "feld": "#252b32", "gut": "#6ea8dc", "schlecht": "#f0884a", "ziel": "#e4e7ea"}


def zahl(worte):
    return float(worte.replace(".", "").replace(",", "."))


def gemessen(worte, einheit):
    """The value that counts: the middle where one is named, else the worst; what stands in brackets says more of the same."""
    ohne_klammern = re.sub(r"\([^)]*\)", "", worte)
    treffer = re.search(rf"Mitte ({ZAHL}) {einheit}", ohne_klammern)
    alle = [treffer[1]] if treffer else [
        z for a, b in re.findall(rf"({ZAHL})(?: bis ({ZAHL}))? {einheit}", ohne_klammern) for z in (a, b) if z]
    if not alle:
        raise SystemExit(f"leistungsbild: no number of {einheit} in: {worte}")
    return max(alle, key=zahl)


def reihen():
    """(heading, short name, measured, aim, unit) of each row that is drawn, in the order of the document."""
    ueberschrift, in_Tabelle = "", False
    for zeile in TABELLEN.read_text(encoding="utf-8").splitlines():
        if zeile.startswith("#"):
            ueberschrift = zeile.lstrip("# ")
        zellen = [z.strip() for z in zeile.strip().strip("|").split("|")] if zeile.startswith("|") else []
        if not zellen or zellen == KOPFZEILE:
            in_Tabelle = bool(zellen)
            continue
        if not in_Tabelle or set(zeile) <= set("|-"):
            continue
        if len(zellen) != len(KOPFZEILE):
            raise SystemExit(f"leistungsbild: {len(zellen)} cells: {zeile}")
        kurz, _, _, ziel, wert = zellen
        grenze = ZIEL.fullmatch(ziel)
        if bool(grenze) != bool(kurz):
            raise SystemExit(f"leistungsbild: a short name and an upper bound belong together: {zeile}")
        if grenze:
            yield ueberschrift, kurz, gemessen(wert, grenze[2]), grenze[1], grenze[2]


def text(x, y, worte, art):
    return f'  <text x="{x}" y="{y}" class="{art}">{html.escape(worte)}</text>'


def balken(y, kurz, wert, ziel, einheit):
    anteil = zahl(wert) / zahl(ziel)
    gut = anteil <= 1
    laenge = max(2, min(BALKEN, round(anteil * ZIELLINIE, 1)))
    yield text(LINKS - 10, y + 15, kurz, "kurz")
    yield f'  <rect x="{LINKS}" y="{y + 3}" width="{ZIELLINIE}" height="{ZEILE - 6}" class="feld"/>'
    yield f'  <rect x="{LINKS}" y="{y + 3}" width="{laenge:g}" height="{ZEILE - 6}" class="{"gut" if gut else "schlecht"}"/>'
    if laenge == BALKEN:
        # What would not fit goes on.
        x = LINKS + BALKEN
        yield f'  <path d="M{x} {y + 3} l8 {(ZEILE - 6) / 2:g} l-8 {(ZEILE - 6) / 2:g} z" class="schlecht"/>'
    yield text(LINKS + BALKEN + 16, y + 15, f"{wert} {einheit}", "wert")
    yield text(LINKS + BALKEN + 120, y + 15, f"Ziel {ziel} {einheit}" + ("" if gut else ", verfehlt"), "leise")


def stil(farben, einzug):
    return [f"{einzug}{auswahl} {{ {eigenschaft}: {farben[name]} }}" for auswahl, eigenschaft, name in (
        (".grund", "fill", "grund"), ("text", "fill", "schrift"), ("text.leise", "fill", "leise"), (".feld", "fill", "feld"),
        (".gut", "fill", "gut"), (".schlecht", "fill", "schlecht"), (".ziel", "stroke", "ziel"))]


def zeichnung():
    teile, linien, y, bisher = [], [], RAND + 40, None
    for ueberschrift, *werte in reihen():
        if ueberschrift != bisher:
            y += KOPF if bisher else 0
            teile.append(text(RAND, y + 13, ueberschrift, "titel"))
            bisher = ueberschrift
            y += ZEILE
            linien.append([y, y])
        teile += balken(y, *werte)
        y += ZEILE
        linien[-1][1] = y
    x = LINKS + ZIELLINIE
    teile += [f'  <path d="M{x} {oben} V{unten}" class="ziel"/>' for oben, unten in linien]
    hoehe = y + RAND
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {BREITE} {hoehe}" width="{BREITE}" height="{hoehe}">',
        "  <title>Gemessen gegen Ziel</title>", "  <style>",
        "    text { font-family: 'DejaVu Sans', sans-serif; font-size: 12px }", "    .titel { font-size: 14px; font-weight: bold }",
        "    .kurz { text-anchor: end }", "    .wert { font-weight: bold }", "    .mitte { text-anchor: middle }", "    .ziel { stroke-width: 2 }",
        *stil(HELL, "    "), "    @media (prefers-color-scheme: dark) {", *stil(DUNKEL, "      "), "    }", "  </style>",
        f'  <rect width="{BREITE}" height="{hoehe}" class="grund"/>',
        text(RAND, RAND + 16, "Gemessen, als Anteil am Ziel", "titel"),
        text(x, RAND + 16, "Ziel", "mitte"), text(LINKS, RAND + 16, "0", "mitte"),
        f'  <path d="M{x} {RAND + 21} v8" class="ziel"/>', *teile, "</svg>", ""])


def main():
    if sys.argv[1:] != ["--pruefe"]:
        BILD.write_text(zeichnung(), encoding="utf-8")
    elif not BILD.is_file() or zeichnung() != BILD.read_text(encoding="utf-8"):
        raise SystemExit("leistungsbild: docs/leistung.svg is not what packaging/leistungsbild.py draws")


if __name__ == "__main__":
    main()
