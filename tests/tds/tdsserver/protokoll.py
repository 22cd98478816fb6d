"""The log of what arrived: one JSON object a line, so that a test reads each text exactly as it was sent."""

from __future__ import annotations

import json
import threading
from pathlib import Path
from typing import Any


class Protokoll:
    """Kept in memory and, where a file is named, written there at once. Halves of pairs are written as \\uXXXX."""

    def __init__(self, datei: Path | None = None) -> None:
        self._schloss = threading.Lock()
        self._datei = datei
        self._eintraege: list[dict[str, Any]] = []
        self.leere()

    def notiere(self, verbindung: int, art: str, text: str, **weiteres: Any) -> None:
        """`art` is anmeldung, stapel, aufruf, transaktion, abbruch or ende."""
        eintrag = {"verbindung": verbindung, "art": art, "text": text, **weiteres}
        with self._schloss:
            self._eintraege.append(eintrag)
            if self._datei is not None:
                with self._datei.open("a", encoding="ascii") as strom:
                    strom.write(json.dumps(eintrag) + "\n")

    def eintraege(self) -> list[dict[str, Any]]:
        with self._schloss:
            return list(self._eintraege)

    def leere(self) -> None:
        with self._schloss:
            self._eintraege.clear()
            if self._datei is not None:
                self._datei.write_text("", encoding="ascii")
