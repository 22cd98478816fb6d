"""Types of columns and parameters: how they are told and how their values travel (MS-TDS 2.2.5)."""

from __future__ import annotations

import datetime
import struct
from dataclasses import dataclass
from decimal import Decimal
from typing import Iterable, Union

from .leser import Leser, entziffere, verschluessele
from .pakete import Protokollfehler

Wert = Union[None, int, float, str, bytes]

# Latin1_General_CI_AS: language 0x0409, case and kana and width ignored, code page 1252.
SORTIERUNG = bytes([0x09, 0x04, 0xD0, 0x00, 0x34])
ZEICHEN_JE_WERT = 4000
STUECK = 2000  # bytes of one piece of a long value; even, so that no character is cut


@dataclass(frozen=True)
class Typ:
    """`name` is int, smallint, bigint, float, bit, nvarchar, char, varchar or varbinary; `laenge` counts characters
    (bytes for varbinary), 0 is "max"."""

    name: str
    laenge: int = 0

    @property
    def lang(self) -> bool:
        return self.name in ("nvarchar", "varchar", "varbinary") and self.laenge == 0


GANZE_ZAHLEN = {"bit": 1, "tinyint": 1, "smallint": 2, "int": 4, "bigint": 8}
BEREICHE = {"bit": (0, 1), "tinyint": (0, 255), "smallint": (-(2**15), 2**15 - 1), "int": (-(2**31), 2**31 - 1),
            "bigint": (-(2**63), 2**63 - 1)}  # fmt: skip
TEXTMARKEN = {"nvarchar": 0xE7, "varchar": 0xA7, "char": 0xAF, "nchar": 0xEF}


def zeichen16(text: str) -> int:
    """How many 16-bit characters a text has."""
    return len(text) + sum(1 for z in text if ord(z) > 0xFFFF)


def typangabe(typ: Typ) -> bytes:
    """TYPE_INFO of a column."""
    if typ.name == "bit":
        return bytes([0x68, 1])
    if typ.name in GANZE_ZAHLEN:
        return bytes([0x26, GANZE_ZAHLEN[typ.name]])
    if typ.name == "float":
        return bytes([0x6D, 8])
    breite = 0xFFFF if typ.lang else typ.laenge * (2 if typ.name in ("nvarchar", "nchar") else 1)
    if typ.name == "varbinary":
        return struct.pack("<BH", 0xA5, breite)
    return struct.pack("<BH", TEXTMARKEN[typ.name], breite) + SORTIERUNG


def verpacke(typ: Typ, wert: Wert) -> bytes:
    """A value as it stands in a row. Raises ValueError where it does not fit its type."""
    if typ.name in GANZE_ZAHLEN:
        return _verpacke_ganze_zahl(typ, wert)
    if typ.name == "float":
        return b"\0" if wert is None else struct.pack("<Bd", 8, float(wert))
    roh = None if wert is None else _rohbytes(typ, wert)
    if typ.lang:
        return _verpacke_lang(roh)
    if roh is None:
        return b"\xff\xff"
    grenze = typ.laenge * (2 if typ.name in ("nvarchar", "nchar") else 1)
    if len(roh) > grenze:
        raise ValueError(f"{len(roh)} Bytes in {typ.name}({typ.laenge})")
    return struct.pack("<H", len(roh)) + roh


def _verpacke_ganze_zahl(typ: Typ, wert: Wert) -> bytes:
    if wert is None:
        return b"\0"
    zahl = int(wert)
    unten, oben = BEREICHE[typ.name]
    if not unten <= zahl <= oben:
        raise ValueError(f"{zahl} als {typ.name}")
    breite = GANZE_ZAHLEN[typ.name]
    return bytes([breite]) + zahl.to_bytes(breite, "little", signed=typ.name not in ("bit", "tinyint"))


def _rohbytes(typ: Typ, wert: Wert) -> bytes:
    if typ.name == "varbinary":
        return wert if isinstance(wert, bytes) else str(wert).encode("cp1252", "replace")
    text = wert.decode("cp1252", "replace") if isinstance(wert, bytes) else str(wert)
    if typ.name in ("nvarchar", "nchar"):
        return verschluessele(text.ljust(typ.laenge) if typ.name == "nchar" else text)
    roh = text.encode("cp1252", "replace")
    return roh.ljust(typ.laenge) if typ.name == "char" else roh


def _verpacke_lang(roh: bytes | None) -> bytes:
    if roh is None:
        return b"\xff" * 8
    stuecke = [roh[i : i + STUECK] for i in range(0, len(roh), STUECK)]
    return (struct.pack("<Q", len(roh)) + b"".join(struct.pack("<I", len(s)) + s for s in stuecke)
            + struct.pack("<I", 0))  # fmt: skip


def passt(typ: Typ, werte: Iterable[Wert]) -> bool:
    """All the values can be sent as that type without loss."""
    for wert in werte:
        if wert is None:
            continue
        if typ.name in GANZE_ZAHLEN:
            unten, oben = BEREICHE[typ.name]
            if not isinstance(wert, int) or not unten <= wert <= oben:
                return False
        elif typ.name == "float":
            if not isinstance(wert, (int, float)):
                return False
        elif isinstance(wert, bytes) != (typ.name == "varbinary"):
            return False
        elif not typ.lang and zeichen16(str(wert)) > typ.laenge:
            return False
    return True


def errate(werte: Iterable[Wert]) -> Typ:
    """A type that takes all the values: for results whose columns no table declares."""
    da = [w for w in werte if w is not None]
    if all(isinstance(w, int) for w in da):
        return Typ("int") if passt(Typ("int"), da) else Typ("bigint")
    if all(isinstance(w, (int, float)) for w in da):
        return Typ("float")
    if all(isinstance(w, bytes) for w in da):
        return Typ("varbinary")
    laenge = max(zeichen16(str(w)) for w in da)
    return Typ("nvarchar", max(laenge, 1) if laenge <= ZEICHEN_JE_WERT else 0)


def lies_parameterwert(leser: Leser) -> Wert:
    """The type and the value of a parameter of a procedure call; dates and decimals come as text."""
    art = leser.u8()
    if art in (0x30, 0x32, 0x34, 0x38, 0x7F):
        return int.from_bytes(leser.bytes({0x30: 1, 0x32: 1, 0x34: 2, 0x38: 4, 0x7F: 8}[art]), "little", signed=True)
    if art in (0x26, 0x68):
        leser.u8()
        laenge = leser.u8()
        return None if laenge == 0 else int.from_bytes(leser.bytes(laenge), "little", signed=laenge > 1)
    if art in (0x6D,):
        leser.u8()
        laenge = leser.u8()
        return None if laenge == 0 else struct.unpack("<f" if laenge == 4 else "<d", leser.bytes(laenge))[0]
    if art in (0x6A, 0x6C):
        return _lies_dezimalzahl(leser)
    if art == 0x6F:
        return _lies_zeitpunkt(leser)
    if art in (0xE7, 0xEF, 0xA7, 0xAF, 0xA5, 0xAD):
        return _lies_kette(leser, art)
    if art in (0x63, 0x23, 0x22):
        return _lies_altes_lang(leser, art)
    raise Protokollfehler(f"Parametertyp 0x{art:02X}")


def _lies_kette(leser: Leser, art: int) -> Wert:
    breite = leser.u16()
    if art not in (0xA5, 0xAD):
        leser.bytes(5)
    if breite == 0xFFFF:
        roh = _lies_lang(leser)
    else:
        laenge = leser.u16()
        roh = None if laenge == 0xFFFF else leser.bytes(laenge)
    if roh is None or art in (0xA5, 0xAD):
        return roh
    return entziffere(roh) if art in (0xE7, 0xEF) else roh.decode("cp1252", "replace")


def _lies_lang(leser: Leser) -> bytes | None:
    if leser.u64() == 0xFFFFFFFFFFFFFFFF:
        return None
    stuecke = []
    while laenge := leser.u32():
        stuecke.append(leser.bytes(laenge))
    return b"".join(stuecke)


def _lies_altes_lang(leser: Leser, art: int) -> Wert:
    """ntext, text or image: the long types of old."""
    leser.u32()
    if art != 0x22:
        leser.bytes(5)
    laenge = leser.u32()
    if laenge == 0xFFFFFFFF:
        return None
    roh = leser.bytes(laenge)
    if art == 0x22:
        return roh
    return entziffere(roh) if art == 0x63 else roh.decode("cp1252", "replace")


def _lies_dezimalzahl(leser: Leser) -> Wert:
    leser.u8()
    leser.u8()
    stellen = leser.u8()
    laenge = leser.u8()
    if laenge == 0:
        return None
    zeichen = 1 if leser.u8() else -1
    return str(Decimal(zeichen * int.from_bytes(leser.bytes(laenge - 1), "little")).scaleb(-stellen))


def _lies_zeitpunkt(leser: Leser) -> Wert:
    leser.u8()
    laenge = leser.u8()
    if laenge == 0:
        return None
    if laenge == 4:
        tage, minuten = leser.u16(), leser.u16()
        return str(datetime.datetime(1900, 1, 1) + datetime.timedelta(days=tage, minutes=minuten))
    tage = int.from_bytes(leser.bytes(4), "little", signed=True)
    return str(datetime.datetime(1900, 1, 1) + datetime.timedelta(days=tage, milliseconds=leser.u32() * 10 / 3))
