"""The bytes of each link exactly as they crossed the wire, for tests that look for what must not be readable there."""

from __future__ import annotations

import threading


class Mitschnitt:
    """Keeps nothing until it is switched on."""

    def __init__(self, an: bool = False) -> None:
        self._schloss = threading.Lock()
        self._an = an
        self._bytes: dict[int, tuple[bytearray, bytearray]] = {}

    def nimm(self, verbindung: int, ein: bytes = b"", aus: bytes = b"") -> None:
        if not self._an:
            return
        with self._schloss:
            hin, her = self._bytes.setdefault(verbindung, (bytearray(), bytearray()))
            hin += ein
            her += aus

    def eintraege(self) -> list[dict[str, int | str]]:
        """Per link what came and what went, in hexadecimal digits."""
        with self._schloss:
            return [{"verbindung": nummer, "ein": ein.hex(), "aus": aus.hex()}
                    for nummer, (ein, aus) in sorted(self._bytes.items())]  # fmt: skip

    def leere(self) -> None:
        with self._schloss:
            self._bytes.clear()
