"""Puts the events of a batch together to one response, with the mark "more to come" on every end but the last."""

from __future__ import annotations

from . import antworten
from .antworten import FEHLER, FERTIG, FERTIG_IN_PROZEDUR, FERTIG_PROZEDUR, IN_TRANSAKTION, MEHR
from .auskunft import Sitzungswerte
from .maschine import Ergebnis
from .stapel import Anweisungsende, Ereignis, Hinweis, Transaktionswechsel

_WECHSEL = {"beginn": antworten.UMGEBUNG_TA_BEGINN, "abschluss": antworten.UMGEBUNG_TA_ABSCHLUSS,
            "ruecknahme": antworten.UMGEBUNG_TA_RUECKNAHME}  # fmt: skip


class Antwortbau:
    """One response. `prozedur`: it answers a procedure call."""

    def __init__(self, werte: Sitzungswerte, prozedur: bool = False) -> None:
        self._werte = werte
        self._prozedur = prozedur
        self._teile: list[bytes] = []
        self._ende: tuple[int, int | None, str] | None = None
        self._zeilen: list[int] = []  # the parts that are rows
        self.gescheitert = False

    def nimm(self, ereignis: Ereignis) -> None:
        self._setze_ende()
        zustand = IN_TRANSAKTION if self._werte.transaktionen else 0
        if isinstance(ereignis, Hinweis):
            self.sende(antworten.meldung(ereignis.nummer, ereignis.zustand, ereignis.klasse, ereignis.text))
        elif isinstance(ereignis, Transaktionswechsel):
            self.sende(self._wechsel(ereignis.was))
        elif isinstance(ereignis, Anweisungsende):
            self.gescheitert = ereignis.gescheitert
            self._ende = (zustand | (FEHLER if ereignis.gescheitert else 0), None, "")
        else:
            self._nimm_ergebnis(ereignis)
            self._ende = (zustand, None if self._werte.ohne_anzahl else ereignis.anzahl, ereignis.befehl)

    def sende(self, roh: bytes) -> None:
        """Puts in a token of the caller's own."""
        self._teile.append(roh)

    def fertig(self, rueckgabe: int = 0, ausgaben: list[tuple[int, str, int]] | None = None) -> bytes:
        """The whole response. `ausgaben` are place, name and value of what a procedure gives back."""
        if not self._prozedur:
            zustand, anzahl, befehl = self._ende or (0, None, "")
            return b"".join(self._teile) + antworten.fertig(zustand, anzahl, befehl, FERTIG)
        self._setze_ende()
        self.sende(antworten.rueckgabe(rueckgabe))
        for stelle, name, wert in ausgaben or []:
            self.sende(antworten.ausgabewert(stelle, name, wert))
        return b"".join(self._teile) + antworten.fertig(FEHLER if self.gescheitert else 0, marke=FERTIG_PROZEDUR)

    def bis_mitte_der_zeile(self, nummer: int) -> bytes | None:
        """The response up to the middle of that row, counted from 1; None where there are fewer rows."""
        if nummer > len(self._zeilen):
            return None
        teil = self._zeilen[nummer - 1]
        zeile = self._teile[teil]
        return b"".join(self._teile[:teil]) + zeile[: max(len(zeile) // 2, 1)]

    def _nimm_ergebnis(self, ergebnis: Ergebnis) -> None:
        if ergebnis.spalten is None:
            return
        self.sende(antworten.spalten(ergebnis.spalten))
        for werte in ergebnis.zeilen:
            self._zeilen.append(len(self._teile))
            self.sende(antworten.zeile(ergebnis.spalten, werte))

    def _setze_ende(self) -> None:
        """Writes the end that waited to learn whether anything comes behind it."""
        if self._ende is not None:
            zustand, anzahl, befehl = self._ende
            marke = FERTIG_IN_PROZEDUR if self._prozedur else FERTIG
            self.sende(antworten.fertig(zustand | MEHR, anzahl, befehl, marke))
            self._ende = None

    def _wechsel(self, was: str) -> bytes:
        kennung = (self._werte.nummer << 32 | 1).to_bytes(8, "little")
        neu, alt = (kennung, b"") if was == "beginn" else (b"", kennung)
        return antworten.umgebung_bytes(_WECHSEL[was], neu, alt)
