"""What the server sends: the tokens of a response (MS-TDS 2.2.7)."""

from __future__ import annotations

import struct
from dataclasses import dataclass
from typing import Sequence

from .leser import verschluessele
from .typen import SORTIERUNG, Typ, Wert, typangabe, verpacke, zeichen16

SERVERNAME = "TDSPRUEFLING"
PRODUKT = "Microsoft SQL Server"

FERTIG, FERTIG_PROZEDUR, FERTIG_IN_PROZEDUR = 0xFD, 0xFE, 0xFF
MEHR, FEHLER, IN_TRANSAKTION, ANZAHL, ABGEBROCHEN = 0x01, 0x02, 0x04, 0x10, 0x20

BEFEHLE = {"SELECT": 0xC1, "INSERT": 0xC3, "DELETE": 0xC4, "UPDATE": 0xC5}

UMGEBUNG_DATENBANK, UMGEBUNG_SPRACHE, UMGEBUNG_PAKETGROESSE, UMGEBUNG_SORTIERUNG = 1, 2, 4, 7
UMGEBUNG_TA_BEGINN, UMGEBUNG_TA_ABSCHLUSS, UMGEBUNG_TA_RUECKNAHME = 8, 9, 10


@dataclass(frozen=True)
class Spalte:
    name: str
    typ: Typ
    nullbar: bool = True
    vorgabe: bool = False  # a value that the database puts in where none is given


def _kurztext(text: str) -> bytes:
    return bytes([zeichen16(text)]) + verschluessele(text)


def _langtext(text: str) -> bytes:
    return struct.pack("<H", zeichen16(text)) + verschluessele(text)


def meldung(nummer: int, zustand: int, klasse: int, text: str, zeile: int = 1, server: str = SERVERNAME) -> bytes:
    """ERROR where the class is above 10, else INFO."""
    inhalt = struct.pack("<iBB", nummer, zustand, klasse) + _langtext(text[:2000]) + _kurztext(server) + _kurztext("")
    inhalt += struct.pack("<I", zeile)
    return struct.pack("<BH", 0xAA if klasse > 10 else 0xAB, len(inhalt)) + inhalt


def umgebung_text(art: int, neu: str, alt: str = "") -> bytes:
    inhalt = bytes([art]) + _kurztext(neu) + _kurztext(alt)
    return struct.pack("<BH", 0xE3, len(inhalt)) + inhalt


def umgebung_bytes(art: int, neu: bytes, alt: bytes = b"") -> bytes:
    inhalt = bytes([art, len(neu)]) + neu + bytes([len(alt)]) + alt
    return struct.pack("<BH", 0xE3, len(inhalt)) + inhalt


def umgebung_sortierung() -> bytes:
    return umgebung_bytes(UMGEBUNG_SORTIERUNG, SORTIERUNG)


def anmeldung_angenommen(version: int) -> bytes:
    inhalt = b"\x01" + struct.pack(">I", version) + _kurztext(PRODUKT) + bytes([15, 0, 0x07, 0xD0])
    return struct.pack("<BH", 0xAD, len(inhalt)) + inhalt


def fertig(zustand: int = 0, anzahl: int | None = None, befehl: str = "", marke: int = FERTIG) -> bytes:
    """End of a statement. `anzahl` is the number of rows that it concerned, None where it has none."""
    if anzahl is not None:
        zustand |= ANZAHL
    return struct.pack("<BHHQ", marke, zustand, BEFEHLE.get(befehl, 0), anzahl or 0)


def spalten(liste: Sequence[Spalte]) -> bytes:
    """COLMETADATA; every column may be NULL and can be written."""
    teile = [struct.pack("<BH", 0x81, len(liste))]
    for spalte in liste:
        teile.append(struct.pack("<IH", 0, 0x0009) + typangabe(spalte.typ) + _kurztext(spalte.name[:128]))
    return b"".join(teile)


def zeile(liste: Sequence[Spalte], werte: Sequence[Wert]) -> bytes:
    """ROW. Raises ValueError where a value does not fit its column."""
    return b"\xd1" + b"".join(verpacke(s.typ, w) for s, w in zip(liste, werte, strict=True))


def rueckgabe(zahl: int) -> bytes:
    """The return status of a procedure."""
    return struct.pack("<Bi", 0x79, zahl)


def ausgabewert(stelle: int, name: str, wert: int) -> bytes:
    """RETURNVALUE: an int that a procedure gave back."""
    return struct.pack("<BH", 0xAC, stelle) + _kurztext(name) + struct.pack("<BIH", 1, 0, 0) + typangabe(
        Typ("int")
    ) + verpacke(Typ("int"), wert)
