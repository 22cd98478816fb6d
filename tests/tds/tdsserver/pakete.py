"""Packets: the frame around every message of the protocol (MS-TDS 2.2.3).

A message is cut into packets of the size that was agreed on; the last carries the mark "end of message".
"""

from __future__ import annotations

import select
import socket
import ssl
import struct
import threading
from typing import Callable

from .tls import Tlsschicht

KOPF = 8
ENDE_DER_NACHRICHT = 0x01

STAPEL = 0x01
RPC = 0x03
ANTWORT = 0x04
ABBRUCH = 0x06
TRANSAKTION = 0x0E
ANMELDUNG = 0x10
VORANMELDUNG = 0x12

ERSTE_PAKETGROESSE = 4096
KLEINSTES_PAKET = 512
GROESSTES_PAKET = 32767
GROESSTE_NACHRICHT = 64 * 1024 * 1024


class Verbindungsende(Exception):
    """The other side closed the link, or something here cut it."""


class Protokollfehler(Exception):
    """Bytes that are no message of the protocol."""


class Zaehler:
    """Packets and round trips of all connections together; a round trip is one whole message from the client."""

    def __init__(self) -> None:
        self._schloss = threading.Lock()
        self.ein = 0
        self.aus = 0
        self.nachrichten = 0

    def zaehle(self, ein: int = 0, aus: int = 0, nachrichten: int = 0) -> None:
        with self._schloss:
            self.ein += ein
            self.aus += aus
            self.nachrichten += nachrichten


def zerteile(art: int, inhalt: bytes, paketgroesse: int) -> list[bytes]:
    """The packets of a message, at least one. `paketgroesse` counts bytes with the header."""
    je_paket = paketgroesse - KOPF
    stuecke = [inhalt[i : i + je_paket] for i in range(0, len(inhalt), je_paket)] or [b""]
    pakete = []
    for nummer, stueck in enumerate(stuecke, 1):
        zustand = ENDE_DER_NACHRICHT if nummer == len(stuecke) else 0
        pakete.append(struct.pack(">BBHHBB", art, zustand, KOPF + len(stueck), 0, nummer & 0xFF, 0) + stueck)
    return pakete


class Paketleitung:
    """One link to a client. Used by one thread; `trenne` may come from any. `schnitt` is told the bytes of the wire,
    those that came and those that go."""

    def __init__(self, buchse: socket.socket, zaehler: Zaehler | None = None,
                 schnitt: Callable[[bytes, bytes], None] = lambda ein, aus: None) -> None:  # fmt: skip
        self._buchse = buchse
        self._zaehler = zaehler or Zaehler()
        self._schnitt = schnitt
        self._schicht: Tlsschicht | None = None
        self._puffer = b""
        self.paketgroesse = ERSTE_PAKETGROESSE

    def lies_nachricht(self) -> tuple[int, bytes]:
        """The kind and the content of the next whole message. Raises Verbindungsende or Protokollfehler."""
        teile: list[bytes] = []
        laenge = 0
        while True:
            art, zustand, teil = self._lies_paket()
            if art == ABBRUCH and teile:
                # The client gave up while it was sending; what it sent until then is dropped.
                return art, b""
            teile.append(teil)
            laenge += len(teil)
            if laenge > GROESSTE_NACHRICHT:
                raise Protokollfehler("Nachricht zu lang")
            if zustand & ENDE_DER_NACHRICHT:
                self._zaehler.zaehle(nachrichten=1)
                return art, b"".join(teile)

    def _lies_paket(self) -> tuple[int, int, bytes]:
        """Kind, state and content of the next packet."""
        art, zustand, gesamt = struct.unpack(">BBH", self._lies(KOPF)[:4])
        if gesamt < KOPF:
            raise Protokollfehler(f"Paketlänge {gesamt}")
        teil = self._lies(gesamt - KOPF)
        self._zaehler.zaehle(ein=1)
        return art, zustand, teil

    @property
    def verschluesselt(self) -> bool:
        return self._schicht is not None

    def beginne_tls(self, kontext: ssl.SSLContext) -> None:
        """The handshake, carried in pre-login packets; all that follows goes through TLS."""
        schicht = Tlsschicht(kontext)
        try:
            fertig, hinaus = schicht.handschlag()
            while not fertig:
                if hinaus:
                    self.sende(hinaus, VORANMELDUNG)
                art, _, teil = self._lies_paket()
                if art != VORANMELDUNG:
                    raise Protokollfehler(f"kein Handschlag, sondern 0x{art:02X}")
                schicht.nimm(teil)
                fertig, hinaus = schicht.handschlag()
        except ssl.SSLError as fehler:
            raise Verbindungsende(f"Handschlag: {fehler.reason or fehler}") from fehler
        self.sende(hinaus, VORANMELDUNG)
        self._schicht = schicht

    def beende_tls(self) -> None:
        """What follows goes plain again, without a word about it: so the login alone is encrypted."""
        self._schicht = None

    def sende(self, inhalt: bytes, art: int = ANTWORT) -> None:
        for paket in zerteile(art, inhalt, self.paketgroesse):
            self._sende_bytes(paket)

    def sende_rumpf(self, inhalt: bytes) -> None:
        """Sends a message without its end: full packets, and the rest in one that says there is more to come."""
        for paket in zerteile(ANTWORT, inhalt, self.paketgroesse):
            self._sende_bytes(paket[:1] + b"\0" + paket[2:])

    def wartet_eingabe(self, sekunden: float = 0) -> bool:
        """Something came from the client within that time: a cancel, or the end of the link."""
        if self._puffer:
            return True
        try:
            return bool(select.select([self._buchse], [], [], sekunden)[0])
        except (OSError, ValueError) as fehler:
            raise Verbindungsende from fehler

    def trenne(self) -> None:
        for schritt in (lambda: self._buchse.shutdown(socket.SHUT_RDWR), self._buchse.close):
            try:
                schritt()
            except OSError:
                pass

    def _sende_bytes(self, paket: bytes) -> None:
        hinaus = self._schicht.verschluessle(paket) if self._schicht else paket
        self._schnitt(b"", hinaus)
        try:
            self._buchse.sendall(hinaus)
        except (OSError, ValueError) as fehler:
            raise Verbindungsende from fehler
        self._zaehler.zaehle(aus=1)

    def _lies(self, anzahl: int) -> bytes:
        while len(self._puffer) < anzahl:
            try:
                neu = self._buchse.recv(65536)
            except (OSError, ValueError) as fehler:
                raise Verbindungsende from fehler
            if not neu:
                raise Verbindungsende
            self._schnitt(neu, b"")
            try:
                self._puffer += self._schicht.entschluessle(neu) if self._schicht else neu
            except ssl.SSLError as fehler:
                raise Protokollfehler(f"TLS: {fehler.reason or fehler}") from fehler
        ergebnis, self._puffer = self._puffer[:anzahl], self._puffer[anzahl:]
        return ergebnis
