"""SQLite behind the server, with the comparison of texts that the server has."""

from __future__ import annotations

import random
import re
import sqlite3
import time
from pathlib import Path

from . import maschine
from .antworten import Spalte
from .dialekt import sqlite_dialekt
from .katalog import Katalog, typ_aus_text
from .maschine import Abgebrochen, Ergebnis, SqlFehler, Wache, mit_typen
from .typen import Typ, Wert, zeichen16
from .zerleger import bedeutende

WARTEGRENZE = 30.0  # seconds for a lock of another session
_ZAEHLENDE = ("INSERT", "UPDATE", "DELETE")


def _gefaltet(text: str) -> str:
    return "".join(f if len(f := z.casefold()) == 1 else z for z in text.rstrip(" "))


def vergleiche_servertext(a: str, b: str) -> int:
    """Case of all letters and blanks at the end are ignored."""
    links, rechts = _gefaltet(a), _gefaltet(b)
    return (links > rechts) - (links < rechts)


def _suchtext(text: str | None) -> str | None:
    return None if text is None else " ".join(text.casefold().split())


def _len(wert: Wert) -> int | None:
    return None if wert is None else zeichen16(str(wert).rstrip(" "))


def _datalength(wert: Wert) -> int | None:
    if wert is None:
        return None
    return len(wert) if isinstance(wert, bytes) else 2 * zeichen16(str(wert))


def _replicate(text: Wert, anzahl: Wert) -> str | None:
    return None if text is None or anzahl is None else str(text) * int(anzahl)


class SqliteMaschine:
    """A database file. The scripts of `skripte` create its tables; an empty list leaves it as it is."""

    name = "SQLite"

    def __init__(self, datei: Path, katalog: Katalog, skripte: list[Path]) -> None:
        self._datei = datei
        self._katalog = katalog
        verbindung = self._oeffne()
        verbindung.execute(f"PRAGMA busy_timeout={int(WARTEGRENZE * 1000)}")
        verbindung.execute("PRAGMA journal_mode=WAL")
        for skript in skripte:
            verbindung.executescript(skript.read_text(encoding="utf-8"))
        verbindung.close()

    def verbinde(self, wache: Wache) -> SqliteArbeit:
        return SqliteArbeit(self._oeffne(), self._katalog, wache)

    def schliesse(self) -> None:
        """The file stays."""

    def _oeffne(self) -> sqlite3.Connection:
        verbindung = sqlite3.connect(self._datei, timeout=WARTEGRENZE, isolation_level=None, check_same_thread=False)
        verbindung.create_collation("SERVERTEXT", vergleiche_servertext)
        verbindung.create_function("LEN", 1, _len, deterministic=True)
        # A data folder's own database has triggers that use these two; what they give is of no interest here.
        verbindung.create_function("SUCHTEXT", 1, _suchtext, deterministic=True)
        verbindung.create_function("WORTANFAENGE", 1, _suchtext, deterministic=True)
        verbindung.create_function("DATALENGTH", 1, _datalength, deterministic=True)
        verbindung.create_function("REPLICATE", 2, _replicate, deterministic=True)
        # The file need not outlive the machine, only the processes.
        verbindung.execute("PRAGMA synchronous=OFF")
        # Locks are waited for above, where a cancel is heard meanwhile.
        verbindung.execute("PRAGMA busy_timeout=0")
        return verbindung


class SqliteArbeit:
    """One session on the file."""

    def __init__(self, verbindung: sqlite3.Connection, katalog: Katalog, wache: Wache) -> None:
        self._verbindung = verbindung
        self._katalog = katalog
        self._wache = wache
        self._abgebrochen = False
        verbindung.set_progress_handler(self._zwischendurch, 200_000)

    def fuehre_aus(self, text: str) -> Ergebnis:
        befehl = next((s.text.upper() for s in bedeutende(text)), "")
        cursor = self._versuche(sqlite_dialekt(text))
        if befehl in ("CREATE", "ALTER"):
            self._katalog.nimm(text)
        if cursor.description is None:
            return Ergebnis(befehl, anzahl=max(cursor.rowcount, 0) if befehl in _ZAEHLENDE else None)
        try:
            zeilen = cursor.fetchall()
        except sqlite3.Error as fehler:
            raise self._fehler(fehler) from fehler
        namen = [beschreibung[0] for beschreibung in cursor.description]
        spalten = mit_typen(namen, [self._katalog.typ(name) for name in namen], zeilen)
        return Ergebnis("SELECT", spalten, zeilen, len(zeilen))

    def pruefe(self, text: str) -> None:
        try:
            self._verbindung.execute("EXPLAIN " + sqlite_dialekt(text)).close()
        except sqlite3.Error as fehler:
            sql_fehler = self._fehler(fehler)
            if sql_fehler.nummer in (maschine.SYNTAX, maschine.UNGESCHLOSSEN):
                raise sql_fehler from fehler

    def beginne(self) -> None:
        self._versuche("BEGIN IMMEDIATE")

    def schliesse_ab(self) -> None:
        self._versuche("COMMIT")

    def nimm_zurueck(self) -> None:
        if self._verbindung.in_transaction:
            self._versuche("ROLLBACK")

    def tabellen(self) -> dict[str, list[Spalte]]:
        frage = "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%' ORDER BY name"
        ergebnis = {}
        for (tabelle,) in self._verbindung.execute(frage).fetchall():
            zeilen = self._verbindung.execute(
                'SELECT name, type, "notnull", dflt_value IS NOT NULL OR pk FROM pragma_table_info(?)', (tabelle,)
            ).fetchall()
            ergebnis[tabelle] = [
                Spalte(name, self._katalog.typ_in(tabelle, name) or typ_aus_text(typ) or Typ("nvarchar"),
                       not fest, bool(vorgabe))
                for name, typ, fest, vorgabe in zeilen
            ]
        return ergebnis

    def indexe(self) -> list[tuple[str, str]]:
        frage = "SELECT tbl_name, name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL ORDER BY name"
        return list(self._verbindung.execute(frage).fetchall())

    def schliesse(self) -> None:
        self._verbindung.close()

    def _zwischendurch(self) -> int:
        self._abgebrochen = self._abgebrochen or self._wache()
        return 1 if self._abgebrochen else 0

    def _versuche(self, text: str) -> sqlite3.Cursor:
        """Runs the text; waits for locks of others."""
        self._abgebrochen = False
        ende = time.monotonic() + WARTEGRENZE
        while True:
            try:
                return self._verbindung.execute(text)
            except sqlite3.OperationalError as fehler:
                gesperrt = fehler.sqlite_errorcode & 0xFF in (sqlite3.SQLITE_BUSY, sqlite3.SQLITE_LOCKED)
                if not gesperrt or time.monotonic() > ende:
                    raise self._fehler(fehler) from fehler
                if self._wache():
                    raise Abgebrochen from fehler
                time.sleep(random.uniform(0.001, 0.01))
            except (sqlite3.Error, sqlite3.Warning, ValueError, UnicodeError) as fehler:
                raise self._fehler(fehler) from fehler

    def _fehler(self, fehler: Exception) -> Exception:
        """The error in the server's numbers."""
        nummer = getattr(fehler, "sqlite_errorcode", 0) & 0xFF
        if nummer == sqlite3.SQLITE_INTERRUPT:
            return Abgebrochen()
        worte = str(fehler)
        if nummer in (sqlite3.SQLITE_BUSY, sqlite3.SQLITE_LOCKED):
            return SqlFehler(maschine.SPERRE, "Lock request time out period exceeded.")
        if nummer == sqlite3.SQLITE_CONSTRAINT:
            return _bedingung(worte)
        for muster, sqlnummer, text in _WORTE:
            if treffer := muster.search(worte):
                return SqlFehler(sqlnummer, text.format(*treffer.groups()), 15 if sqlnummer in (102, 105) else 16)
        return SqlFehler(maschine.ALLGEMEIN, worte)


_WORTE = [
    (re.compile(r"no such table: (?:main\.)?(.*)"), maschine.OBJEKT_FEHLT, "Invalid object name '{0}'."),
    (re.compile(r"no such column: (.*)|has no column named (.*)"), maschine.SPALTE_FEHLT, "Invalid column name '{0}'."),
    (re.compile(r"near \"(.*)\": syntax error", re.DOTALL), maschine.SYNTAX, "Incorrect syntax near '{0}'."),
    (re.compile(r"incomplete input"), maschine.SYNTAX, "Incorrect syntax near the end of the text."),
    (re.compile(r"unrecognized token: \"(.*)\"", re.DOTALL), maschine.UNGESCHLOSSEN,
     "Unclosed quotation mark after the character string '{0}'."),
    (re.compile(r"already exists"), 2714, "There is already an object of that name in the database."),
]  # fmt: skip


def _bedingung(worte: str) -> SqlFehler:
    if worte.startswith("NOT NULL"):
        return SqlFehler(maschine.NULL_VERBOTEN, f"Cannot insert the value NULL: {worte}", zustand=2, weiter=True)
    if worte.startswith("UNIQUE"):
        return SqlFehler(maschine.DOPPELT, f"Violation of UNIQUE KEY constraint: {worte}", 14, weiter=True)
    if "BETWEEN" in worte or "16-Bit" in worte:
        return SqlFehler(maschine.UEBERLAUF, "Arithmetic overflow error for data type smallint.", weiter=True)
    return SqlFehler(maschine.ABGESCHNITTEN, "String or binary data would be truncated.", zustand=13, weiter=True)
