"""What a client may ask about the server itself: @@VERSION, DB_NAME(), OBJECT_ID(…), sys.indexes and the like.

The databases behind know none of it, so each such expression gives way to its value before they see the text. A text
without one is passed on as it is.
"""

from __future__ import annotations

import zlib
from dataclasses import dataclass

from .antworten import SERVERNAME, Spalte
from .maschine import Arbeitsverbindung
from .typen import GANZE_ZAHLEN, Typ
from .zerleger import LITERAL, NAME, WORT, bedeutende, blosser_name, inhalt_des_literals

VERSION = "Microsoft SQL Server 2019 (Prüfling) - 15.0.2000.5"
_SYSTEMTYPEN = {"nvarchar": 231, "varchar": 167, "char": 175, "nchar": 239, "smallint": 52, "int": 56, "bigint": 127,
                "bit": 104, "float": 62, "varbinary": 165}  # fmt: skip
_EIGENSCHAFTEN = {"productversion": "15.0.2000.5", "edition": "Express Edition", "productlevel": "RTM",
                  "servername": SERVERNAME, "collation": "Latin1_General_CI_AS", "engineedition": "4"}  # fmt: skip


@dataclass
class Sitzungswerte:
    """What the session knows of itself."""

    nummer: int = 51
    datenbank: str = "master"
    benutzer: str = "sa"
    transaktionen: int = 0
    betroffen: int = 0
    fehlernummer: int = 0
    ohne_anzahl: bool = False
    verschluesselt: bool = False


def objektnummer(name: str) -> int:
    return zlib.crc32(name.lower().encode("utf-8", "surrogatepass")) & 0x3FFFFFFF


def setze_werte_ein(text: str, arbeit: Arbeitsverbindung, sitzung: Sitzungswerte) -> str:
    """The text with the values in place of what asks for them."""
    klein = text.lower()
    anlass = ("@@", "name(", "name (", "_id(", "property(", "sys.", "information_schema.", "col_length(",
              "has_perms_by_name(", "system_user", "current_user", "is_srvrolemember(", "is_member(")  # fmt: skip
    if not any(wort in klein for wort in anlass):
        return text
    return _Ersetzer(text, arbeit, sitzung).ersetze()


class _Ersetzer:
    def __init__(self, text: str, arbeit: Arbeitsverbindung, sitzung: Sitzungswerte) -> None:
        self._text = text
        self._arbeit = arbeit
        self._sitzung = sitzung
        self._stuecke = bedeutende(text)

    def ersetze(self) -> str:
        teile: list[str] = []
        bis = i = 0
        while i < len(self._stuecke):
            treffer = self._wert(i)
            if treffer is None:
                i += 1
                continue
            ersatz, letztes = treffer
            teile += [self._text[bis : self._stuecke[i].beginn], ersatz]
            bis = self._stuecke[letztes].ende
            i = letztes + 1
        return "".join([*teile, self._text[bis:]])

    def _wert(self, i: int) -> tuple[str, int] | None:
        """What the piece `i` and those behind it become, and the number of the last of them."""
        stueck = self._stuecke[i]
        if stueck.art not in (WORT, NAME):
            return None
        name = blosser_name(stueck).lower()
        variablen = {"@@version": VERSION, "@@servername": SERVERNAME, "@@spid": self._sitzung.nummer,
                     "@@trancount": self._sitzung.transaktionen, "@@rowcount": self._sitzung.betroffen,
                     "@@error": self._sitzung.fehlernummer, "@@language": "us_english", "@@textsize": 2147483647,
                     "@@max_precision": 38, "@@lock_timeout": -1, "@@nestlevel": 0, "@@microsoftversion": 251660240,
                     "@@options": 5496, "system_user": self._sitzung.benutzer, "current_user": "dbo"}  # fmt: skip
        if name in variablen:
            return _literal(variablen[name]), i
        if name in ("sys", "information_schema") and self._ist(i + 1, "."):
            return self._sicht(name, i)
        return self._funktion(name, i) if self._ist(i + 1, "(") else None

    def _ist(self, i: int, zeichen: str) -> bool:
        return i < len(self._stuecke) and self._stuecke[i].ist(zeichen)

    def _funktion(self, name: str, i: int) -> tuple[str, int] | None:
        ende = next((k for k in range(i + 2, len(self._stuecke)) if self._stuecke[k].ist(")")), None)
        if ende is None:
            return None
        argumente = [s for s in self._stuecke[i + 2 : ende] if not s.ist(",")]
        texte = [inhalt_des_literals(s) if s.art == LITERAL else s.text for s in argumente]
        if name in ("db_name", "suser_sname", "suser_name", "original_login", "user_name", "schema_name", "host_name"):
            werte = {"db_name": self._sitzung.datenbank, "user_name": "dbo", "schema_name": "dbo", "host_name": ""}
            return _literal(werte.get(name, self._sitzung.benutzer)), ende
        if name == "db_id":
            return "5", ende
        if name == "object_id" and texte:
            return _literal(self._objekt(texte[0])), ende
        if name == "col_length" and len(texte) == 2:
            return _literal(self._spaltenlaenge(*texte)), ende
        if name == "serverproperty" and texte:
            return _literal(_EIGENSCHAFTEN.get(texte[0].lower())), ende
        if name == "connectionproperty" and texte:
            return _literal({"net_transport": "TCP", "auth_scheme": "SQL"}.get(texte[0].lower())), ende
        if name in ("has_perms_by_name", "is_srvrolemember", "is_member"):
            return "1", ende
        return None

    def _objekt(self, name: str) -> int | None:
        tabelle = _ohne_schema(name)
        da = any(t.lower() == tabelle for t in self._arbeit.tabellen())
        return objektnummer(tabelle) if da else None

    def _spaltenlaenge(self, tabelle: str, spalte: str) -> int | None:
        for name, spalten in self._arbeit.tabellen().items():
            for s in spalten:
                if name.lower() == _ohne_schema(tabelle) and s.name.lower() == spalte.strip("[]\"").lower():
                    return _breite(s)
        return None

    def _sicht(self, schema: str, i: int) -> tuple[str, int] | None:
        if i + 2 >= len(self._stuecke):
            return None
        name = f"{schema}.{blosser_name(self._stuecke[i + 2]).lower()}"
        zeilen = self._zeilen(name)
        return None if zeilen is None else (_als_tabelle(zeilen), i + 2)

    def _zeilen(self, name: str) -> list[dict[str, str | int | None]] | None:
        """The rows of a system view; None for one that is not known. The first is the model and is left out."""
        if name == "sys.dm_exec_connections":
            muster: dict[str, str | int | None] = {"session_id": 0, "net_transport": "", "encrypt_option": "",
                                                   "auth_scheme": ""}  # fmt: skip
            verschluesselt = "TRUE" if self._sitzung.verschluesselt else "FALSE"
            return [muster, {"session_id": self._sitzung.nummer, "net_transport": "TCP",
                             "encrypt_option": verschluesselt, "auth_scheme": "SQL"}]  # fmt: skip
        if name == "sys.indexes":
            muster = {"object_id": 0, "name": "", "index_id": 0}
            return [muster] + [{"object_id": objektnummer(t), "name": n, "index_id": nr}
                               for nr, (t, n) in enumerate(self._arbeit.indexe(), 2)]  # fmt: skip
        if name in ("sys.tables", "sys.objects"):
            muster = {"object_id": 0, "name": "", "schema_id": 0, "type": ""}
            return [muster] + [{"object_id": objektnummer(t), "name": t, "schema_id": 1, "type": "U "}
                               for t in self._arbeit.tabellen()]  # fmt: skip
        if name == "information_schema.tables":
            muster = {"TABLE_CATALOG": "", "TABLE_SCHEMA": "", "TABLE_NAME": "", "TABLE_TYPE": ""}
            return [muster] + [{"TABLE_CATALOG": self._sitzung.datenbank, "TABLE_SCHEMA": "dbo", "TABLE_NAME": t,
                                "TABLE_TYPE": "BASE TABLE"} for t in self._arbeit.tabellen()]  # fmt: skip
        if name in ("information_schema.columns", "sys.columns"):
            bau = self._spaltenzeile if name.startswith("info") else _sys_spaltenzeile
            muster_spalte = Spalte("", Typ("nvarchar", 1))
            return [bau("", 0, muster_spalte)] + [bau(t, nr, s) for t, spalten in self._arbeit.tabellen().items()
                                                  for nr, s in enumerate(spalten, 1)]  # fmt: skip
        return None

    def _spaltenzeile(self, tabelle: str, nummer: int, s: Spalte) -> dict[str, str | int | None]:
        zahl = s.typ.name in GANZE_ZAHLEN or s.typ.name == "float"
        return {"TABLE_CATALOG": self._sitzung.datenbank, "TABLE_SCHEMA": "dbo", "TABLE_NAME": tabelle,
                "COLUMN_NAME": s.name, "ORDINAL_POSITION": nummer, "IS_NULLABLE": "YES" if s.nullbar else "NO",
                "DATA_TYPE": s.typ.name, "CHARACTER_MAXIMUM_LENGTH": None if zahl else s.typ.laenge or -1,
                "COLLATION_NAME": None if zahl else _EIGENSCHAFTEN["collation"]}  # fmt: skip


def _sys_spaltenzeile(tabelle: str, nummer: int, s: Spalte) -> dict[str, str | int | None]:
    typnummer = _SYSTEMTYPEN.get(s.typ.name, 231)
    return {"object_id": objektnummer(tabelle), "name": s.name, "column_id": nummer, "system_type_id": typnummer,
            "user_type_id": typnummer, "max_length": _breite(s), "is_nullable": int(s.nullbar),
            "is_identity": 0, "is_computed": 0, "default_object_id": objektnummer(tabelle + s.name) if s.vorgabe else 0}  # fmt: skip


def _breite(spalte: Spalte) -> int:
    """Bytes of a column as the server counts them, -1 for "max"."""
    typ = spalte.typ
    if typ.name in GANZE_ZAHLEN:
        return GANZE_ZAHLEN[typ.name]
    if typ.name == "float":
        return 8
    return -1 if typ.lang else typ.laenge * (2 if typ.name in ("nvarchar", "nchar") else 1)


def _ohne_schema(name: str) -> str:
    return name.split(".")[-1].strip('[]"').lower()


def _literal(wert: str | int | None) -> str:
    if wert is None:
        return "NULL"
    return str(wert) if isinstance(wert, int) else "'" + wert.replace("'", "''") + "'"


def _als_tabelle(zeilen: list[dict[str, str | int | None]]) -> str:
    """A select in brackets that gives the rows; the first only gives names and types."""
    teile = []
    for nummer, zeile in enumerate(zeilen):
        werte = ", ".join(f"{_literal(w)} AS {n}" if nummer == 0 else _literal(w) for n, w in zeile.items())
        teile.append(f"SELECT {werte}" + (" WHERE 1 = 0" if nummer == 0 else ""))
    return "(" + " UNION ALL ".join(teile) + ")"
