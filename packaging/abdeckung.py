#!/usr/bin/env python3
"""Makes docs/ABDECKUNG.md: every piece of the component by name, with the file it stands in and the tests that prove it.

docs/abdeckung.txt lists the pieces, a chapter for each class or module:
    ## Heading < source [source…]       sources without ending; "*" stands for any letters
    names of pieces : Suite.Beginning*   tests by name or by the beginning of it; "-" where no test shows the piece alone
Files and programs are looked up, so that moving a file or a test changes nothing in the list.

Usage: packaging/abdeckung.py [--pruefe]   --pruefe writes nothing and ends with 1 where the document is not up to date
"""
import fnmatch
import pathlib
import re
import sys

WURZEL = pathlib.Path(__file__).resolve().parent.parent
LISTE = WURZEL / "docs" / "abdeckung.txt"
DOKUMENT = WURZEL / "docs" / "ABDECKUNG.md"
TEST = re.compile(r"\b(?:TEST|TEST_F|TEST_P|RC_GTEST_PROP|RC_GTEST_FIXTURE_PROP)\(\s*(\w+)\s*,\s*(\w+)")


def lies(pfad):
    return pfad.read_text(encoding="utf-8")


def alle_tests():
    """(program, "Suite.Name") of every test, in the order of the programs and their sources."""
    for ordner in sorted((WURZEL / "tests").rglob("CMakeLists.txt")):
        for programm, inhalt in re.findall(r"\bkvo_test\((\w+)([^)]*)\)", lies(ordner)):
            for quelle in re.findall(r"[\w/]+\.cpp", inhalt):
                datei = ordner.parent / quelle
                if datei.is_file():
                    for suite, name in TEST.findall(lies(datei)):
                        yield programm, f"{suite}.{name}"


def datei_von(namen, dateien):
    """The source that defines all the names; else the first file, headers before sources, that has them all."""
    quellen_zuerst = sorted(dateien, key=lambda datei: datei.endswith(".h"))
    koepfe_zuerst = sorted(dateien, key=lambda datei: not datei.endswith(".h"))
    for folge, muster in ((quellen_zuerst, r"^[^\s/#][^;(\n]*\b{}\("), (koepfe_zuerst, r"\b{}\b")):
        for datei in folge:
            if all(re.search(muster.format(re.escape(name)), dateien[datei], re.MULTILINE) for name in namen):
                return datei
    raise SystemExit(f"abdeckung: {' '.join(namen)} stands in none of {' '.join(dateien)}")


def quellen(muster):
    dateien = {}
    for eines in muster:
        for endung in (".h", "*.cpp"):
            for datei in sorted(WURZEL.glob(eines + endung)):
                dateien[datei.relative_to(WURZEL).as_posix()] = lies(datei)
    return dateien


def beweise(muster, tests):
    if muster == ["-"]:
        return "–"
    gefunden = []
    for eines in muster:
        treffer = list(dict.fromkeys(test for _, test in tests if fnmatch.fnmatchcase(test, eines)))
        if not treffer:
            raise SystemExit(f"abdeckung: no test is called {eines}")
        gefunden += treffer
    programm = {}
    for name, test in tests:
        programm.setdefault(test, name)
    return ", ".join(f"`{programm[test]}: {test}`" for test in dict.fromkeys(gefunden))


def dokument():
    tests = list(alle_tests())
    zeilen, dateien, in_tabelle = [], {}, False
    for zeile in lies(LISTE).split("\n"):
        if zeile.startswith("## "):
            titel, _, muster = zeile.partition(" < ")
            dateien, in_tabelle = quellen(muster.split()), False
            zeilen.append(titel)
        elif " : " in zeile and dateien:
            links, _, rechts = zeile.partition(" : ")
            if not in_tabelle:
                zeilen += ["| Name | Datei | Beweis |", "|---|---|---|"]
                in_tabelle = True
            namen = links.split()
            stuecke = ", ".join(f"`{name}`" for name in namen)
            zeilen.append(f"| {stuecke} | `{datei_von(namen, dateien)}` | {beweise(rechts.split(), tests)} |")
        else:
            zeilen.append(zeile)
    return "\n".join(zeilen)


def main():
    text = dokument()
    if sys.argv[1:] != ["--pruefe"]:
        DOKUMENT.write_text(text, encoding="utf-8")
    elif text != lies(DOKUMENT):
        raise SystemExit("abdeckung: docs/ABDECKUNG.md is not what packaging/abdeckung.py makes")


if __name__ == "__main__":
    main()
