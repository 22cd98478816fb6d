"""Starts the server: `python3 -m tdsserver --hilfe`. First line of the output: its port, second: the control port."""

from __future__ import annotations

import argparse
import os
import signal
import sys
import tempfile
import threading
from pathlib import Path

from .auskunft import Sitzungswerte
from .instanzen import Instanzauskunft
from .katalog import TABELLEN, Katalog, zerlege_skript
from .maschine import Maschine
from .maschine_h2 import H2Maschine
from .maschine_sqlite import SqliteMaschine
from .mitschnitt import Mitschnitt
from .pakete import ERSTE_PAKETGROESSE
from .protokoll import Protokoll
from .server import Server
from .sitzung import Zugang
from .stapel import Hinweis, Stapellauf
from .steuerung import Steuerung
from .tls import Stufe, Tlswahl

SKRIPTE = Path(__file__).resolve().parents[3] / "sql"


def lies_schalter(argumente: list[str]) -> argparse.Namespace:
    leser = argparse.ArgumentParser(prog="tdsserver", description="TDS-Server für Tests", add_help=False)
    leser.add_argument("--hilfe", action="help", help="zeigt dies")
    leser.add_argument("--maschine", choices=("sqlite", "h2"), default="sqlite", help="Datenbank dahinter")
    leser.add_argument("--datei", type=Path, help="Datei der SQLite-Datenbank; sonst eine, die am Ende verschwindet")
    leser.add_argument("--ohne-tabellen", action="store_true", help="beginnt mit einer leeren Datenbank")
    leser.add_argument("--skripte", type=Path, default=SKRIPTE, help="Ordner mit mssql/ und sqlite/")
    leser.add_argument("--benutzer", default="sa")
    leser.add_argument("--kennwort", default="Geheim-1")
    leser.add_argument("--datenbank", default="", help="einziger Name, der gilt; sonst jeder")
    leser.add_argument("--paketgroesse", type=int, default=ERSTE_PAKETGROESSE, help="Obergrenze, 512 bis 32767")
    leser.add_argument("--port", type=int, default=0)
    leser.add_argument("--steuerport", type=int, default=0)
    leser.add_argument("--instanz", default="", help="beantwortet die Frage nach dem Port dieser Instanz (UDP 1434)")
    leser.add_argument("--protokoll", type=Path, help="Datei, eine JSON-Zeile je Eintrag")
    leser.add_argument("--tls", choices=[s.value for s in Stufe], default=Stufe.NIE.value, help="Verschlüsselung")
    leser.add_argument("--zertifikat", type=Path, help="PEM-Datei mit Schlüssel und Zertifikaten")
    leser.add_argument("--mitschnitt", action="store_true", help="merkt sich alle Bytes der Leitungen")
    return leser.parse_args(argumente)


def baue_maschine(schalter: argparse.Namespace, ordner: Path) -> Maschine:
    """The database with its tables; H2's are created from the server's own scripts."""
    katalog = Katalog.aus_ordner(schalter.skripte / "mssql")
    if schalter.maschine == "sqlite":
        skripte = [] if schalter.ohne_tabellen else [schalter.skripte / "sqlite" / name for name in TABELLEN]
        return SqliteMaschine(schalter.datei or ordner / "bilder.db", katalog, skripte)
    h2 = H2Maschine(katalog)
    if not schalter.ohne_tabellen:
        fuehre_skripte_aus(h2, [schalter.skripte / "mssql" / name for name in TABELLEN])
    return h2


def fuehre_skripte_aus(maschine: Maschine, skripte: list[Path]) -> None:
    arbeit = maschine.verbinde(lambda: False)
    lauf = Stapellauf(arbeit, Sitzungswerte(), lambda: False)
    for skript in skripte:
        for stapel in zerlege_skript(skript.read_text(encoding="utf-8")):
            for ereignis in lauf.fuehre_aus(stapel):
                if isinstance(ereignis, Hinweis) and ereignis.klasse > 10:
                    raise RuntimeError(f"{skript.name}: {ereignis.text}")
    arbeit.schliesse()


def haupt(argumente: list[str]) -> int:
    schalter = lies_schalter(argumente)
    with tempfile.TemporaryDirectory(prefix="tdsserver-") as ordner:
        maschine = baue_maschine(schalter, Path(ordner))
        try:
            zugang = Zugang(schalter.benutzer, schalter.kennwort, schalter.datenbank, schalter.paketgroesse)
            tls = Tlswahl(schalter.tls, schalter.zertifikat)
            server = Server(maschine, zugang, Protokoll(schalter.protokoll), schalter.port, tls,
                            Mitschnitt(schalter.mitschnitt))  # fmt: skip
            steuerung = Steuerung(server, schalter.steuerport)
            if schalter.instanz:
                Instanzauskunft(schalter.instanz, server.port)
            hoere_auf_das_ende(server)
            # Last: whoever has read the ports may ask for the end at once.
            print(server.port, steuerung.port, sep="\n", flush=True)
            server.warte_auf_ende()
            server.halte_an()
            steuerung.schliesse()
        finally:
            maschine.schliesse()
    return 0


def hoere_auf_das_ende(server: Server) -> None:
    """A signal and the end of the standard input end the server, as the command "ende" does."""
    # A handler of Python's runs between two steps of the main thread and would be late for one that waits already; the
    # byte is written at once.
    os.set_blocking(server.schluss, False)
    signal.set_wakeup_fd(server.schluss)
    for nummer in (signal.SIGTERM, signal.SIGINT):
        signal.signal(nummer, lambda *_: None)

    def lies_eingabe() -> None:
        # Not through sys.stdin: its lock, held in a read, would hinder the end of the process.
        while os.read(0, 4096):
            pass
        server.beende()

    threading.Thread(target=lies_eingabe, name="eingabe", daemon=True).start()


if __name__ == "__main__":
    sys.exit(haupt(sys.argv[1:]))
