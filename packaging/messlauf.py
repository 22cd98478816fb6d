#!/usr/bin/env python3
"""Runs a program and looks every while at its memory, its open handles and the files in its temporary folder.

Usage: packaging/messlauf.py --name NAME --tmp ORDNER --ergebnis DATEI --protokoll DATEI [--urteile] -- PROGRAMM [WORT…]

The program gets ORDNER as its TMPDIR and is a process group of its own, which ends with this program, also when that is
told to end (SIGTERM, SIGINT). What it says goes to PROTOKOLL. One line is added to ERGEBNIS, its cells parted by tabs:
name, seconds, exit code, memory in MB, handles and files (each "middle → end"), files left afterwards, verdict.

With --urteile growth is a fault: of the samples the first third, in which caches fill, does not count; the median of the
last third may be over that of the middle third by 10 % and 16 MB for the memory, by 2 for the handles, by 10 % and 20
for the files. A median, since one picture that claims to be huge takes a moment's memory and gives it back. Memory is
judged where the program ran for at least five minutes. Files that are left when the program has ended are always a fault.
"""
import argparse
import os
import pathlib
import shutil
import signal
import statistics
import subprocess
import sys
import time

# Seconds from which growth counts: a process that has just begun opens what it keeps.
LANGE_GENUG = {"rss": 300, "griffe": 30, "dateien": 30}
# For each value: the part and the amount that it may grow by.
SPIELRAUM = {"rss": (0.10, 16.0), "griffe": (0.0, 2.0), "dateien": (0.10, 20.0)}


def speicher_MB(pid):
    for zeile in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        if zeile.startswith("VmRSS:"):
            return int(zeile.split()[1]) / 1024
    raise ProcessLookupError(pid)  # a zombie has none


def messe(pid, ordner, mit_Dateien):
    """None where the program has just ended."""
    try:
        werte = {"rss": speicher_MB(pid), "griffe": len(os.listdir(f"/proc/{pid}/fd"))}
    except (OSError, ProcessLookupError):
        return None
    werte["dateien"] = zaehle(ordner) if mit_Dateien else 0
    return werte


def zaehle(ordner):
    return sum(len(dateien) for _, _, dateien in os.walk(ordner))


def drittel(proben, name):
    werte = [probe[name] for probe in proben]
    n = len(werte) // 3
    return (statistics.median(werte[n:2 * n]), statistics.median(werte[2 * n:])) if n else (0, 0)


def wuchs(name, mitte, ende):
    anteil, betrag = SPIELRAUM[name]
    return ende > mitte * (1 + anteil) + betrag


def beende(prozess):
    """The whole group, by its id; what does not want to go is killed."""
    for zeichen, frist in ((signal.SIGTERM, 20), (signal.SIGKILL, 20)):
        try:
            os.killpg(prozess.pid, zeichen)
        except ProcessLookupError:
            pass
        try:
            return prozess.wait(frist)
        except subprocess.TimeoutExpired:
            continue
    return prozess.wait()


def laufe(angaben):
    """Exit code, samples, seconds."""
    ordner = pathlib.Path(angaben.tmp)
    ordner.mkdir(parents=True, exist_ok=True)
    proben, beginn, takt = [], time.monotonic(), 0.25
    with open(angaben.protokoll, "a", encoding="utf-8") as protokoll:
        prozess = subprocess.Popen(angaben.programm, stdin=subprocess.DEVNULL, stdout=protokoll,
                                   stderr=subprocess.STDOUT, start_new_session=True,
                                   env={**os.environ, "TMPDIR": str(ordner)})

        def abgebrochen(zeichen, _):
            beende(prozess)
            sys.exit(128 + zeichen)

        for zeichen in (signal.SIGTERM, signal.SIGINT):
            signal.signal(zeichen, abgebrochen)
        try:
            while prozess.poll() is None:
                time.sleep(takt)
                if len(proben) == 600:  # ever fewer for a long run, so that their number stays bounded
                    proben, takt = proben[::2], takt * 2
                probe = messe(prozess.pid, ordner, angaben.urteile)
                if probe:
                    proben.append(probe)
        finally:
            beende(prozess)
    return prozess.returncode, proben, time.monotonic() - beginn


def urteil(angaben, code, sekunden, werte, uebrig):
    gruende = [] if code == 0 else [f"endete mit {code}"]
    if angaben.urteile:
        gruende += [f"{name} wuchs" for name in werte
                    if sekunden >= LANGE_GENUG[name] and wuchs(name, *werte[name])]
    if uebrig and code >= 0:
        gruende.append(f"{uebrig} Dateien übrig")
    return "; ".join(gruende)


def main():
    leser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("name", "tmp", "ergebnis", "protokoll"):
        leser.add_argument("--" + name, required=True)
    leser.add_argument("--urteile", action="store_true")
    leser.add_argument("programm", nargs="+")
    angaben = leser.parse_args()
    code, proben, sekunden = laufe(angaben)
    werte = {name: drittel(proben, name) for name in SPIELRAUM}
    uebrig = zaehle(angaben.tmp)
    grund = urteil(angaben, code, sekunden, werte, uebrig)
    spalten = [f"{mitte:.0f} → {ende:.0f}" for mitte, ende in werte.values()] if angaben.urteile else ["–"] * 3
    with open(angaben.ergebnis, "a", encoding="utf-8") as ergebnis:
        ergebnis.write("\t".join([angaben.name, f"{sekunden:.0f}", str(code), *spalten, str(uebrig), grund]) + "\n")
    shutil.rmtree(angaben.tmp, ignore_errors=True)
    # As a shell tells it; 1 where the program itself ended well.
    return (128 - code if code < 0 else code or 1) if grund else 0


if __name__ == "__main__":
    sys.exit(main())
