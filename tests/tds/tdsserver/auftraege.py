"""Failures on order: what is to go wrong, with which login or batch, as the lines of the control channel say."""

from __future__ import annotations

import threading
from dataclasses import dataclass, field

ORTE = ("vor", "nach", "halb", "zeile")


class Auftragsfehler(Exception):
    """A line of the control channel that cannot be understood."""


@dataclass(frozen=True)
class Eingriff:
    """What is to happen to one login or one batch."""

    fehler: tuple[int, int, str] | None = None  # number, class, words
    meldungen: tuple[str, ...] = ()
    sekunden: float = 0.0
    stumm: bool = False
    trenne: str = ""  # one of ORTE, or "sofort" at a login
    zeile: int = 0
    merke: bool = False


@dataclass
class Auftrag:
    """`zahlen` counts from the order on; empty means every one. `anfang`: only texts that begin so are counted."""

    bereich: str  # stapel or anmeldung
    zahlen: frozenset[int]
    anfang: str
    eingriff: Eingriff
    gezaehlt: int = field(default=0)

    def gilt(self, bereich: str, text: str, zaehlt: bool) -> bool:
        if bereich != self.bereich or not (zaehlt or self.anfang):
            return False
        if not text.lstrip().lower().startswith(self.anfang.lower()):
            return False
        self.gezaehlt += 1
        return not self.zahlen or self.gezaehlt in self.zahlen


class Auftraege:
    """All orders of a server; used by many threads."""

    def __init__(self) -> None:
        self._schloss = threading.Lock()
        self._auftraege: list[Auftrag] = []

    def nimm(self, worte: list[str]) -> None:
        """Takes one order; raises Auftragsfehler. See README.md for the form of the lines."""
        auftrag = lies_auftrag(worte)
        with self._schloss:
            self._auftraege.append(auftrag)

    def heile(self) -> None:
        with self._schloss:
            self._auftraege.clear()

    def eingriff(self, bereich: str, text: str, zaehlt: bool = True) -> Eingriff:
        """What is to happen now. `zaehlt`: orders without a beginning count this text too."""
        with self._schloss:
            gueltige = [a.eingriff for a in self._auftraege if a.gilt(bereich, text, zaehlt)]
        return vereint(gueltige)


def vereint(eingriffe: list[Eingriff]) -> Eingriff:
    return Eingriff(
        fehler=next((e.fehler for e in eingriffe if e.fehler), None),
        meldungen=tuple(m for e in eingriffe for m in e.meldungen),
        sekunden=max((e.sekunden for e in eingriffe), default=0.0),
        stumm=any(e.stumm for e in eingriffe),
        trenne=next((e.trenne for e in eingriffe if e.trenne), ""),
        zeile=next((e.zeile for e in eingriffe if e.zeile), 0),
        merke=any(e.merke for e in eingriffe),
    )


def lies_auftrag(worte: list[str]) -> Auftrag:
    if len(worte) < 2:
        raise Auftragsfehler("Auftrag ohne Auswahl")
    art, auswahl, rest = worte[0], worte[1], worte[2:]
    zahlen, anfang = _lies_auswahl(auswahl)
    if art == "anmeldung":
        return Auftrag("anmeldung", zahlen, anfang, _lies_anmeldung(rest))
    return Auftrag("stapel", zahlen, anfang, _lies_stapel(art, rest))


def _lies_auswahl(auswahl: str) -> tuple[frozenset[int], str]:
    zahlen, _, anfang = auswahl.partition("/")
    if zahlen == "*":
        return frozenset(), anfang
    try:
        menge = frozenset(int(z) for z in zahlen.split(","))
    except ValueError as fehler:
        raise Auftragsfehler(f"keine Auswahl: {auswahl}") from fehler
    if min(menge) < 1:
        raise Auftragsfehler("gezählt wird ab 1")
    return menge, anfang


def _lies_stapel(art: str, rest: list[str]) -> Eingriff:
    if art == "fehler":
        return Eingriff(fehler=_lies_fehler(rest))
    if art == "meldung" and rest:
        return Eingriff(meldungen=(" ".join(rest),))
    if art == "langsam" and len(rest) == 1:
        return Eingriff(sekunden=_zahl(rest[0]))
    if art == "stumm" and not rest:
        return Eingriff(stumm=True)
    if art == "merke" and not rest:
        return Eingriff(merke=True)
    if art == "trenne" and len(rest) == 1:
        ort, _, zeile = rest[0].partition(":")
        if ort in ORTE and (ort == "zeile") == bool(zeile):
            return Eingriff(trenne=ort, zeile=int(_zahl(zeile)) if zeile else 0)
    raise Auftragsfehler(f"unbekannter Auftrag: {art} {' '.join(rest)}")


def _lies_anmeldung(rest: list[str]) -> Eingriff:
    art = rest[0] if rest else ""
    if art == "verweigere":
        return Eingriff(fehler=_lies_fehler(rest[1:]) if rest[1:] else (18456, 14, ""))
    if art == "stumm":
        return Eingriff(stumm=True)
    if art == "trenne":
        return Eingriff(trenne="sofort")
    if art == "langsam" and len(rest) == 2:
        return Eingriff(sekunden=_zahl(rest[1]))
    raise Auftragsfehler("anmeldung kennt verweigere, stumm, trenne und langsam")


def _lies_fehler(rest: list[str]) -> tuple[int, int, str]:
    """NUMBER [CLASS] WORDS; a class is 11 to 25, without one it is 16."""
    if len(rest) < 2 or not rest[0].lstrip("-").isdigit():
        raise Auftragsfehler("fehler braucht NUMMER [KLASSE] TEXT")
    mit_klasse = len(rest) > 2 and rest[1].isdigit() and 11 <= int(rest[1]) <= 25
    return int(rest[0]), int(rest[1]) if mit_klasse else 16, " ".join(rest[2 if mit_klasse else 1 :])


def _zahl(text: str) -> float:
    try:
        return float(text)
    except ValueError as fehler:
        raise Auftragsfehler(f"keine Zahl: {text}") from fehler
