"""Runs a batch: one statement behind the other, those of the server's own language here, the rest in the database."""

from __future__ import annotations

import re
import time
from dataclasses import dataclass
from typing import Iterator, Union

from . import maschine
from .auskunft import Sitzungswerte, setze_werte_ein
from .maschine import Abgebrochen, Arbeitsverbindung, Ergebnis, SqlFehler, Wache
from .zerleger import (ANFAENGE, LITERAL, ZAHL, Stueck, bedeutende, inhalt_des_literals, offene_klammerung,
                       zerlege_stapel)  # fmt: skip


@dataclass(frozen=True)
class Hinweis:
    """A message; an error where the class is above 10."""

    nummer: int
    text: str
    klasse: int = 0
    zustand: int = 1


@dataclass(frozen=True)
class Transaktionswechsel:
    """`was` is beginn, abschluss or ruecknahme, of the outermost transaction."""

    was: str


@dataclass(frozen=True)
class Anweisungsende:
    """A statement without rows and without a count is done, or one has failed."""

    gescheitert: bool = False


Ereignis = Union[Hinweis, Transaktionswechsel, Anweisungsende, Ergebnis]

_BEENDET = Hinweis(3621, "The statement has been terminated.")


class Stapellauf:
    """Runs the batches of one session."""

    def __init__(self, arbeit: Arbeitsverbindung, werte: Sitzungswerte, wache: Wache) -> None:
        self._arbeit = arbeit
        self._wache = wache
        self._implizit = False
        self.werte = werte

    def fuehre_aus(self, text: str) -> Iterator[Ereignis]:
        """What happens, in order; errors are among it. Raises Abgebrochen when the client cancels."""
        try:
            anweisungen = self._lies(text)
        except SqlFehler as fehler:
            yield from self._gescheitert(fehler)
            return
        for anweisung in anweisungen:
            try:
                yield from self._anweisung(anweisung)
                self.werte.fehlernummer = 0
            except SqlFehler as fehler:
                yield from self._gescheitert(fehler)
                if not fehler.weiter:
                    return

    def beginne(self) -> Iterator[Ereignis]:
        if self.werte.transaktionen == 0:
            self._arbeit.beginne()
            yield Transaktionswechsel("beginn")
        self.werte.transaktionen += 1
        yield Anweisungsende()

    def schliesse_ab(self) -> Iterator[Ereignis]:
        if self.werte.transaktionen == 0:
            raise SqlFehler(3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.")
        if self.werte.transaktionen == 1:
            self._arbeit.schliesse_ab()
            yield Transaktionswechsel("abschluss")
        self.werte.transaktionen -= 1
        yield Anweisungsende()

    def nimm_zurueck(self) -> Iterator[Ereignis]:
        if self.werte.transaktionen == 0:
            raise SqlFehler(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.")
        self._arbeit.nimm_zurueck()
        self.werte.transaktionen = 0
        yield Transaktionswechsel("ruecknahme")
        yield Anweisungsende()

    def _gescheitert(self, fehler: SqlFehler) -> Iterator[Ereignis]:
        self.werte.fehlernummer = fehler.nummer
        yield Hinweis(fehler.nummer, fehler.text, fehler.klasse, fehler.zustand)
        if fehler.weiter and fehler.nummer != maschine.ALLGEMEIN:
            yield _BEENDET
        yield Anweisungsende(gescheitert=True)

    def _lies(self, text: str) -> list[str]:
        """The statements. As on the server, nothing of a batch runs that cannot be read to its end."""
        rest = offene_klammerung(text)
        if rest is not None:
            wort = f"Unclosed quotation mark after the character string '{rest[:128]}'."
            raise SqlFehler(maschine.UNGESCHLOSSEN, wort, 15)
        anweisungen = zerlege_stapel(text)
        if len(anweisungen) > 1:
            for anweisung in anweisungen:
                if bedeutende(anweisung)[0].ist("SELECT", "INSERT", "UPDATE", "DELETE"):
                    self._arbeit.pruefe(setze_werte_ein(anweisung, self._arbeit, self.werte))
        return anweisungen

    def _anweisung(self, text: str) -> Iterator[Ereignis]:
        stuecke = bedeutende(text)
        erstes = stuecke[0].text.upper() if stuecke else ""
        if erstes == "IF":
            yield from self._wenn(text, stuecke)
        elif erstes in ("BEGIN", "COMMIT", "ROLLBACK", "SAVE"):
            yield from self._transaktion(erstes, stuecke)
        elif erstes == "PRINT":
            yield Hinweis(0, _text(self._ausgewertet(text[stuecke[0].ende :])))
            yield Anweisungsende()
        elif erstes in ("RAISERROR", "THROW"):
            yield from self._melde(stuecke)
        elif erstes == "WAITFOR":
            self._warte(stuecke)
            yield Anweisungsende()
        elif erstes == "SET":
            self._schalte(stuecke)
            yield Anweisungsende()
        elif erstes == "USE":
            self._wechsle(stuecke)
            yield Hinweis(5701, f"Changed database context to '{self.werte.datenbank}'.", 0, 2)
            yield Anweisungsende()
        elif erstes in ("EXEC", "EXECUTE"):
            name = stuecke[1].text if len(stuecke) > 1 else ""
            raise SqlFehler(maschine.PROZEDUR_FEHLT, f"Could not find stored procedure '{name}'.", zustand=62)
        elif erstes == "DECLARE":
            raise SqlFehler(maschine.KENNT_NICHT, "Statement 'DECLARE' is not supported in this version of SQL Server.")
        elif erstes:
            yield from self._in_der_datenbank(text, erstes)

    def _in_der_datenbank(self, text: str, erstes: str) -> Iterator[Ereignis]:
        if self._implizit and self.werte.transaktionen == 0 and erstes in ("SELECT", "INSERT", "UPDATE", "DELETE"):
            self._arbeit.beginne()
            self.werte.transaktionen = 1
            yield Transaktionswechsel("beginn")
        ergebnis = self._arbeit.fuehre_aus(setze_werte_ein(text, self._arbeit, self.werte))
        self.werte.betroffen = ergebnis.anzahl or 0
        yield ergebnis if ergebnis.spalten is not None or ergebnis.anzahl is not None else Anweisungsende()

    def _wenn(self, text: str, stuecke: list[Stueck]) -> Iterator[Ereignis]:
        """IF with one statement behind it. ELSE is not known."""
        tiefe = 0
        for stueck in stuecke[1:]:
            tiefe += 1 if stueck.ist("(") else -1 if stueck.ist(")") else 0
            if tiefe == 0 and stueck.ist(*ANFAENGE):
                frage = f"SELECT CASE WHEN {text[stuecke[0].ende : stueck.beginn]} THEN 1 ELSE 0 END"
                ergebnis = self._arbeit.fuehre_aus(setze_werte_ein(frage, self._arbeit, self.werte))
                if ergebnis.zeilen[0][0]:
                    yield from self._anweisung(text[stueck.beginn :])
                return
        raise SqlFehler(maschine.SYNTAX, "Incorrect syntax near 'IF'.", 15)

    def _transaktion(self, erstes: str, stuecke: list[Stueck]) -> Iterator[Ereignis]:
        zweites = stuecke[1].text.upper() if len(stuecke) > 1 else ""
        if erstes == "COMMIT":
            yield from self.schliesse_ab()
        elif erstes == "ROLLBACK":
            yield from self.nimm_zurueck()
        elif erstes == "BEGIN" and zweites in ("TRAN", "TRANSACTION"):
            yield from self.beginne()
        else:
            wort = f"Statement '{erstes} {zweites}' is not supported in this version of SQL Server."
            raise SqlFehler(maschine.KENNT_NICHT, wort)

    def _ausgewertet(self, ausdruck: str) -> str:
        ergebnis = self._arbeit.fuehre_aus(setze_werte_ein("SELECT " + ausdruck, self._arbeit, self.werte))
        wert = ergebnis.zeilen[0][0]
        return "" if wert is None else str(wert)

    def _melde(self, stuecke: list[Stueck]) -> Iterator[Ereignis]:
        """RAISERROR('words', class, state), or THROW number, 'words', state."""
        worte = [inhalt_des_literals(s) for s in stuecke if s.art == LITERAL]
        zahlen = [int(s.text) for s in stuecke if s.art == ZAHL and s.text.isdigit()]
        if not worte or len(zahlen) < 2:
            raise SqlFehler(maschine.SYNTAX, f"Incorrect syntax near '{stuecke[0].text}'.", 15)
        if stuecke[0].ist("THROW"):
            raise SqlFehler(zahlen[0], worte[0], 16, zahlen[1])
        if zahlen[0] > 10:
            raise SqlFehler(maschine.ALLGEMEIN, worte[0], zahlen[0], zahlen[1], weiter=True)
        yield Hinweis(maschine.ALLGEMEIN, worte[0], zahlen[0], zahlen[1])
        yield Anweisungsende()

    def _warte(self, stuecke: list[Stueck]) -> None:
        treffer = re.fullmatch(r"(\d+):(\d+)(?::(\d+(?:\.\d+)?))?", _text(inhalt_des_literals(stuecke[-1]))) \
            if stuecke[-1].art == LITERAL else None  # fmt: skip
        if treffer is None:
            raise SqlFehler(maschine.SYNTAX, "Incorrect syntax near 'WAITFOR'.", 15)
        warte(int(treffer[1]) * 3600 + int(treffer[2]) * 60 + float(treffer[3] or 0), self._wache)

    def _schalte(self, stuecke: list[Stueck]) -> None:
        """What has no meaning for the databases behind is passed over."""
        worte = [s.text.upper() for s in stuecke]
        if worte[1:2] == ["NOCOUNT"]:
            self.werte.ohne_anzahl = worte[-1] == "ON"
        elif worte[1:2] == ["IMPLICIT_TRANSACTIONS"]:
            self._implizit = worte[-1] == "ON"

    def _wechsle(self, stuecke: list[Stueck]) -> None:
        name = stuecke[1].text.strip('[]"') if len(stuecke) > 1 else ""
        if name.lower() != self.werte.datenbank.lower():
            wort = f"Database '{name}' does not exist. Make sure that the name is entered correctly."
            raise SqlFehler(911, wort)


def warte(sekunden: float, wache: Wache) -> None:
    """Lets time pass; raises Abgebrochen as soon as the client cancels."""
    ende = time.monotonic() + sekunden
    while (rest := ende - time.monotonic()) > 0:
        if wache():
            raise Abgebrochen
        time.sleep(min(rest, 0.02))


def _text(wert: str) -> str:
    return wert.strip()
