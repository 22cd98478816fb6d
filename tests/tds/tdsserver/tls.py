"""Encryption as the protocol carries it (MS-TDS 2.2.6.5, 3.2.5.1): asked for in the pre-login, shaken hands on inside
pre-login packets, and from then on TLS around all bytes, or around the login alone."""

from __future__ import annotations

import ssl
import threading
from dataclasses import dataclass
from enum import Enum
from pathlib import Path

# The field's values on the wire.
MOEGLICH, AN, NICHT_UNTERSTUETZT, VERLANGT = 0, 1, 2, 3


class Umfang(Enum):
    """What of a connection is encrypted; ABBRUCH: the two sides do not come together."""

    NICHTS = "nichts"
    ANMELDUNG = "anmeldung"
    ALLES = "alles"
    ABBRUCH = "abbruch"


class Stufe(Enum):
    """What the server wants. AUSWEICHEND answers as no honest server does: who asks for all gets the login alone.
    FORT goes away instead of answering."""

    NIE = "nie"
    MOEGLICH = "moeglich"
    IMMER = "immer"
    AUSWEICHEND = "ausweichend"
    FORT = "fort"


# The protocol's own table: what stands in the answer, and what is then encrypted.
_NEIN = (NICHT_UNTERSTUETZT, Umfang.NICHTS)
_ANTWORTEN: dict[Stufe, dict[int, tuple[int, Umfang]]] = {
    Stufe.NIE: {MOEGLICH: _NEIN, AN: _NEIN, NICHT_UNTERSTUETZT: _NEIN},
    Stufe.MOEGLICH: {MOEGLICH: (MOEGLICH, Umfang.ANMELDUNG), AN: (AN, Umfang.ALLES), NICHT_UNTERSTUETZT: _NEIN},
    Stufe.IMMER: {MOEGLICH: (VERLANGT, Umfang.ALLES), AN: (AN, Umfang.ALLES),
                  NICHT_UNTERSTUETZT: (VERLANGT, Umfang.ABBRUCH)},
    Stufe.AUSWEICHEND: {MOEGLICH: (MOEGLICH, Umfang.ANMELDUNG), AN: (MOEGLICH, Umfang.ANMELDUNG),
                        NICHT_UNTERSTUETZT: _NEIN},
    Stufe.FORT: {},
}  # fmt: skip


@dataclass(frozen=True)
class Absprache:
    """What the server answers to a wish, nothing where it goes away, and what follows from it."""

    antwort: int | None
    umfang: Umfang
    kontext: ssl.SSLContext | None


class Tlswahl:
    """What the server wants and its certificate; may change between two clients, from any thread."""

    def __init__(self, stufe: str = Stufe.NIE.value, zertifikat: Path | None = None) -> None:
        self._schloss = threading.Lock()
        self._stufe = Stufe.NIE
        self._kontext: ssl.SSLContext | None = None
        self.setze(stufe, zertifikat)

    def setze(self, stufe: str, zertifikat: Path | None = None) -> None:
        """`zertifikat`: a PEM file with the key, the certificate and those it is signed by; without one the last
        stays. Raises ValueError for an unknown wish and for one that needs a certificate and has none."""
        neue = Stufe(stufe)
        kontext = _kontext(zertifikat) if zertifikat else None
        with self._schloss:
            self._kontext = kontext or self._kontext
            if neue not in (Stufe.NIE, Stufe.FORT) and self._kontext is None:
                raise ValueError("ohne Zertifikat keine Verschlüsselung")
            self._stufe = neue

    def verabrede(self, wunsch: int) -> Absprache:
        with self._schloss:
            antwort, umfang = _ANTWORTEN[self._stufe].get(wunsch, (NICHT_UNTERSTUETZT, Umfang.ABBRUCH))
            return Absprache(None if self._stufe is Stufe.FORT else antwort, umfang, self._kontext)


def _kontext(zertifikat: Path) -> ssl.SSLContext:
    kontext = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    # In this form of the protocol no server speaks a later one.
    kontext.maximum_version = ssl.TLSVersion.TLSv1_2
    kontext.load_cert_chain(zertifikat)
    return kontext


class Tlsschicht:
    """The server's end of TLS over memory. Raises ssl.SSLError where the other end breaks its rules or says no."""

    def __init__(self, kontext: ssl.SSLContext) -> None:
        self._ein = ssl.MemoryBIO()
        self._aus = ssl.MemoryBIO()
        self._objekt = kontext.wrap_bio(self._ein, self._aus, server_side=True)

    def handschlag(self) -> tuple[bool, bytes]:
        """Whether the handshake is done, and what has to go out for it."""
        try:
            self._objekt.do_handshake()
        except ssl.SSLWantReadError:
            return False, self._aus.read()
        return True, self._aus.read()

    def nimm(self, verschluesselt: bytes) -> None:
        self._ein.write(verschluesselt)

    def entschluessle(self, verschluesselt: bytes) -> bytes:
        """The plain bytes of all records that are whole by now."""
        self._ein.write(verschluesselt)
        klar = b""
        while True:
            try:
                stueck = self._objekt.read(65536)
            except ssl.SSLWantReadError:
                return klar
            if not stueck:
                return klar
            klar += stueck

    def verschluessle(self, klar: bytes) -> bytes:
        self._objekt.write(klar)
        return self._aus.read()
