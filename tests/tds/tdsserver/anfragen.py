"""What a client sends, decoded: pre-login, login, batch, procedure call, transaction (MS-TDS 2.2.6)."""

from __future__ import annotations

import struct
from dataclasses import dataclass, field

from .leser import Leser, entziffere
from .pakete import Protokollfehler
from .tls import NICHT_UNTERSTUETZT
from .typen import Wert, lies_parameterwert

VERSION_72 = 0x72090002
VERSION_74 = 0x74000004
MIT_WINDOWS_ANMELDUNG = 0x80

VORANMELDEFELDER = {0: "version", 1: "verschluesselung", 2: "instanz", 3: "faden", 4: "mars"}

PROZEDUREN = {
    1: "sp_cursor", 2: "sp_cursoropen", 3: "sp_cursorprepare", 4: "sp_cursorexecute", 5: "sp_cursorprepexec",
    6: "sp_cursorunprepare", 7: "sp_cursorfetch", 8: "sp_cursoroption", 9: "sp_cursorclose", 10: "sp_executesql",
    11: "sp_prepare", 12: "sp_execute", 13: "sp_prepexec", 14: "sp_prepexecrpc", 15: "sp_unprepare",
}  # fmt: skip


def lies_voranmeldung(inhalt: bytes) -> dict[str, bytes]:
    """The fields of a pre-login message by name; unknown ones are left out."""
    felder: dict[str, bytes] = {}
    leser = Leser(inhalt)
    while (art := leser.u8()) != 0xFF:
        stelle, laenge = struct.unpack(">HH", leser.bytes(4))
        wert = Leser(inhalt, stelle).bytes(laenge)
        if art in VORANMELDEFELDER:
            felder[VORANMELDEFELDER[art]] = wert
    return felder


def baue_voranmeldung(felder: list[tuple[int, bytes]]) -> bytes:
    stelle = 5 * len(felder) + 1
    kopf = b""
    for art, wert in felder:
        kopf += struct.pack(">BHH", art, stelle, len(wert))
        stelle += len(wert)
    return kopf + b"\xff" + b"".join(wert for _, wert in felder)


def antwort_auf_voranmeldung(verschluesselung: int = NICHT_UNTERSTUETZT) -> bytes:
    """Version 15, the instance is the right one, one result at a time."""
    return baue_voranmeldung(
        [(0, bytes([15, 0, 0x07, 0xD0, 0, 0])), (1, bytes([verschluesselung])), (2, b"\0"), (3, b""), (4, b"\0")]
    )


def entwirre_kennwort(inhalt: bytes) -> bytes:
    """A password on the wire has the halves of each byte swapped, and is then joined with A5 by exclusive or."""
    return bytes(((b ^ 0xA5) << 4 | (b ^ 0xA5) >> 4) & 0xFF for b in inhalt)


def verwirre_kennwort(inhalt: bytes) -> bytes:
    return bytes(((b << 4 | b >> 4) & 0xFF) ^ 0xA5 for b in inhalt)


@dataclass(frozen=True)
class Anmeldung:
    version: int
    paketgroesse: int
    windows: bool
    rechner: str
    benutzer: str
    kennwort: str = field(repr=False)
    programm: str
    server: str
    bibliothek: str
    sprache: str
    datenbank: str


def lies_anmeldung(inhalt: bytes) -> Anmeldung:
    leser = Leser(inhalt)
    laenge, version, paketgroesse = leser.u32(), leser.u32(), leser.u32()
    if laenge > len(inhalt):
        raise Protokollfehler("Anmeldung zu kurz")
    leser.bytes(12)
    leser.u8()
    schalter2 = leser.u8()
    leser.bytes(10)
    roh: list[bytes] = []
    for _ in range(9):
        stelle, zeichen = leser.u16(), leser.u16()
        roh.append(inhalt[stelle : stelle + 2 * zeichen])
    roh[5] = b""  # the extension's own form
    rechner, benutzer, _, programm, server, _, bibliothek, sprache, datenbank = (
        "" if i == 2 else entziffere(wert) for i, wert in enumerate(roh)
    )
    return Anmeldung(version, paketgroesse, bool(schalter2 & MIT_WINDOWS_ANMELDUNG), rechner, benutzer,
                     entziffere(entwirre_kennwort(roh[2])), programm, server, bibliothek, sprache, datenbank)  # fmt: skip


def ohne_kopffelder(inhalt: bytes) -> bytes:
    """A request without the headers in front of it (ALL_HEADERS)."""
    laenge = Leser(inhalt).u32()
    if laenge < 4 or laenge > len(inhalt):
        raise Protokollfehler("Kopffelder ohne Ende")
    return inhalt[laenge:]


def lies_stapel(inhalt: bytes) -> str:
    """The text of a batch, as it was sent."""
    return entziffere(ohne_kopffelder(inhalt))


@dataclass(frozen=True)
class Parameter:
    name: str
    ausgabe: bool
    wert: Wert


@dataclass(frozen=True)
class Prozeduraufruf:
    name: str
    parameter: list[Parameter]


def lies_aufruf(inhalt: bytes) -> Prozeduraufruf:
    """The first call of a message; that a message holds more than one is refused."""
    leser = Leser(ohne_kopffelder(inhalt))
    zeichen = leser.u16()
    if zeichen == 0xFFFF:
        nummer = leser.u16()
        name = PROZEDUREN.get(nummer, f"sp_{nummer}")
    else:
        name = leser.text(zeichen)
    leser.u16()
    parameter: list[Parameter] = []
    while not leser.am_ende:
        if leser.inhalt[leser.stelle] in (0x80, 0xFF, 0xFE):
            raise Protokollfehler("mehrere Aufrufe in einer Nachricht")
        pname = leser.text(leser.u8())
        zustand = leser.u8()
        parameter.append(Parameter(pname, bool(zustand & 1), lies_parameterwert(leser)))
    return Prozeduraufruf(name, parameter)


TA_BEGINN = 5
TA_ABSCHLUSS = 7
TA_RUECKNAHME = 8


@dataclass(frozen=True)
class Transaktionswunsch:
    """`neu`: another transaction begins at once behind the end of this one."""

    art: int
    neu: bool = False


def lies_transaktionswunsch(inhalt: bytes) -> Transaktionswunsch:
    leser = Leser(ohne_kopffelder(inhalt))
    art = leser.u16()
    if art not in (TA_ABSCHLUSS, TA_RUECKNAHME) or leser.am_ende:
        return Transaktionswunsch(art)
    leser.bytes(leser.u8())
    return Transaktionswunsch(art, not leser.am_ende and bool(leser.u8() & 1))
