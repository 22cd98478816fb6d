#!/usr/bin/env python3
"""Prints what gcovr's summary says: lines and branches of each room, of all, and the files that miss the most lines.

Usage: packaging/zeilentafel.py ZUSAMMENFASSUNG.json
"""
import collections
import json
import sys


def anteil(getan, von):
    return f"{100 * getan / von:5.1f} %" if von else "      –"


def main():
    with open(sys.argv[1], encoding="utf-8") as datei:
        dateien = json.load(datei)["files"]
    raeume = collections.defaultdict(collections.Counter)
    for eine in dateien:
        for raum in (eine["filename"].split("/")[0], "alles"):
            for was in ("line_covered", "line_total", "branch_covered", "branch_total"):
                raeume[raum][was] += eine[was]
    print(f"{'':12} {'Zeilen':>8} {'':>8} {'Zweige':>8}")
    for raum, z in sorted(raeume.items(), key=lambda paar: (paar[0] == "alles", paar[0])):
        print(f"{raum:12} {z['line_total']:8} {anteil(z['line_covered'], z['line_total'])} "
              f"{z['branch_total']:8} {anteil(z['branch_covered'], z['branch_total'])}")
    print("\nNicht gelaufene Zeilen, die meisten zuerst:")
    for eine in sorted(dateien, key=lambda d: d["line_covered"] - d["line_total"])[:40]:
        if offen := eine["line_total"] - eine["line_covered"]:
            print(f"{offen:5} von {eine['line_total']:4}  {eine['filename']}")


if __name__ == "__main__":
    main()
