"""What stands behind the server: the contract of the databases, and their errors in the server's numbers."""

from __future__ import annotations

from dataclasses import dataclass, field
from typing import Callable, Protocol, Sequence

from .antworten import Spalte
from .typen import Typ, Wert, errate, passt

OBJEKT_FEHLT, SPALTE_FEHLT, SYNTAX, UNGESCHLOSSEN = 208, 207, 102, 105
ABGESCHNITTEN, UEBERLAUF, DOPPELT, NULL_VERBOTEN = 8152, 220, 2627, 515
SPERRE, VERKLEMMT, ALLGEMEIN, PROZEDUR_FEHLT, KENNT_NICHT = 1222, 1205, 50000, 2812, 40510


class SqlFehler(Exception):
    """An error that a client gets to see. `weiter`: the statements behind it in the batch run nevertheless."""

    def __init__(self, nummer: int, text: str, klasse: int = 16, zustand: int = 1, weiter: bool = False) -> None:
        super().__init__(text)
        self.nummer = nummer
        self.text = text
        self.klasse = klasse
        self.zustand = zustand
        self.weiter = weiter


class Abgebrochen(Exception):
    """The client cancelled while the statement ran."""


@dataclass
class Ergebnis:
    """The answer of one statement. `spalten` is None where it gives no rows, `anzahl` is None where it counts none."""

    befehl: str
    spalten: list[Spalte] | None = None
    zeilen: Sequence[Sequence[Wert]] = field(default_factory=list)
    anzahl: int | None = None


Wache = Callable[[], bool]
"""Asked again and again while a statement runs: True as soon as the client has cancelled."""


class Arbeitsverbindung(Protocol):
    """One session of the database. Used by one thread; failures are SqlFehler."""

    def fuehre_aus(self, text: str) -> Ergebnis:
        """Runs one statement; raises Abgebrochen when the client cancels meanwhile."""

    def pruefe(self, text: str) -> None:
        """Raises SqlFehler where a select, insert, update or delete cannot be read. Nothing is run."""

    def beginne(self) -> None: ...
    def schliesse_ab(self) -> None: ...
    def nimm_zurueck(self) -> None: ...

    def tabellen(self) -> dict[str, list[Spalte]]:
        """The tables that are there, by name, with their columns."""

    def indexe(self) -> list[tuple[str, str]]:
        """The indexes that are there: table and name."""

    def schliesse(self) -> None: ...


class Maschine(Protocol):
    """A database that many sessions may use at once."""

    name: str

    def verbinde(self, wache: Wache) -> Arbeitsverbindung: ...
    def schliesse(self) -> None: ...


def mit_typen(namen: Sequence[str], erklaert: Sequence[Typ | None], zeilen: Sequence[Sequence[Wert]]) -> list[Spalte]:
    """The columns of a result: of the declared type where there is one and all values fit, else of one that fits."""
    spalten = []
    for i, (name, typ) in enumerate(zip(namen, erklaert, strict=True)):
        werte = [zeile[i] for zeile in zeilen]
        spalten.append(Spalte(name, typ if typ is not None and passt(typ, werte) else errate(werte)))
    return spalten
