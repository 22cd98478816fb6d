#!/usr/bin/env python3
"""Öffnet die Bilder eines Belegs und sagt, was der Benutzer gespeichert hat.

Aufruf: zuordnen.py BELEGART NUMMER [FENSTERKENNUNG]
Datenbank und Bildablage nennen KVOBILD_VERBINDUNG und KVOBILD_BILDER, sonst gilt die zuletzt geöffnete.
"""
import json
import subprocess
import sys


def zeige_bilder(belegart, nummer, fenster=None, kennwort=None):
    """Wartet, bis der Dialog geschlossen ist; gibt den Ausgang und das Ergebnis."""
    aufruf = ["bildzuordnung", "dialog", "zuordnung", "--json", "--typ1=BEL", f"--key1={belegart}", f"--key2={nummer}",
              f"--titel=Beleg {belegart} {nummer}"]
    if fenster:
        aufruf.append(f"--ueber={fenster}")
    if kennwort is not None:
        aufruf.append("--kennwort-von-stdin")
    lauf = subprocess.run(aufruf, input=f"{kennwort or ''}\n", stdout=subprocess.PIPE, encoding="utf-8", check=False)
    if lauf.returncode == 2:  # falscher Aufruf, kein Bildschirm: Die Worte stehen auf der Fehlerausgabe.
        raise SystemExit(2)
    return lauf.returncode, json.loads(lauf.stdout)


def main():
    if len(sys.argv) < 3:
        raise SystemExit(__doc__)
    ausgang, ergebnis = zeige_bilder(*sys.argv[1:4])
    print(ergebnis["text"])
    for bild in ergebnis["bilder"]:
        print(f"  {bild['name']}: {bild['verbleib']} {bild['hinweis']}".rstrip())
    return ausgang


if __name__ == "__main__":
    sys.exit(main())
