"""Tells clients the port of a named instance (MC-SQLR): what they ask first for a server like RECHNER\\INSTANZ."""

from __future__ import annotations

import socket
import struct
import threading

from .antworten import SERVERNAME

PORT = 1434
_FRAGE_NACH_INSTANZ, _ANTWORT = 0x04, 0x05


def antworte(frage: bytes, instanz: str, port: int) -> bytes | None:
    """The answer to a datagram; None where it does not ask for this instance."""
    if frage[:1] != bytes([_FRAGE_NACH_INSTANZ]):
        return None
    name = frage[1:].split(b"\0")[0].decode("cp1252", "replace")
    if name.lower() != instanz.lower():
        return None
    worte = f"ServerName;{SERVERNAME};InstanceName;{instanz};IsClustered;No;Version;15.0.2000.5;tcp;{port};;"
    return struct.pack("<BH", _ANTWORT, len(worte)) + worte.encode("cp1252")


class Instanzauskunft:
    """Answers on 127.0.0.1 as long as the process lives. Raises OSError where another one does already."""

    def __init__(self, instanz: str, port: int) -> None:
        self._buchse = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self._buchse.bind(("127.0.0.1", PORT))
        threading.Thread(target=self._bediene, args=(instanz, port), name="instanzen", daemon=True).start()

    def _bediene(self, instanz: str, port: int) -> None:
        while True:
            frage, absender = self._buchse.recvfrom(2048)
            if antwort := antworte(frage, instanz, port):
                self._buchse.sendto(antwort, absender)
