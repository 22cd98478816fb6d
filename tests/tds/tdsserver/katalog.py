"""The declared columns of the server's tables, read from the scripts that create them."""

from __future__ import annotations

import re
from pathlib import Path

from .antworten import Spalte
from .typen import GANZE_ZAHLEN, Typ
from .zerleger import Stueck, bedeutende, blosser_name

_GO = re.compile(r"^[ \t]*GO[ \t]*\r?$", re.IGNORECASE | re.MULTILINE)
_SPALTENTYP = re.compile(r"^\s*(\w+)\s*(?:\(\s*(\d+|max)[^)]*\))?", re.IGNORECASE)
_TEXTTYPEN = {"nvarchar", "varchar", "char", "nchar", "varbinary"}
_GLEICHWERTIG = {"integer": "int", "real": "float", "double": "float", "text": "nvarchar", "character": "char",
                 "blob": "varbinary"}  # fmt: skip


def zerlege_skript(text: str) -> list[str]:
    """The batches of a script: what stands between lines that hold only the word GO."""
    return [teil.strip() for teil in _GO.split(text) if bedeutende(teil)]


def typ_aus_text(text: str) -> Typ | None:
    """The type that a declaration like "nvarchar(50)" names, None where it names no known one."""
    treffer = _SPALTENTYP.match(text)
    if treffer is None:
        return None
    name = _GLEICHWERTIG.get(treffer[1].lower(), treffer[1].lower())
    if name in GANZE_ZAHLEN or name == "float":
        return Typ(name)
    if name not in _TEXTTYPEN:
        return None
    laenge = (treffer[2] or "").lower()
    if not laenge.isdigit():
        return Typ(name, 1 if name in ("char", "nchar") else 0)
    return Typ(name, int(laenge))


# The tables that every database of the tests begins with.
TABELLEN = ("Bild_Zuordnungen.sql", "Wirtstabellen_Beispiel.sql")


class Katalog:
    """Tables and columns by name, without regard to case."""

    def __init__(self) -> None:
        self.tabellen: dict[str, list[Spalte]] = {}
        self._namen: dict[str, str] = {}
        self._typen: dict[str, Typ | None] = {}

    @staticmethod
    def aus_ordner(ordner: Path) -> Katalog:
        katalog = Katalog()
        for skript in (ordner / name for name in TABELLEN):
            for stapel in zerlege_skript(skript.read_text(encoding="utf-8")):
                katalog.nimm(stapel)
        return katalog

    def nimm(self, anweisung: str) -> None:
        """Takes note where the text creates a table or an index or adds a column; any other text is passed over."""
        stuecke = bedeutende(anweisung)
        hinzu = next((i for i, s in enumerate(stuecke) if s.ist("ADD")), 0)
        if [s.text.upper() for s in stuecke[:2]] == ["ALTER", "TABLE"] and 0 < hinzu < len(stuecke) - 2:
            self._nimm_spalte(anweisung, blosser_name(stuecke[hinzu - 1]), stuecke[hinzu + 1])
            return
        for i in range(len(stuecke) - 2):
            if not stuecke[i].ist("CREATE"):
                continue
            if stuecke[i + 1].ist("TABLE"):
                self._nimm_tabelle(anweisung, stuecke[i + 2 :])
            elif stuecke[i + 1].ist("INDEX"):
                name = blosser_name(stuecke[i + 2])
                self._namen[name.lower()] = name
            return

    def typ_in(self, tabelle: str, spalte: str) -> Typ | None:
        """The declared type of a column of a table; else what `typ` knows of the name alone."""
        spalten = self.tabellen.get(self.schreibweise(tabelle), [])
        return next((s.typ for s in spalten if s.name.lower() == spalte.lower()), None) or self.typ(spalte)

    def typ(self, spalte: str) -> Typ | None:
        """The declared type of a column; None where no table has it, or two have it with different types."""
        return self._typen.get(spalte.lower())

    def schreibweise(self, name: str) -> str:
        """A name of a table, a column or an index as the scripts write it, else as given."""
        return self._namen.get(name.lower(), name)

    def _nimm_tabelle(self, text: str, stuecke: list[Stueck]) -> None:
        auf = next((i for i, s in enumerate(stuecke) if s.ist("(")), 0)
        if auf == 0:
            return
        tabelle = blosser_name(stuecke[auf - 1])
        spalten = []
        for erstes, letztes in _glieder(stuecke[auf + 1 :]):
            typ = typ_aus_text(text[erstes.ende : letztes.ende])
            if typ is not None:
                spalten.append(Spalte(blosser_name(erstes), typ))
        self.tabellen[tabelle] = spalten
        self._namen[tabelle.lower()] = tabelle
        for spalte in spalten:
            self._merke(spalte)

    def _nimm_spalte(self, text: str, tabelle: str, name: Stueck) -> None:
        typ = typ_aus_text(text[name.ende :])
        if typ is None:
            return
        spalte = Spalte(blosser_name(name), typ)
        spalten = self.tabellen.setdefault(self.schreibweise(tabelle), [])
        spalten[:] = [s for s in spalten if s.name.lower() != spalte.name.lower()] + [spalte]
        self._merke(spalte)

    def _merke(self, spalte: Spalte) -> None:
        schluessel = spalte.name.lower()
        self._namen.setdefault(schluessel, spalte.name)
        gleich = self._typen.get(schluessel, spalte.typ) == spalte.typ
        self._typen[schluessel] = spalte.typ if gleich else None


def _glieder(stuecke: list[Stueck]) -> list[tuple[Stueck, Stueck]]:
    """First and last piece of each member of a list, up to the bracket that closes it."""
    glieder: list[tuple[Stueck, Stueck]] = []
    glied: list[Stueck] = []
    tiefe = 0
    for stueck in stuecke:
        tiefe += 1 if stueck.ist("(") else -1 if stueck.ist(")") else 0
        if tiefe < 0 or (tiefe == 0 and stueck.ist(",")):
            if glied:
                glieder.append((glied[0], glied[-1]))
            glied = []
            if tiefe < 0:
                break
        else:
            glied.append(stueck)
    return glieder
