#!/usr/bin/env python3
"""Runs clang-tidy over the project in pieces, as .clang-tidy says. A source that was found clean is not looked at again
until it, a header of the project that it includes, or the rules change; so any number of short runs see the whole tree.

The sources are those of a build without precompiled headers, which clang-tidy does not read (build/tidy, only
configured). Findings go to standard output.

Usage: packaging/tidy.py [--sekunden N] [SOURCE…]   all sources unless some are named; no new one begins after N seconds
Ends with 1 for findings, with 3 where sources are left, else with 0.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

WURZEL = pathlib.Path(__file__).resolve().parent.parent
BAU = WURZEL / "build" / "tidy"
ERGEBNISSE = BAU / "ergebnisse"
# A test is one long function of GoogleTest's macros, of which the analyzer would walk each path, for most of the time
# that a source takes; so many steps see what a reader would. The sanitizers run the tests.
WENIGER_SCHRITTE = [f"--extra-arg={wort}" for wort in ("-Xclang", "-analyzer-config", "-Xclang", "max-nodes=10000")]
# What a source needs besides. clang 14 can't read qpdf's headers with the vector that the library has from C++20 on.
EIGENES = {"host/bericht/pdf/Pdfdatei.cpp": ["--extra-arg=-std=c++17"]}
EINBINDUNG = re.compile(rb'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def richte_ein():
    """Compile commands for all sources; written anew, since files come and go."""
    subprocess.run(
        ["cmake", "--preset", "ci", "-B", str(BAU), "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON", "-DKVO_BENCH=OFF"],
        cwd=WURZEL, check=True, stdout=subprocess.DEVNULL)
    # One source includes what Qt's compiler makes of it.
    subprocess.run(["cmake", "--build", str(BAU), "--target", "kvo_auskunft_autogen"], check=False,
                   stdout=subprocess.DEVNULL)
    ERGEBNISSE.mkdir(exist_ok=True)
    befehle = json.loads((BAU / "compile_commands.json").read_text(encoding="utf-8"))
    pfade = {pathlib.Path(b["directory"], b["file"]).resolve() for b in befehle}
    return sorted(str(p.relative_to(WURZEL)) for p in pfade if WURZEL in p.parents and BAU not in p.parents)


def gelesenes(datei, bisher):
    """The file and what of the project it includes, by path."""
    if datei in bisher or not (WURZEL / datei).is_file():
        return bisher
    bisher[datei] = (WURZEL / datei).read_bytes()
    for kopf in EINBINDUNG.findall(bisher[datei]):
        gelesenes(kopf.decode(), bisher)
    return bisher


def kennung(quelle, regeln):
    summe = hashlib.sha256(regeln)
    for pfad, inhalt in sorted(gelesenes(quelle, {}).items()):
        summe.update(pfad.encode() + b"\0" + inhalt + b"\0")
    return ERGEBNISSE / summe.hexdigest()


def pruefe(quelle, marke):
    """The findings of a source; none leaves its mark, so that it is not looked at again."""
    lauf = subprocess.run(
        ["clang-tidy", "--quiet", "-p", str(BAU), "--warnings-as-errors=*", "--extra-arg=-Wno-unknown-warning-option",
         *EIGENES.get(quelle, WENIGER_SCHRITTE if quelle.startswith("tests/") else []), quelle],
        cwd=WURZEL, capture_output=True, text=True, check=False)
    if lauf.returncode == 0:
        marke.touch()
        return ""
    return lauf.stdout + lauf.stderr


def main(argumente):
    grenze = float("inf")
    if argumente[:1] == ["--sekunden"]:
        grenze = time.monotonic() + float(argumente[1])
        argumente = argumente[2:]
    if shutil.which("clang-tidy") is None:
        sys.exit("tidy: clang-tidy is not installed")
    alle = richte_ein()
    gewollt = [q for q in argumente if q in alle] if argumente else alle
    regeln = (WURZEL / ".clang-tidy").read_bytes()
    offen = [(q, marke) for q in gewollt if not (marke := kennung(q, regeln)).exists()]
    print(f"tidy: {len(gewollt)} sources, {len(offen)} not known as clean", file=sys.stderr, flush=True)

    def eine(auftrag):
        return None if time.monotonic() > grenze else pruefe(*auftrag)

    befunde = uebrig = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as kraefte:
        for worte in kraefte.map(eine, offen):
            uebrig += worte is None
            if worte:
                befunde += 1
                print(worte, flush=True)
    print(f"tidy: findings in {befunde} sources, {uebrig} left for another run", file=sys.stderr)
    return 1 if befunde else 3 if uebrig else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
