"""The server as a process of its own, for tests."""

from __future__ import annotations

import json
import shutil
import socket
import subprocess
import sys
from pathlib import Path
from typing import Any

import odbc

# Without a closing brace: FreeTDS does not read its doubled form.
BENUTZER, KENNWORT = "pruefer", "Kenn{wort;ä€"
START = Path(__file__).resolve().parent / "starte.py"


def ohne_treiber() -> str:
    """Why FreeTDS cannot be used through unixODBC here; empty where it can."""
    if odbc.lade() is None:
        return "unixODBC fehlt (unixodbc)"
    if shutil.which("odbcinst") is None:
        return "odbcinst fehlt (unixodbc)"
    treiber = subprocess.run(["odbcinst", "-q", "-d"], capture_output=True, text=True, check=False).stdout
    return "" if "[FreeTDS]" in treiber else "der Treiber FreeTDS fehlt (tdsodbc)"


class Probe:
    """Begins a server; `schliesse` ends it by the end of its input."""

    def __init__(self, *schalter: str) -> None:
        self.prozess = subprocess.Popen(
            [sys.executable, str(START), "--benutzer", BENUTZER, "--kennwort", KENNWORT, *schalter],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, encoding="utf-8")  # fmt: skip
        assert self.prozess.stdout is not None
        zeilen = [self.prozess.stdout.readline().strip() for _ in range(2)]
        if not all(zeilen):
            self.prozess.kill()
            raise RuntimeError("der Server beginnt nicht")
        self.port, self.steuerport = (int(z) for z in zeilen)
        self._steuerung = socket.create_connection(("127.0.0.1", self.steuerport), timeout=60)
        self._strom = self._steuerung.makefile("rw", encoding="utf-8", newline="\n")

    def steuere(self, zeile: str) -> str:
        """The value behind "ok"; AssertionError where the server does not like the line."""
        antwort = self.frage(zeile)
        assert antwort.split(" ")[0] == "ok", antwort
        return antwort[3:]

    def frage(self, zeile: str) -> str:
        self._strom.write(zeile + "\n")
        self._strom.flush()
        return self._strom.readline().rstrip("\n")

    def sql(self, text: str) -> list[list[Any]]:
        """Runs a statement beside the protocol."""
        return list(json.loads(self.steuere("sql " + json.dumps(text))))

    def protokoll(self, art: str = "stapel") -> list[str]:
        return [e["text"] for e in json.loads(self.steuere("protokoll")) if e["art"] == art]

    def pakete(self) -> dict[str, int]:
        return {name: int(zahl) for name, zahl in (feld.split("=") for feld in self.steuere("pakete").split())}

    def zeichenfolge(self, kennwort: str = KENNWORT, **weiteres: str) -> str:
        werte = {"Driver": "FreeTDS", "Server": "127.0.0.1", "Port": str(self.port), "UID": BENUTZER,
                 "PWD": "{" + kennwort.replace("}", "}}") + "}", "Database": "bilder", "TDS_Version": "7.4",
                 "ClientCharset": "UTF-8", **weiteres}  # fmt: skip
        return ";".join(f"{name}={wert}" for name, wert in werte.items())

    def schliesse(self) -> int:
        """Ends the server; gives its exit code."""
        self._strom.close()
        self._steuerung.close()
        assert self.prozess.stdin is not None and self.prozess.stdout is not None
        self.prozess.stdin.close()
        code = self.prozess.wait(timeout=20)
        self.prozess.stdout.close()
        return code
