"""A client of PostgreSQL's wire protocol 3.0, as far as H2's own server speaks it: simple queries, values as text."""

from __future__ import annotations

import select
import socket
import struct
from dataclasses import dataclass, field
from typing import Callable

ANMELDUNG_IM_KLARTEXT = 3
PROTOKOLL, ABBRUCH = 196608, 80877102


class PgFehler(Exception):
    """An error of a statement, with its SQLSTATE."""

    def __init__(self, sqlstate: str, text: str) -> None:
        super().__init__(text)
        self.sqlstate = sqlstate
        self.text = text


@dataclass
class PgErgebnis:
    """Columns as name and number of the type; None where the statement gives no rows."""

    marke: str = ""
    spalten: list[tuple[str, int]] | None = None
    zeilen: list[list[str | None]] = field(default_factory=list)


class Pgleitung:
    """One session. Raises OSError where the link fails and PgFehler where the database refuses."""

    def __init__(self, port: int, datenbank: str, benutzer: str, kennwort: str) -> None:
        self._port = port
        self._buchse = socket.create_connection(("127.0.0.1", port), timeout=60)
        self._puffer = bytearray()
        self._schluessel = b""
        felder = f"user\0{benutzer}\0database\0{datenbank}\0client_encoding\0UTF8\0\0".encode()
        self._buchse.sendall(struct.pack(">II", len(felder) + 8, PROTOKOLL) + felder)
        self._melde_an(kennwort)

    def frage(self, text: str, wache: Callable[[], bool] = lambda: False) -> PgErgebnis:
        """Runs one statement; sends a cancel as soon as `wache` says so."""
        self._sende(b"Q", text.encode("utf-8") + b"\0")
        ergebnis = PgErgebnis()
        fehler: PgFehler | None = None
        while True:
            self._warte(wache)
            art, inhalt = self._lies()
            if art == b"T":
                ergebnis.spalten = _lies_spalten(inhalt)
            elif art == b"D":
                ergebnis.zeilen.append(_lies_zeile(inhalt))
            elif art == b"C":
                ergebnis.marke = inhalt.rstrip(b"\0").decode()
            elif art == b"E":
                fehler = _lies_fehler(inhalt)
            elif art == b"Z":
                if fehler is not None:
                    raise fehler
                return ergebnis

    def schliesse(self) -> None:
        try:
            self._sende(b"X", b"")
        except OSError:
            pass
        self._buchse.close()

    def _melde_an(self, kennwort: str) -> None:
        while True:
            art, inhalt = self._lies()
            if art == b"R" and struct.unpack(">I", inhalt[:4])[0] == ANMELDUNG_IM_KLARTEXT:
                self._sende(b"p", kennwort.encode("utf-8") + b"\0")
            elif art == b"K":
                self._schluessel = inhalt
            elif art == b"E":
                raise _lies_fehler(inhalt)
            elif art == b"Z":
                return

    def _warte(self, wache: Callable[[], bool]) -> None:
        """Waits for the next message as long as nobody cancels."""
        gesendet = False
        while not self._puffer and not select.select([self._buchse], [], [], 0.05)[0]:
            if not gesendet and wache():
                gesendet = True
                with socket.create_connection(("127.0.0.1", self._port), timeout=10) as daneben:
                    daneben.sendall(struct.pack(">II", 16, ABBRUCH) + self._schluessel)

    def _sende(self, art: bytes, inhalt: bytes) -> None:
        self._buchse.sendall(art + struct.pack(">I", len(inhalt) + 4) + inhalt)
        self._bestaetige_sofort()

    def _bestaetige_sofort(self) -> None:
        """H2 sends an answer in several parts and waits for each to be acknowledged; without this, which holds for a
        while only, every question would take 40 ms."""
        self._buchse.setsockopt(socket.IPPROTO_TCP, socket.TCP_QUICKACK, 1)

    def _lies(self) -> tuple[bytes, bytes]:
        kopf = self._lies_bytes(5)
        return kopf[:1], self._lies_bytes(struct.unpack(">I", kopf[1:])[0] - 4)

    def _lies_bytes(self, anzahl: int) -> bytes:
        while len(self._puffer) < anzahl:
            neu = self._buchse.recv(65536)
            if not neu:
                raise ConnectionError("Die Datenbank hat die Verbindung beendet")
            self._puffer += neu
            self._bestaetige_sofort()
        ergebnis = bytes(self._puffer[:anzahl])
        del self._puffer[:anzahl]
        return ergebnis


def _lies_spalten(inhalt: bytes) -> list[tuple[str, int]]:
    spalten = []
    stelle = 2
    for _ in range(struct.unpack(">H", inhalt[:2])[0]):
        ende = inhalt.index(b"\0", stelle)
        typ = struct.unpack(">IhIhih", inhalt[ende + 1 : ende + 19])[2]
        spalten.append((inhalt[stelle:ende].decode("utf-8"), typ))
        stelle = ende + 19
    return spalten


def _lies_zeile(inhalt: bytes) -> list[str | None]:
    werte: list[str | None] = []
    stelle = 2
    for _ in range(struct.unpack(">H", inhalt[:2])[0]):
        laenge = struct.unpack(">i", inhalt[stelle : stelle + 4])[0]
        stelle += 4
        werte.append(None if laenge < 0 else inhalt[stelle : stelle + laenge].decode("utf-8"))
        stelle += max(laenge, 0)
    return werte


def _lies_fehler(inhalt: bytes) -> PgFehler:
    felder = {teil[:1]: teil[1:].decode("utf-8", "replace") for teil in inhalt.split(b"\0") if teil}
    return PgFehler(felder.get(b"C", ""), felder.get(b"M", ""))
