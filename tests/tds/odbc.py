"""Just enough of the ODBC interface, through ctypes, to try the server with a real driver."""

from __future__ import annotations

import ctypes
import ctypes.util
from dataclasses import dataclass

SUCCESS, SUCCESS_WITH_INFO, NO_DATA, NEED_DATA = 0, 1, 100, 99
ENV, DBC, STMT = 1, 2, 3
W_CHAR = -8
NTS = -3
NULL_DATA = -1
NO_TOTAL = -4
STUECK = 400  # bytes of one piece of a long value


class Odbcfehler(Exception):
    """All records of a failed call: SQLSTATE, number, words."""

    def __init__(self, saetze: list[tuple[str, int, str]]) -> None:
        super().__init__("; ".join(f"{s} {n} {t}" for s, n, t in saetze))
        self.saetze = saetze


@dataclass
class Resultat:
    """One result of a batch; `typen` are SQL type and size of each column."""

    namen: list[str]
    typen: list[tuple[int, int]]
    zeilen: list[list[str | None]]
    anzahl: int


def lade() -> ctypes.CDLL | None:
    """unixODBC's driver manager, None where it is not installed."""
    try:
        return ctypes.CDLL("libodbc.so.2")
    except OSError:
        return None


def _weit(text: str) -> ctypes.Array[ctypes.c_char]:
    return ctypes.create_string_buffer(text.encode("utf-16-le", "surrogatepass") + b"\0\0")


class Verbindung:
    """One connection; a failure is an Odbcfehler."""

    def __init__(self, zeichenfolge: str, anmeldegrenze: int = 0, autocommit: bool = True) -> None:
        lib = lade()
        assert lib is not None
        self._lib = lib
        self.hinweise: list[tuple[str, int, str]] = []
        self._umgebung = self._griff(ENV, None)
        self._pruefe(lib.SQLSetEnvAttr(self._umgebung, 200, ctypes.c_void_p(3), 0), ENV, self._umgebung)
        self._dbc = self._griff(DBC, self._umgebung)
        if anmeldegrenze:
            lib.SQLSetConnectAttrW(self._dbc, 103, ctypes.c_void_p(anmeldegrenze), 0)
        text = _weit(zeichenfolge)
        ergebnis = lib.SQLDriverConnectW(self._dbc, None, text, ctypes.c_short(NTS), None, ctypes.c_short(0), None, 0)
        self._pruefe(ergebnis, DBC, self._dbc)
        if not autocommit:
            self._pruefe(lib.SQLSetConnectAttrW(self._dbc, 102, ctypes.c_void_p(0), 0), DBC, self._dbc)

    def fuehre_aus(self, text: str, zeitgrenze: int = 0, zeigerart: int = 0) -> list[Resultat]:
        """All results of a batch. `zeigerart`: 0 forward only, 3 static. `hinweise` gets the messages."""
        stmt = self._griff(STMT, self._dbc)
        self.hinweise = []
        try:
            if zeigerart:
                self._pruefe(self._lib.SQLSetStmtAttrW(stmt, 6, ctypes.c_void_p(zeigerart), 0), STMT, stmt)
            if zeitgrenze:
                self._pruefe(self._lib.SQLSetStmtAttrW(stmt, 0, ctypes.c_void_p(zeitgrenze), 0), STMT, stmt)
            ergebnis = self._lib.SQLExecDirectW(stmt, _weit(text), NTS)
            resultate = []
            while ergebnis != NO_DATA:
                self._pruefe(ergebnis, STMT, stmt)
                resultate.append(self._lies(stmt))
                ergebnis = self._lib.SQLMoreResults(stmt)
            return resultate
        finally:
            self._lib.SQLFreeHandle(STMT, stmt)

    def mit_parametern(self, text: str, werte: list[str], vorbereitet: bool = True) -> list[Resultat]:
        """Runs a text with a text for each question mark, prepared or at once."""
        stmt = self._griff(STMT, self._dbc)
        try:
            if vorbereitet:
                self._pruefe(self._lib.SQLPrepareW(stmt, _weit(text), NTS), STMT, stmt)
            puffer = [_weit(w) for w in werte]
            laengen = [ctypes.c_ssize_t(NTS) for _ in werte]
            for i, (p, laenge) in enumerate(zip(puffer, laengen), 1):
                self._pruefe(self._lib.SQLBindParameter(
                    stmt, ctypes.c_ushort(i), 1, W_CHAR, -9, ctypes.c_size_t(50), 0, p, ctypes.c_ssize_t(len(p)),
                    ctypes.byref(laenge)), STMT, stmt)  # fmt: skip
            lauf = self._lib.SQLExecute(stmt) if vorbereitet else self._lib.SQLExecDirectW(stmt, _weit(text), NTS)
            self._pruefe(lauf, STMT, stmt)
            return [self._lies(stmt)]
        finally:
            self._lib.SQLFreeHandle(STMT, stmt)

    def beende_transaktion(self, abschluss: bool) -> None:
        self._pruefe(self._lib.SQLEndTran(DBC, self._dbc, 0 if abschluss else 1), DBC, self._dbc)

    def schliesse(self) -> None:
        self._lib.SQLDisconnect(self._dbc)
        self._lib.SQLFreeHandle(DBC, self._dbc)
        self._lib.SQLFreeHandle(ENV, self._umgebung)

    def _griff(self, art: int, eltern: ctypes.c_void_p | None) -> ctypes.c_void_p:
        griff = ctypes.c_void_p()
        ergebnis = self._lib.SQLAllocHandle(art, eltern, ctypes.byref(griff))
        if ergebnis not in (SUCCESS, SUCCESS_WITH_INFO):
            raise Odbcfehler([("HY000", 0, "SQLAllocHandle")])
        return griff

    def _pruefe(self, ergebnis: int, art: int, griff: ctypes.c_void_p) -> None:
        if ctypes.c_short(ergebnis).value == SUCCESS:
            return
        saetze = self._saetze(art, griff)
        if ctypes.c_short(ergebnis).value not in (SUCCESS_WITH_INFO, NO_DATA):
            raise Odbcfehler(saetze)
        self.hinweise += saetze

    def _saetze(self, art: int, griff: ctypes.c_void_p) -> list[tuple[str, int, str]]:
        saetze = []
        for nummer in range(1, 20):
            zustand, text = ctypes.create_string_buffer(12), ctypes.create_string_buffer(4096)
            nativ, laenge = ctypes.c_int(), ctypes.c_short()
            if self._lib.SQLGetDiagRecW(art, griff, nummer, zustand, ctypes.byref(nativ), text, 2048,
                                        ctypes.byref(laenge)) not in (SUCCESS, SUCCESS_WITH_INFO):  # fmt: skip
                break
            worte = text.raw[: 2 * laenge.value].decode("utf-16-le", "surrogatepass")
            saetze.append((zustand.raw[:10].decode("utf-16-le"), nativ.value, worte))
        return saetze

    def _lies(self, stmt: ctypes.c_void_p) -> Resultat:
        spalten, anzahl = ctypes.c_short(), ctypes.c_ssize_t()
        self._pruefe(self._lib.SQLNumResultCols(stmt, ctypes.byref(spalten)), STMT, stmt)
        self._pruefe(self._lib.SQLRowCount(stmt, ctypes.byref(anzahl)), STMT, stmt)
        resultat = Resultat([], [], [], anzahl.value)
        for i in range(1, spalten.value + 1):
            name, typ, groesse = ctypes.create_string_buffer(512), ctypes.c_short(), ctypes.c_size_t()
            laenge = ctypes.c_short()
            self._pruefe(self._lib.SQLDescribeColW(stmt, i, name, 256, ctypes.byref(laenge), ctypes.byref(typ),
                                                   ctypes.byref(groesse), None, None), STMT, stmt)  # fmt: skip
            resultat.namen.append(name.raw[: 2 * laenge.value].decode("utf-16-le"))
            resultat.typen.append((typ.value, groesse.value))
        while spalten.value:
            ergebnis = ctypes.c_short(self._lib.SQLFetch(stmt)).value
            if ergebnis == NO_DATA:
                break
            self._pruefe(ergebnis, STMT, stmt)
            resultat.zeilen.append([self._wert(stmt, i) for i in range(1, spalten.value + 1)])
        return resultat

    def _wert(self, stmt: ctypes.c_void_p, spalte: int) -> str | None:
        """One value as text, fetched in pieces."""
        stuecke = b""
        while True:
            puffer, laenge = ctypes.create_string_buffer(STUECK + 2), ctypes.c_ssize_t()
            ergebnis = ctypes.c_short(self._lib.SQLGetData(stmt, spalte, W_CHAR, puffer, ctypes.c_ssize_t(STUECK + 2),
                                                           ctypes.byref(laenge))).value  # fmt: skip
            if ergebnis == NO_DATA:
                break
            if ergebnis not in (SUCCESS, SUCCESS_WITH_INFO):
                raise Odbcfehler(self._saetze(STMT, stmt))
            if laenge.value == NULL_DATA:
                return None
            ganz = laenge.value != NO_TOTAL and laenge.value <= STUECK
            stuecke += puffer.raw[: laenge.value if ganz else STUECK]
            if ergebnis == SUCCESS:
                break
        return stuecke.decode("utf-16-le", "surrogatepass")
