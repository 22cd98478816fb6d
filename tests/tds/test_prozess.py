"""The server's process, its named instance, and the tools of FreeTDS and unixODBC on it."""

from __future__ import annotations

import os
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import probe  # noqa: E402
from odbc import Verbindung  # noqa: E402
from probe import Probe  # noqa: E402
from test_tds import Fall  # noqa: E402


class WerkzeugeTest(Fall):
    def test_tsql(self) -> None:
        if shutil.which("tsql") is None:
            self.skipTest("tsql fehlt (freetds-bin)")
        befehl = ["tsql", "-H", "127.0.0.1", "-p", str(self.server.port), "-U", probe.BENUTZER, "-P", probe.KENNWORT]
        eingabe = "print 'hallo'\nselect 'ä' as a, 7 as b\ngo\nselect x from nix\ngo\n"
        umgebung = {**os.environ, "TDSVER": "7.4", "LC_ALL": "C.UTF-8"}
        ausgabe = subprocess.run(befehl, input=eingabe, text=True, capture_output=True, timeout=60, env=umgebung)
        self.assertIn("ä\t7", ausgabe.stdout)
        self.assertIn("hallo", ausgabe.stderr)
        self.assertIn("Msg 208", ausgabe.stderr)

    def test_isql(self) -> None:
        if shutil.which("isql") is None:
            self.skipTest("isql fehlt (unixodbc)")
        # isql passes the connect string on in 8-bit characters, so this server has a plain password.
        server = Probe("--kennwort", "Geheim-1")
        self.addCleanup(server.schliesse)
        befehl = ["isql", "-v", "-k", server.zeichenfolge("Geheim-1"), "-b", "-x0x7c"]
        eingabe = "select 'abc' as a, 7 as b\n"
        ausgabe = subprocess.run(befehl, input=eingabe, text=True, capture_output=True, timeout=60)
        self.assertIn("abc|7", ausgabe.stdout, ausgabe.stderr)


class InstanzTest(Fall):
    schalter = ("--instanz", "ZUNFT")

    def test_benannte_instanz_wird_gefunden(self) -> None:
        zeichenfolge = self.server.zeichenfolge().replace("Server=127.0.0.1", "Server=127.0.0.1\\Zunft")
        verbindung = Verbindung(zeichenfolge.replace(f"Port={self.server.port};", ""))
        self.addCleanup(verbindung.schliesse)
        self.assertEqual([["1"]], verbindung.fuehre_aus("select 1 as a")[0].zeilen)


class LeereDatenbankTest(Fall):
    schalter = ("--ohne-tabellen",)

    def test_skripte_des_servers_legen_alles_an_und_laufen_zweimal(self) -> None:
        verbindung = self.verbinde()
        ordner = Path(__file__).resolve().parents[2] / "sql" / "mssql"
        skripte = sorted(s for s in ordner.glob("*.sql") if s.name != "Bild_Vorgaenge_Beispiel.sql")
        texte = [t for s in skripte for t in s.read_text(encoding="utf-8").split("\nGO\n") if t.strip()]
        for text in texte * 2:
            verbindung.fuehre_aus(text)
        self.assertEqual(texte * 2, self.server.protokoll())
        tabellen = self.zeilen(verbindung, "select TABLE_NAME, count(*) from INFORMATION_SCHEMA.COLUMNS "
                                           "group by TABLE_NAME order by TABLE_NAME")  # fmt: skip
        self.assertEqual([["BelegKopfZunft", "4"], ["Bild_Vorgaenge", "7"], ["Bild_Zuordnungen", "14"]], tabellen)
        indexe = self.zeilen(verbindung, "select name from sys.indexes order by name")
        self.assertEqual(["BelegKopfZunft_Beleg", "Bild_Zuordnungen_Datei"], [i[0] for i in indexe][:2])
        self.assertEqual(4, len(indexe))
        satz = self.fehler(verbindung.fuehre_aus, f"insert into Bild_Zuordnungen (key4) values ('{'x' * 51}')")[0]
        self.assertEqual(("22001", 8152), satz[:2])

    def test_eine_spalte_kommt_hinzu_und_die_auskunft_nennt_laenge_pflicht_und_sortierung(self) -> None:
        verbindung = self.verbinde()
        self.addCleanup(self.server.sql, "drop table Alte")
        verbindung.fuehre_aus("create table dbo.Alte (Key1 nvarchar(30) NOT NULL)")
        verbindung.fuehre_aus("insert into Alte (Key1) values ('a')")
        for anweisung in ("alter table dbo.Alte add SortIndex smallint NULL",
                          "alter table Alte add Typ1 nvarchar(20) NULL"):  # fmt: skip
            verbindung.fuehre_aus(anweisung)
        spalten = self.zeilen(verbindung, "select COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE, "
                                          "COLLATION_NAME from INFORMATION_SCHEMA.COLUMNS "
                                          "where TABLE_NAME = 'Alte' order by ORDINAL_POSITION")  # fmt: skip
        sortierung = "Latin1_General_CI_AS"
        self.assertEqual([["Key1", "nvarchar", "30", "NO", sortierung], ["SortIndex", "smallint", None, "YES", None],
                          ["Typ1", "nvarchar", "20", "YES", sortierung]], spalten)  # fmt: skip
        self.assertEqual([["a", None, None]], self.zeilen(verbindung, "select * from Alte"))
        satz = self.fehler(verbindung.fuehre_aus, "update Alte set SortIndex = 40000")[0]
        self.assertEqual(220, satz[1])
        satz = self.fehler(verbindung.fuehre_aus, f"update Alte set Typ1 = '{'x' * 21}'")[0]
        self.assertEqual(8152, satz[1])


class H2LeereDatenbankTest(LeereDatenbankTest):
    maschine = "h2"


class ProzessTest(unittest.TestCase):
    """The process itself; needs no driver."""

    def test_ende_der_eingabe_und_signal_beenden_ihn(self) -> None:
        self.assertEqual(0, Probe().schliesse())
        server = Probe()
        server.prozess.terminate()
        self.assertEqual(0, server.prozess.wait(timeout=20))
        server.schliesse()

    def test_datei_bleibt_und_neue_tabelle_hat_die_grenzen_des_servers(self) -> None:
        with tempfile.TemporaryDirectory() as ordner:
            server = Probe("--datei", f"{ordner}/x.db", "--ohne-tabellen")
            server.sql("create table dbo.T (a nvarchar(3) NULL, s smallint)")
            server.sql("insert into T values ('äb', 7)")
            self.assertIn("8152", server.frage("sql insert into T values ('abcd', 1)"))
            self.assertIn("220", server.frage("sql insert into T values ('abc', 40000)"))
            server.schliesse()
            server = Probe("--datei", f"{ordner}/x.db")
            self.assertEqual([["äb", 7]], server.sql("select * from dbo.T where a = N'ÄB '"))
            server.schliesse()

    def test_unsinn_auf_der_leitung_beendet_nur_diese(self) -> None:
        server = Probe()
        self.addCleanup(server.schliesse)
        zu_kurz = b"\x10\1" + struct.pack(">H", 20) + bytes(16)
        for roh in (b"GET / HTTP/1.0\r\n\r\n", b"\x12\1\0\x09\0\0\0\0\xff", zu_kurz):
            with socket.create_connection(("127.0.0.1", server.port), timeout=20) as buchse:
                buchse.sendall(roh)
                buchse.shutdown(socket.SHUT_WR)
                while buchse.recv(4096):
                    pass
        self.assertEqual([[1]], server.sql("select 1"))


if __name__ == "__main__":
    unittest.main()
