"""H2 in its SQL Server mode behind the server, reached through H2's own PostgreSQL port.

H2 is a database of others: what it takes, no code of this project had a hand in. Mode and schema are set for each
session, since the port presets a mode of its own.
"""

from __future__ import annotations

import ctypes
import re
import shutil
import signal
import subprocess
import threading
from pathlib import Path

from . import maschine
from .antworten import Spalte
from .katalog import Katalog
from .maschine import Abgebrochen, Ergebnis, SqlFehler, Wache, mit_typen
from .pgleitung import PgErgebnis, PgFehler, Pgleitung
from .typen import Typ, Wert
from .zerleger import WORT, bedeutende, blosser_name

BIBLIOTHEK = Path("/usr/share/java/h2.jar")
_DATENBANK, _BENUTZER, _KENNWORT = "mem:bilder;DB_CLOSE_DELAY=-1", "sa", "h2"
_GANZ, _BRUCH, _BIT, _BYTES = (20, 21, 23), (700, 701, 1700), 16, 17


def fehlt() -> str:
    """Why H2 cannot be used here; empty where it can."""
    if shutil.which("java") is None:
        return "java fehlt (default-jre-headless)"
    return "" if BIBLIOTHEK.exists() else f"{BIBLIOTHEK} fehlt (libh2-java)"


def _stirb_mit_dem_server() -> None:
    """Runs in the child: it gets a SIGKILL as soon as its parent is gone, however that ended."""
    auftrag_bei_elternende = 1  # PR_SET_PDEATHSIG
    ctypes.CDLL(None).prctl(auftrag_bei_elternende, signal.SIGKILL)


class H2Maschine:
    """A database in the memory of a Java process of its own."""

    name = "H2"

    def __init__(self, katalog: Katalog) -> None:
        if grund := fehlt():
            raise RuntimeError(grund)
        self._katalog = katalog
        self._anmeldeschloss = threading.Lock()
        befehl = ["java", "-XX:TieredStopAtLevel=1", "-Xmx512m", "-cp", str(BIBLIOTHEK), "org.h2.tools.Server", "-pg",
                  "-pgPort", "0", "-ifNotExists"]  # fmt: skip
        # In a group of its own, since a Ctrl-C at the server is not for it; it never outlives the server.
        self._prozess = subprocess.Popen(befehl, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                         stderr=subprocess.DEVNULL, text=True, start_new_session=True,
                                         preexec_fn=_stirb_mit_dem_server)  # fmt: skip
        assert self._prozess.stdout is not None
        zeile = self._prozess.stdout.readline()
        treffer = re.search(r"pg://[^:]*:(\d+)", zeile)
        if treffer is None:
            self.schliesse()
            raise RuntimeError(f"H2 beginnt nicht: {zeile.strip()}")
        self._port = int(treffer[1])
        self._richte_ein()

    def verbinde(self, wache: Wache) -> H2Arbeit:
        leitung = self._leitung()
        for text in ("SET SCHEMA dbo", "SET LOCK_TIMEOUT 30000"):
            leitung.frage(text)
        return H2Arbeit(leitung, self._katalog, wache)

    def schliesse(self) -> None:
        self._prozess.kill()
        self._prozess.wait()

    def _richte_ein(self) -> None:
        leitung = self._leitung()
        leitung.frage("SET IGNORECASE TRUE")
        leitung.frage("CREATE SCHEMA IF NOT EXISTS dbo")
        leitung.schliesse()

    def _leitung(self) -> Pgleitung:
        # The mode belongs to the whole database, and the port logs in under a mode of its own: a second login between
        # the two steps of the first one would fail.
        with self._anmeldeschloss:
            leitung = Pgleitung(self._port, _DATENBANK, _BENUTZER, _KENNWORT)
            leitung.frage("SET MODE MSSQLServer")
        return leitung


class H2Arbeit:
    """One session."""

    def __init__(self, leitung: Pgleitung, katalog: Katalog, wache: Wache) -> None:
        self._leitung = leitung
        self._katalog = katalog
        self._wache = wache
        self._in_transaktion = False

    def fuehre_aus(self, text: str) -> Ergebnis:
        befehl = next((s.text.upper() for s in bedeutende(text)), "")
        antwort = self._frage(h2_dialekt(text))
        if befehl == "CREATE":
            self._katalog.nimm(text)
        if antwort.spalten is None:
            zaehlt = befehl in ("INSERT", "UPDATE", "DELETE")
            return Ergebnis(befehl, anzahl=int(antwort.marke.split()[-1]) if zaehlt else None)
        return self._mit_zeilen(text, antwort)

    def pruefe(self, text: str) -> None:
        try:
            self._frage("EXPLAIN " + h2_dialekt(text))
        except SqlFehler as fehler:
            # A name that is not there is found out by the statement itself, when its turn comes.
            if fehler.nummer == maschine.SYNTAX:
                raise

    def beginne(self) -> None:
        self._frage("BEGIN")
        self._in_transaktion = True

    def schliesse_ab(self) -> None:
        self._frage("COMMIT")
        self._in_transaktion = False

    def nimm_zurueck(self) -> None:
        if self._in_transaktion:
            self._frage("ROLLBACK")
        self._in_transaktion = False

    def tabellen(self) -> dict[str, list[Spalte]]:
        frage = ("SELECT TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE, "
                 "COALESCE(COLUMN_DEFAULT, CASE IS_IDENTITY WHEN 'YES' THEN 'YES' END) FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA = 'dbo' "
                 "ORDER BY TABLE_NAME, ORDINAL_POSITION")  # fmt: skip
        ergebnis: dict[str, list[Spalte]] = {}
        for tabelle, spalte, typ, laenge, nullbar, vorgabe in self._frage(frage).zeilen:
            liste = ergebnis.setdefault(self._katalog.schreibweise(tabelle or ""), [])
            name = self._katalog.schreibweise(spalte or "")
            liste.append(Spalte(name, _typ(typ or "", laenge), nullbar != "NO", vorgabe is not None))
        return ergebnis

    def indexe(self) -> list[tuple[str, str]]:
        frage = "SELECT TABLE_NAME, INDEX_NAME FROM INFORMATION_SCHEMA.INDEXES WHERE TABLE_SCHEMA = 'dbo' ORDER BY 2"
        schreibweise = self._katalog.schreibweise
        return [(schreibweise(t or ""), schreibweise(n or "")) for t, n in self._frage(frage).zeilen]

    def schliesse(self) -> None:
        self._leitung.schliesse()

    def _frage(self, text: str) -> PgErgebnis:
        try:
            return self._frage_im_Modus(text)
        except PgFehler as fehler:
            raise _uebersetzt(fehler) from fehler
        except (OSError, UnicodeError) as fehler:
            raise SqlFehler(maschine.ALLGEMEIN, f"H2: {fehler}") from fehler

    def _frage_im_Modus(self, text: str) -> PgErgebnis:
        try:
            return self._leitung.frage(text, self._wache)
        except PgFehler as fehler:
            # Another session's login holds the whole database in the port's own mode for a moment, and that one does
            # not know the type of our columns. Nothing was executed.
            if "Unknown data type" not in fehler.text:
                raise
            self._leitung.frage("SET MODE MSSQLServer")
            return self._leitung.frage(text, self._wache)

    def _mit_zeilen(self, text: str, antwort: PgErgebnis) -> Ergebnis:
        assert antwort.spalten is not None
        oids = [oid for _, oid in antwort.spalten]
        zeilen = [[_wert(oid, wert) for oid, wert in zip(oids, zeile)] for zeile in antwort.zeilen]
        erklaert = [self._katalog.typ(name) if oid not in _GANZ or self._katalog.typ(name) == Typ("smallint") else None
                    for name, oid in antwort.spalten]  # fmt: skip
        namen = [self._schreibweise(text, name) for name, _ in antwort.spalten]
        spalten = mit_typen(namen, erklaert, zeilen)
        if not zeilen:
            spalten = [s if e else Spalte(s.name, _leerer_typ(o)) for s, e, o in zip(spalten, erklaert, oids)]
        return Ergebnis("SELECT", spalten, zeilen, len(zeilen))

    def _schreibweise(self, text: str, name: str) -> str:
        """The name of a result's column, which H2 gives in small letters, as the text or the table writes it."""
        stuecke = bedeutende(text)
        genannt = [(i, blosser_name(s)) for i, s in enumerate(stuecke) if blosser_name(s).lower() == name and name]
        for i, wort in genannt:
            if i > 0 and stuecke[i - 1].ist("AS"):
                return wort
        if (erklaert := self._katalog.schreibweise(name)) != name:
            return erklaert
        return genannt[0][1] if genannt and stuecke[genannt[0][0]].art != WORT else (genannt or [(0, name)])[0][1]


def h2_dialekt(text: str) -> str:
    """The one function of the server that H2 calls otherwise. No text of the system has it; the tests do."""
    return re.sub(r"\breplicate(?=\s*\()", "repeat", text, flags=re.IGNORECASE) if "replicate" in text.lower() else text


def _typ(h2typ: str, laenge: str | None) -> Typ:
    einfach = {"smallint": "smallint", "integer": "int", "bigint": "bigint", "boolean": "bit",
               "double precision": "float"}  # fmt: skip
    if h2typ.lower() in einfach:
        return Typ(einfach[h2typ.lower()])
    zeichen = int(laenge or 0)
    return Typ("char" if h2typ.lower() == "character" else "nvarchar", zeichen if zeichen <= 4000 else 0)


def _leerer_typ(oid: int) -> Typ:
    if oid in _GANZ:
        return Typ("int")
    return Typ("float") if oid in _BRUCH else Typ("nvarchar", 255)


def _wert(oid: int, wert: str | None) -> Wert:
    if wert is None:
        return None
    if oid in _GANZ:
        return int(wert)
    if oid in _BRUCH:
        return float(wert)
    if oid == _BIT:
        return int(wert == "t")
    return bytes.fromhex(wert.removeprefix("\\x")) if oid == _BYTES else wert


def _uebersetzt(fehler: PgFehler) -> Exception:
    """The error in the server's numbers."""
    worte = re.sub(r"; SQL statement:.*", "", fehler.text, flags=re.DOTALL).strip()
    gemeint = re.search(r'"([^"]*)"', worte)
    name = gemeint[1] if gemeint else ""
    worte = worte.replace('"EXPLAIN ', '"')
    zustand = fehler.sqlstate
    if zustand == "57014":
        return Abgebrochen()
    if "already exists" in worte:
        return SqlFehler(2714, f"There is already an object named '{name}' in the database.")
    if zustand.startswith("42S0"):
        return SqlFehler(maschine.OBJEKT_FEHLT, f"Invalid object name '{name}'.")
    if zustand == "42S22":
        return SqlFehler(maschine.SPALTE_FEHLT, f"Invalid column name '{name}'.")
    if zustand.startswith("42"):
        return SqlFehler(maschine.SYNTAX, f"Incorrect syntax: {worte}", 15)
    feste = {"22001": (maschine.ABGESCHNITTEN, "String or binary data would be truncated.", 16),
             "22003": (maschine.UEBERLAUF, "Arithmetic overflow error for data type smallint.", 16),
             "22004": (maschine.UEBERLAUF, "Arithmetic overflow error for data type smallint.", 16),
             "23505": (maschine.DOPPELT, f"Violation of UNIQUE KEY constraint: {worte}", 14),
             "23502": (maschine.NULL_VERBOTEN, f"Cannot insert the value NULL: {worte}", 16)}  # fmt: skip
    if zustand in feste:
        nummer, text, klasse = feste[zustand]
        return SqlFehler(nummer, text, klasse, weiter=True)
    if zustand in ("HYT00", "50200") or "Concurrent update" in worte or "Timeout trying to lock" in worte:
        return SqlFehler(maschine.SPERRE, "Lock request time out period exceeded.")
    if zustand == "40001":
        return SqlFehler(maschine.VERKLEMMT, "Transaction was deadlocked on lock resources.", 13)
    return SqlFehler(maschine.ALLGEMEIN, worte)
