"""Listens on 127.0.0.1 and gives each client a session in a thread of its own."""

from __future__ import annotations

import os
import socket
import threading
from functools import partial

from .auftraege import Auftraege
from .maschine import Maschine
from .mitschnitt import Mitschnitt
from .pakete import Paketleitung, Zaehler
from .protokoll import Protokoll
from .sitzung import Sitzung, Zugang
from .tls import Tlswahl


class Server:
    """Begins to listen at once. `port` 0 takes a free one; it stays the same over `halte_an` and `horche`.

    A byte written to `schluss` ends `warte_auf_ende`.
    """

    def __init__(self, maschine: Maschine, zugang: Zugang, protokoll: Protokoll, port: int = 0,
                 tls: Tlswahl | None = None, mitschnitt: Mitschnitt | None = None) -> None:  # fmt: skip
        self.maschine = maschine
        self.tls = tls or Tlswahl()
        self.mitschnitt = mitschnitt or Mitschnitt()
        self.protokoll = protokoll
        self.auftraege = Auftraege()
        self.zaehler = Zaehler()
        self.port = port
        self._zugang = zugang
        self._schloss = threading.Lock()
        self._sitzungen: dict[int, Sitzung] = {}
        self._naechste = 1
        self._horcher: socket.socket | None = None
        self._ende, self.schluss = os.pipe()
        self.horche()

    def horche(self) -> None:
        """Takes clients; nothing happens where it does already."""
        with self._schloss:
            if self._horcher is not None:
                return
            horcher = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
            horcher.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
            horcher.bind(("127.0.0.1", self.port))
            horcher.listen(64)
            self.port = horcher.getsockname()[1]
            self._horcher = horcher
        threading.Thread(target=self._nimm_auf, args=(horcher,), name="horcher", daemon=True).start()

    def halte_an(self) -> None:
        """Is gone for all clients: no port, no link."""
        with self._schloss:
            horcher, self._horcher = self._horcher, None
        if horcher is not None:
            # A thread in accept() is only woken by a shutdown.
            try:
                horcher.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
            horcher.close()
        self.trenne_alle()

    def trenne_alle(self) -> int:
        with self._schloss:
            sitzungen = list(self._sitzungen.values())
        for sitzung in sitzungen:
            sitzung.trenne()
        return len(sitzungen)

    def anzahl_verbindungen(self) -> int:
        with self._schloss:
            return len(self._sitzungen)

    def warte_auf_ende(self) -> None:
        os.read(self._ende, 1)

    def beende(self) -> None:
        os.write(self.schluss, b"\0")

    def _nimm_auf(self, horcher: socket.socket) -> None:
        while True:
            try:
                buchse, _ = horcher.accept()
            except OSError:
                return
            buchse.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            with self._schloss:
                nummer = self._naechste
                self._naechste += 1
                leitung = Paketleitung(buchse, self.zaehler, partial(self.mitschnitt.nimm, nummer))
                sitzung = Sitzung(nummer, leitung, self.maschine, self._zugang, self.auftraege, self.protokoll,
                                  self.tls)  # fmt: skip
                self._sitzungen[nummer] = sitzung
            name = f"sitzung-{nummer}"
            threading.Thread(target=self._bediene, args=(nummer, sitzung), name=name, daemon=True).start()

    def _bediene(self, nummer: int, sitzung: Sitzung) -> None:
        try:
            sitzung.bediene()
        finally:
            with self._schloss:
                self._sitzungen.pop(nummer, None)
