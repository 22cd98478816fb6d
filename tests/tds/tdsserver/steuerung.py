"""The control channel: a second port that takes one command a line and answers each with one line."""

from __future__ import annotations

import json
import socketserver
import threading
from pathlib import Path
from typing import TYPE_CHECKING, Callable

from .auftraege import Auftragsfehler
from .maschine import SqlFehler

if TYPE_CHECKING:
    from .server import Server

HILFE = ("fehler|meldung|langsam|stumm|trenne|merke|anmeldung WAHL …, heile, trenne-alle, halt, weiter, verbindungen, "
         "pakete, protokoll, protokoll-leeren, mitschnitt, mitschnitt-leeren, tls STUFE [DATEI], leere, sql TEXT, "
         "ende")  # fmt: skip


class Befehle:
    """Carries out the lines of the control channel."""

    def __init__(self, server: Server) -> None:
        self._server = server
        self._wege: dict[str, Callable[[], str]] = {
            "hilfe": lambda: HILFE, "heile": self._heile, "trenne-alle": self._trenne_alle, "halt": self._halt,
            "weiter": self._weiter, "verbindungen": lambda: str(server.anzahl_verbindungen()),
            "pakete": self._pakete, "protokoll": lambda: json.dumps(server.protokoll.eintraege()),
            "protokoll-leeren": self._leere_protokoll, "leere": self._leere, "ende": self._ende,
            "mitschnitt": lambda: json.dumps(server.mitschnitt.eintraege()),
            "mitschnitt-leeren": self._leere_mitschnitt,
        }  # fmt: skip

    def antworte(self, zeile: str) -> str:
        """ "ok" with or without a value, or "fehler: " and words."""
        befehl, _, rest = zeile.strip().partition(" ")
        try:
            if befehl == "sql":
                return "ok " + self._sql(rest)
            if befehl == "tls":
                return self._setze_tls(rest)
            if befehl in self._wege:
                return f"ok {self._wege[befehl]()}".rstrip()
            self._server.auftraege.nimm(zeile.split())
            return "ok"
        except (Auftragsfehler, OSError, RuntimeError) as fehler:
            return f"fehler: {fehler}"
        except SqlFehler as fehler:
            return f"fehler: {fehler.nummer} {fehler.text}".replace("\n", " ")
        except Exception as fehler:  # whatever it is, the one who asked learns of it
            return f"fehler: {type(fehler).__name__} {fehler}".replace("\n", " ")

    def _heile(self) -> str:
        self._server.auftraege.heile()
        return ""

    def _trenne_alle(self) -> str:
        return str(self._server.trenne_alle())

    def _halt(self) -> str:
        self._server.halte_an()
        return ""

    def _weiter(self) -> str:
        self._server.horche()
        return ""

    def _pakete(self) -> str:
        z = self._server.zaehler
        return f"ein={z.ein} aus={z.aus} nachrichten={z.nachrichten}"

    def _leere_protokoll(self) -> str:
        self._server.protokoll.leere()
        return ""

    def _leere_mitschnitt(self) -> str:
        self._server.mitschnitt.leere()
        return ""

    def _setze_tls(self, rest: str) -> str:
        stufe, _, datei = rest.partition(" ")
        self._server.tls.setze(stufe, Path(datei) if datei else None)
        return "ok"

    def _leere(self) -> str:
        """All rows, all orders and the log go; the tables stay."""
        self._server.auftraege.heile()
        arbeit = self._server.maschine.verbinde(lambda: False)
        try:
            for tabelle in arbeit.tabellen():
                arbeit.fuehre_aus(f"DELETE FROM {tabelle}")
        finally:
            arbeit.schliesse()
        self._server.protokoll.leere()
        return ""

    def _sql(self, text: str) -> str:
        """Runs one statement beside the protocol. A text in JSON's quotes may hold line ends."""
        try:
            anweisung = json.loads(text) if text.startswith('"') else text
        except ValueError as fehler:
            raise Auftragsfehler(str(fehler)) from fehler
        arbeit = self._server.maschine.verbinde(lambda: False)
        try:
            return json.dumps([list(zeile) for zeile in arbeit.fuehre_aus(anweisung).zeilen], default=repr)
        finally:
            arbeit.schliesse()

    def _ende(self) -> str:
        self._server.beende()
        return ""


class Steuerung:
    """The port itself; each connection to it has a thread."""

    def __init__(self, server: Server, port: int = 0) -> None:
        befehle = Befehle(server)

        class Zeilen(socketserver.StreamRequestHandler):
            def handle(self) -> None:
                for zeile in self.rfile:
                    if text := zeile.decode("utf-8", "replace").strip():
                        self.wfile.write((befehle.antworte(text) + "\n").encode("utf-8"))

        class Horcher(socketserver.ThreadingTCPServer):
            daemon_threads = True
            allow_reuse_address = True

        self._horcher = Horcher(("127.0.0.1", port), Zeilen)
        self.port = int(self._horcher.server_address[1])
        threading.Thread(target=self._horcher.serve_forever, name="steuerung", daemon=True).start()

    def schliesse(self) -> None:
        self._horcher.shutdown()
        self._horcher.server_close()
