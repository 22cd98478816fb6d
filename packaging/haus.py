#!/usr/bin/env python3
"""Draws docs/haus.svg: the floors of the house and the rooms on them, by the folders of the product. A folder that has no
words here ends it, so that the drawing can't be forgotten.

Usage: packaging/haus.py [--pruefe]   --pruefe writes nothing and ends with 1 where the drawing is not up to date
"""
import html
import pathlib
import sys

WURZEL = pathlib.Path(__file__).resolve().parent.parent
BILD = WURZEL / "docs" / "haus.svg"

# From the top down: number, heading, and on each floor its rooms with what they hold.
STOCKWERKE = [
    ("6", "Die Programme", [
        ("host/fenster", "Fenster von bildzuordnung"), ("host/fenster/dialog", "ein Dialog als Programm"), ("host/rundgang", "der Rundgang ohne Benutzer"),
        ("host/kvobild", "die Befehle"), ("host/kvobild/pruefung", "was an einer Datenbank falsch sein kann"),
        ("host/bericht", "der Bildbericht: Inhalt, Seiten"), ("host/bericht/pdf", "seine Datei"),
        ("host/betrieb", "Verbindung, Anmeldung, Schema, Namen"),
        ("host/betrieb/befehl", "Befehlszeile, Ausgabe, Auftrag"),
        ("host/betrieb/vorgang", "Vorgänge und woher sie kommen"), ("host/betrieb/beispiel", "Beispieldaten"),
        ("host/betrieb/vorgaenge", "eigene Vorgänge, Listen einlesen"), ("host/fenster/vorgaenge", "Vorgang, Einlesen, Anfang"),
        ("host/betrieb/aufraeumen", "was geht, was bleibt, Papierkorb"), ("host/betrieb/protokoll", "was mit Bildern geschah"),
        ("host/betrieb/aufnahme", "Bilder aufnehmen, zurücknehmen"), ("host/fenster/aufraeumen", "was geht, Papierkorb"), ("host/fenster/aufnahme", "ziehen, einfügen, Fortschritt"),
        ("host/bericht/ausgabe", "Bilder ausgeben, ohne Ortsangaben"), ("host/fenster/bericht", "Bericht: Vorschau, Druck, Mail"), ("host/fenster/ausgabe", "wohin Bilder gehen")]),
    ("5", "Die Bibliothek", [
        ("component", "was ein Wirt sieht"), ("component/weg", "der Weg eines Wirts: lesen, zeigen, schreiben, prüfen")]),
    ("4", "Die Dialoge", [
        ("dialogs", "was alle Dialoge teilen"), ("dialogs/assignment", "Zuordnung"), ("dialogs/search", "Bildsuche"), ("dialogs/overview", "Übersichten")]),
    ("3", "Der Bestand", [("store", "Zuordnung, Sammlung, Anweisungen, Bilddateien, Druckmaße")]),
    ("2", "Bilder und ihre Angaben", [
        ("imaging", "laden, drehen, aufrichten, öffnen mit"), ("exif", "Exif lesen und zeigen")]),
    ("1", "Worauf alles steht: platform", [
        ("platform/forms", "Form, Dienste mit Fenstern"), ("platform/forms/gitter", "TDBGrid"),
        ("platform/forms/steuerelemente", "Knöpfe, Felder, Listen"),
        ("platform/adodb", "Connection, Recordset"), ("platform/adodb/odbc", "Treiber für den Server"),
        ("platform/adodb/sqlite", "Treiber für SQLite"),
        ("platform/gdiplus", "GDI+ mit seinen Nummern"), ("platform/gdiplus/bild", "Kopf, Entpacken, Speicher"),
        ("platform/gdiplus/jpeg", "Drehen, Marken, Kodieren"), ("platform/gdiplus/miniatur", "kleine Bilder, die bleiben"),
        ("platform/gdiplus/vorlauf", "Arbeit voraus, alle Kerne"),
        ("platform/files", "Dateien, Pfadkarte"), ("platform/files/wirt", "umziehen, Zeilen anhängen"), ("platform/shell", "Dateitypen, Programme"),
        ("platform/host", "was der Wirt stellt"), ("platform/basic", "Werte, Fehler, Text, Maße")]),
]
BREITE, RAND, HOEHE, ABSTAND, KOPF = 1000, 16, 46, 8, 28
IN_EINER_REIHE, HOECHSTENS = 3, 4


def raeume():
    """Folders of the product that hold code."""
    for oben in ("host", "component", "dialogs", "store", "imaging", "exif", "platform"):
        for ordner in (WURZEL / oben, *(WURZEL / oben).rglob("*")):
            if ordner.is_dir() and any(ordner.glob("*.h")):
                yield ordner.relative_to(WURZEL).as_posix()


def text(x, y, worte, art):
    return f'  <text x="{x}" y="{y}" class="{art}">{html.escape(worte)}</text>'


def zeichnung():
    teile, y = [], RAND
    for nummer, titel, zimmer in STOCKWERKE:
        je = len(zimmer) if len(zimmer) <= HOECHSTENS else IN_EINER_REIHE
        reihen = [zimmer[i:i + je] for i in range(0, len(zimmer), je)]
        hoehe = KOPF + len(reihen) * (HOEHE + ABSTAND)
        teile.append(f'  <rect x="{RAND}" y="{y}" width="{BREITE - 2 * RAND}" height="{hoehe}" class="stock"/>')
        teile.append(text(RAND + 12, y + 19, f"{nummer}  {titel}", "titel"))
        oben = y + KOPF
        for reihe in reihen:
            breite = (BREITE - 2 * RAND - ABSTAND) / len(reihe)
            for i, (name, worte) in enumerate(reihe):
                x = round(RAND + ABSTAND + i * breite)
                teile.append(f'  <rect x="{x}" y="{oben}" width="{round(breite - ABSTAND)}" height="{HOEHE}" class="raum"/>')
                teile.append(text(x + 10, oben + 19, name, "name"))
                teile.append(text(x + 10, oben + 36, worte, "worte"))
            oben += HOEHE + ABSTAND
        y += hoehe + ABSTAND
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {BREITE} {y + RAND}" width="{BREITE}" height="{y + RAND}">',
        "  <style>", "    text { font-family: 'DejaVu Sans', sans-serif; fill: #222 }",
        "    .stock { fill: #eef2f7; stroke: #9fb2c8 }", "    .raum { fill: #fff; stroke: #9fb2c8 }",
        "    .titel { font-size: 14px; font-weight: bold }", "    .name { font-size: 13px; font-weight: bold }",
        "    .worte { font-size: 12px; fill: #555 }", "  </style>",
        f'  <rect width="{BREITE}" height="{y + RAND}" fill="#fff"/>', *teile, "</svg>", ""])


def main():
    genannt = {name for _, _, zimmer in STOCKWERKE for name, _ in zimmer}
    if fehlt := sorted(set(raeume()) ^ genannt):
        raise SystemExit(f"haus: drawn and built are not the same: {' '.join(fehlt)}")
    if sys.argv[1:] != ["--pruefe"]:
        BILD.write_text(zeichnung(), encoding="utf-8")
    elif zeichnung() != BILD.read_text(encoding="utf-8"):
        raise SystemExit("haus: docs/haus.svg is not what packaging/haus.py draws")


if __name__ == "__main__":
    main()
