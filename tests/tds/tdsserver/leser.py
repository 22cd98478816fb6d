"""Reads the little-endian fields of a message one behind the other."""

from __future__ import annotations

import struct

from .pakete import Protokollfehler


class Leser:
    def __init__(self, inhalt: bytes, stelle: int = 0) -> None:
        self.inhalt = inhalt
        self.stelle = stelle

    @property
    def am_ende(self) -> bool:
        return self.stelle >= len(self.inhalt)

    def bytes(self, anzahl: int) -> bytes:
        if anzahl < 0 or self.stelle + anzahl > len(self.inhalt):
            raise Protokollfehler("Nachricht zu kurz")
        ergebnis = self.inhalt[self.stelle : self.stelle + anzahl]
        self.stelle += anzahl
        return ergebnis

    def _zahl(self, form: str) -> int:
        return int(struct.unpack("<" + form, self.bytes(struct.calcsize("<" + form)))[0])

    def u8(self) -> int:
        return self._zahl("B")

    def u16(self) -> int:
        return self._zahl("H")

    def u32(self) -> int:
        return self._zahl("I")

    def u64(self) -> int:
        return self._zahl("Q")

    def text(self, zeichen: int) -> str:
        """`zeichen` counts 16-bit characters."""
        return entziffere(self.bytes(2 * zeichen))


def entziffere(inhalt: bytes) -> str:
    """Text from UTF-16, little-endian. Halves of pairs that stand alone are kept, so that nothing is lost."""
    if len(inhalt) % 2:
        raise Protokollfehler("Text mit halbem Zeichen")
    return inhalt.decode("utf-16-le", "surrogatepass")


def verschluessele(text: str) -> bytes:
    return text.encode("utf-16-le", "surrogatepass")
