"""The system procedures that a driver calls: statements with parameters, prepared ones, cursors for reading."""

from __future__ import annotations

from dataclasses import replace
from typing import Any, Iterator

from . import maschine
from .anfragen import Parameter, Prozeduraufruf
from .antworten import Spalte
from .maschine import Ergebnis, SqlFehler
from .stapel import Ereignis, Stapellauf
from .typen import Typ, Wert
from .zerleger import WORT, bedeutende

_ERSTE, _NAECHSTE, _VORIGE, _LETZTE, _STELLE = 1, 2, 4, 8, 16
_STATISCH_LESEND = 0x8008  # keyset accepted, static
_NUR_LESEN = 0x0001


class Prozeduren:
    """The handles and cursors of one session."""

    def __init__(self, lauf: Stapellauf) -> None:
        self._lauf = lauf
        self._vorbereitet: dict[int, tuple[str, str]] = {}
        self._zeiger: dict[int, tuple[Ergebnis, int]] = {}
        self._naechste = 1
        self.ausgaben: list[tuple[int, str, int]] = []

    @staticmethod
    def text(aufruf: Prozeduraufruf) -> str:
        """The statement that a call carries; empty where it carries none."""
        stelle = {"sp_executesql": 0, "sp_cursoropen": 1, "sp_prepexec": 2, "sp_prepare": 2}.get(aufruf.name.lower())
        if stelle is None or stelle >= len(aufruf.parameter):
            return ""
        return str(aufruf.parameter[stelle].wert or "")

    @staticmethod
    def gebundene(aufruf: Prozeduraufruf) -> dict[str, Any]:
        """Of sp_executesql: the statement as the program wrote it, with "?" for its markers, and their values."""
        if aufruf.name.lower() != "sp_executesql" or not aufruf.parameter:
            return {}
        text, erklaerung = (str(p.wert or "") for p in [*aufruf.parameter, Parameter("", False, None)][:2])
        werte = [p.wert.hex() if isinstance(p.wert, bytes) else p.wert for p in aufruf.parameter[2:]]
        return {"anweisung": _ersetze(text, dict.fromkeys(_namen(erklaerung), "?")), "gebunden": werte}

    def rufe(self, aufruf: Prozeduraufruf) -> Iterator[Ereignis]:
        """Runs the call; afterwards `ausgaben` holds what it gives back."""
        self.ausgaben = []
        name = aufruf.name.lower()
        arbeit = {
            "sp_executesql": self._executesql, "sp_prepare": self._prepare, "sp_execute": self._execute,
            "sp_prepexec": self._prepexec, "sp_unprepare": self._unprepare, "sp_cursoropen": self._cursoropen,
            "sp_cursorfetch": self._cursorfetch, "sp_cursorclose": self._cursorclose,
            "sp_cursoroption": self._cursoroption,
        }.get(name)  # fmt: skip
        if arbeit is None:
            wort = f"Could not find stored procedure '{aufruf.name}'."
            raise SqlFehler(maschine.PROZEDUR_FEHLT, wort, zustand=62)
        try:
            yield from arbeit(aufruf.parameter)
        except (IndexError, TypeError, ValueError) as fehler:
            raise SqlFehler(201, f"Procedure or function '{aufruf.name}' expects other parameters.") from fehler

    def _executesql(self, p: list[Parameter]) -> Iterator[Ereignis]:
        erklaerung = str(p[1].wert or "") if len(p) > 1 else ""
        yield from self._lauf.fuehre_aus(setze_ein(str(p[0].wert), erklaerung, p[2:]))

    def _prepare(self, p: list[Parameter]) -> Iterator[Ereignis]:
        self._merke(p[0], str(p[2].wert), str(p[1].wert or ""))
        yield from ()

    def _execute(self, p: list[Parameter]) -> Iterator[Ereignis]:
        text, erklaerung = self._vorbereitet.get(_zahl(p[0]), ("", ""))
        if not text:
            raise SqlFehler(8179, f"Could not find prepared statement with handle {_zahl(p[0])}.")
        yield from self._lauf.fuehre_aus(setze_ein(text, erklaerung, p[1:]))

    def _prepexec(self, p: list[Parameter]) -> Iterator[Ereignis]:
        text, erklaerung = str(p[2].wert), str(p[1].wert or "")
        self._merke(p[0], text, erklaerung)
        yield from self._lauf.fuehre_aus(setze_ein(text, erklaerung, p[3:]))

    def _unprepare(self, p: list[Parameter]) -> Iterator[Ereignis]:
        self._vorbereitet.pop(_zahl(p[0]), None)
        yield from ()

    def _merke(self, ausgabe: Parameter, text: str, erklaerung: str) -> None:
        self._vorbereitet[self._naechste] = (text, erklaerung)
        self.ausgaben.append((0, ausgabe.name, self._naechste))
        self._naechste += 1

    def _cursoropen(self, p: list[Parameter]) -> Iterator[Ereignis]:
        erklaerung = str(p[5].wert or "") if len(p) > 5 else ""
        ergebnis = None
        for ereignis in self._lauf.fuehre_aus(setze_ein(str(p[1].wert), erklaerung, p[6:])):
            if isinstance(ereignis, Ergebnis) and ereignis.spalten is not None and ergebnis is None:
                ergebnis = ereignis
                yield Ergebnis("SELECT", ereignis.spalten, [], 0)
            else:
                yield ereignis
        if ergebnis is None:
            return
        nummer = self._naechste
        self._naechste += 1
        self._zeiger[nummer] = (ergebnis, 0)
        werte = (nummer, _STATISCH_LESEND, _NUR_LESEN, len(ergebnis.zeilen))
        stellen = (0, 2, 3, 4)
        self.ausgaben = [(s, p[s].name, w) for s, w in zip(stellen, werte) if s < len(p)]

    def _cursorfetch(self, p: list[Parameter]) -> Iterator[Ereignis]:
        nummer = _zahl(p[0])
        if nummer not in self._zeiger:
            raise SqlFehler(16916, f"A cursor with the name '{nummer}' does not exist.")
        ergebnis, stelle = self._zeiger[nummer]
        art = _zahl(p[1]) & 0x1F if len(p) > 1 else _NAECHSTE
        # The row is NULL where the kind of fetch needs none.
        zeile, anzahl = (_zahl(p[i]) if len(p) > i and p[i].wert is not None else 1 for i in (2, 3))
        von = {_ERSTE: 0, _VORIGE: stelle - 2 * anzahl, _LETZTE: len(ergebnis.zeilen) - anzahl, _STELLE: zeile - 1}
        beginn = max(von.get(art, stelle), 0)
        zeilen = [[*werte, 1] for werte in ergebnis.zeilen[beginn : beginn + anzahl]]
        self._zeiger[nummer] = (ergebnis, min(beginn + anzahl, len(ergebnis.zeilen)))
        assert ergebnis.spalten is not None
        yield replace(ergebnis, spalten=[*ergebnis.spalten, Spalte("ROWSTAT", Typ("int"))], zeilen=zeilen,
                      anzahl=len(zeilen))  # fmt: skip

    def _cursorclose(self, p: list[Parameter]) -> Iterator[Ereignis]:
        self._zeiger.pop(_zahl(p[0]), None)
        yield from ()

    def _cursoroption(self, p: list[Parameter]) -> Iterator[Ereignis]:
        """The name of a cursor and the like; nothing here depends on it."""
        yield from ()


def _zahl(parameter: Parameter) -> int:
    if not isinstance(parameter.wert, int):
        raise ValueError(parameter.name)
    return parameter.wert


def setze_ein(text: str, erklaerung: str, parameter: list[Parameter]) -> str:
    """The text with its parameters as literals. The declaration names those that came without a name."""
    if not parameter:
        return text
    namen = _namen(erklaerung)
    return _ersetze(text, {(p.name or namen[i]).lower(): _literal(p.wert) for i, p in enumerate(parameter)})


def _namen(erklaerung: str) -> list[str]:
    """The names that a declaration ("@P1 int,@P2 nvarchar(50)") gives, in small letters."""
    return [s.text.lower() for s in bedeutende(erklaerung) if s.art == WORT and s.text.startswith("@")]


def _ersetze(text: str, ersatz: dict[str, str]) -> str:
    """The text with that in place of each variable of these names; literals and comments stay."""
    teile: list[str] = []
    bis = 0
    for stueck in bedeutende(text):
        if stueck.art == WORT and stueck.text.lower() in ersatz:
            teile += [text[bis : stueck.beginn], ersatz[stueck.text.lower()]]
            bis = stueck.ende
    return "".join([*teile, text[bis:]])


def _literal(wert: Wert) -> str:
    if wert is None:
        return "NULL"
    if isinstance(wert, bytes):
        return "X'" + wert.hex() + "'"
    if isinstance(wert, str):
        return "N'" + wert.replace("'", "''") + "'"
    # In brackets, since a minus before it would make two, which begin a comment.
    return f"({wert!r})" if wert < 0 else repr(wert)
