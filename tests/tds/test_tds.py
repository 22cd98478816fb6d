"""The server as FreeTDS sees it, through unixODBC and through tsql and isql, once for each database behind it."""

from __future__ import annotations

import json
import sys
import threading
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import odbc  # noqa: E402
import probe  # noqa: E402
from odbc import Odbcfehler, Verbindung  # noqa: E402
from probe import Probe  # noqa: E402
from tdsserver import maschine_h2  # noqa: E402

EINFUEGEN = "insert into Bild_Zuordnungen (Key1, Beschreibung, Druckkennzeichen, SortIndex) Values "
KUNDEN = ("SELECT TOP 100 PERCENT dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2 FROM dbo.Bild_Zuordnungen LEFT "
          "OUTER JOIN dbo.BelegKopfZunft ON dbo.Bild_Zuordnungen.Key1 = dbo.BelegKopfZunft.Belegart WHERE "
          "(dbo.Bild_Zuordnungen.Typ1 = 'Mon' OR dbo.Bild_Zuordnungen.Typ1 = 'Bel') GROUP BY dbo.Bild_Zuordnungen.Key1, "
          "dbo.Bild_Zuordnungen.Key2 ORDER BY dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2")  # fmt: skip


class Fall(unittest.TestCase):
    """One server for a class; each test begins with empty tables and without orders."""

    maschine = "sqlite"
    schalter: tuple[str, ...] = ()
    server: Probe

    @classmethod
    def setUpClass(cls) -> None:
        if cls.maschine == "h2" and (grund := maschine_h2.fehlt()):
            raise unittest.SkipTest(grund)
        if grund := probe.ohne_treiber():
            raise unittest.SkipTest(grund)
        cls.server = Probe("--maschine", cls.maschine, *cls.schalter)
        cls.addClassCleanup(cls.server.schliesse)

    def setUp(self) -> None:
        self.server.steuere("leere")

    def verbinde(self, autocommit: bool = True, anmeldegrenze: int = 0, **weiteres: str) -> Verbindung:
        verbindung = Verbindung(self.server.zeichenfolge(**weiteres), anmeldegrenze, autocommit)
        self.addCleanup(verbindung.schliesse)
        return verbindung

    def zeilen(self, verbindung: Verbindung, text: str) -> list[list[str | None]]:
        """The rows of the last result."""
        return verbindung.fuehre_aus(text)[-1].zeilen

    def fehler(self, tue: object, *werte: object, **benannt: object) -> list[tuple[str, int, str]]:
        assert callable(tue)
        with self.assertRaises(Odbcfehler) as gefangen:
            tue(*werte, **benannt)
        return gefangen.exception.saetze


class AnweisungenTest(Fall):
    def test_text_kommt_zeichen_fuer_zeichen_an(self) -> None:
        texte = ["Select * from Bild_Zuordnungen  where Key1 = 'A'order by SortIndex ",
                 "Select Top 1 Key1 from Bild_Zuordnungen where Key1 = 'ä😀\\?{ts ''x''}'", KUNDEN,
                 "\tDelete from Bild_Zuordnungen \r\n where Key1 = '" + "x" * 9000 + "'"]  # fmt: skip
        verbindung = self.verbinde()
        for text in texte:
            verbindung.fuehre_aus(text)
        self.assertEqual(texte, self.server.protokoll())
        self.assertEqual([], self.server.protokoll("aufruf"))

    def test_eine_anweisung_ist_ein_hin_und_her(self) -> None:
        verbindung = self.verbinde()
        vorher = self.server.pakete()["nachrichten"]
        verbindung.fuehre_aus("Select Key1 from Bild_Zuordnungen")
        self.assertEqual(vorher + 1, self.server.pakete()["nachrichten"])

    def test_werte_und_typen_aller_spalten(self) -> None:
        verbindung = self.verbinde()
        text = EINFUEGEN + "('ä😀\\?{''', '', 'X', -32768), ('b', NULL, NULL, NULL)"
        self.assertEqual(2, verbindung.fuehre_aus(text)[0].anzahl)
        ergebnis = verbindung.fuehre_aus("Select * from Bild_Zuordnungen order by SortIndex desc")[0]
        namen = ("Key1 Key2 Key3 key4 Bildname BildExt Typ1 Typ2 BildPfad Beschreibung Druckkennzeichen Grafik_Ursprung "
                 "GrafikAnbNr SortIndex")  # fmt: skip
        self.assertEqual(namen.split(), ergebnis.namen)
        self.assertEqual([(-9, 50)] * 5 + [(-9, 200)] * 3 + [(-9, 250)] * 2 + [(1, 50)] + [(-9, 250)] * 2 + [(5, 5)],
                         ergebnis.typen)  # fmt: skip
        werte = {zeile[0]: (zeile[9], zeile[10], zeile[13]) for zeile in ergebnis.zeilen}
        self.assertEqual({"ä😀\\?{'": ("", "X".ljust(50), "-32768"), "b": (None, None, None)}, werte)
        self.assertEqual([], verbindung.fuehre_aus("Select * from BelegKopfZunft")[0].zeilen)

    def test_langer_wert_kommt_in_stuecken_und_ganz(self) -> None:
        wert = self.verbinde().fuehre_aus("select replicate(N'ä😀b', 20000) as lang")[0].zeilen[0][0]
        self.assertEqual("ä😀b" * 20000, wert)

    def test_ohne_zahlen_wird_trotzdem_geschrieben(self) -> None:
        verbindung = self.verbinde()
        text = "set nocount on " + EINFUEGEN + "('a', '', '', 1) select count(*) as n from Bild_Zuordnungen"
        ergebnisse = verbindung.fuehre_aus(text)
        self.assertEqual([["1"]], ergebnisse[-1].zeilen)
        self.assertNotIn(1, [e.anzahl for e in ergebnisse])

    def test_leeres_ergebnis_hat_seine_spalten(self) -> None:
        ergebnis = self.verbinde().fuehre_aus("Select Top 1 Key1 from Bild_Zuordnungen ")[0]
        self.assertEqual((["Key1"], [(-9, 50)], []), (ergebnis.namen, ergebnis.typen, ergebnis.zeilen))

    def test_nachrichten_und_zahlen_vor_dem_ergebnis(self) -> None:
        verbindung = self.verbinde()
        ergebnisse = verbindung.fuehre_aus("print 'hallo' " + EINFUEGEN + "('a', '', '', 1) select 7 as sieben")
        self.assertEqual([1, ["sieben"]], [ergebnisse[1].anzahl, ergebnisse[2].namen])
        self.assertEqual([["7"]], ergebnisse[2].zeilen)
        self.assertIn("hallo", verbindung.hinweise[0][2])

    def test_fehler_tragen_nummer_zustand_und_worte(self) -> None:
        verbindung = self.verbinde()
        faelle = {"select x from Bild_Zuordnungen": ("42S22", 207), "select * from nix": ("42S02", 208),
                  "selct": ("42000", 102), "select 'Bob's'": ("42000", 105), "exec sp_nix": ("42000", 2812),
                  "commit": ("25000", 3902), "raiserror('bumm', 16, 3)": ("42000", 50000),
                  EINFUEGEN + "('" + "x" * 51 + "', '', '', 0)": ("22001", 8152)}  # fmt: skip
        for text, erwartet in faelle.items():
            satz = self.fehler(verbindung.fuehre_aus, text)[0]
            self.assertEqual(erwartet, satz[:2], text)
            self.assertTrue(satz[2])
        self.assertEqual(220, self.fehler(verbindung.fuehre_aus, EINFUEGEN + "('x', '', '', 32768)")[0][1])
        saetze = self.fehler(verbindung.fuehre_aus, EINFUEGEN + f"('{'x' * 51}', '', '', 0)")
        self.assertEqual([8152, 3621], [satz[1] for satz in saetze])
        self.assertEqual([[0]], self.server.sql("select count(*) from Bild_Zuordnungen"))

    def test_stapel_mit_unlesbarem_teil_laeuft_gar_nicht(self) -> None:
        verbindung = self.verbinde()
        self.fehler(verbindung.fuehre_aus, EINFUEGEN + "('a', '', '', 1); select from where")
        self.assertEqual([[0]], self.server.sql("select count(*) from Bild_Zuordnungen"))

    def test_vergleich_unterscheidet_gross_und_klein_nicht(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus(EINFUEGEN + "('Ärger', '', '', 1)")
        zeilen = self.zeilen(verbindung, "select Key1 from Bild_Zuordnungen where Key1 = 'äRGER'")
        self.assertEqual([["Ärger"]], zeilen)

    def test_anweisungstexte_des_systems(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus("insert into Bild_Zuordnungen (Key1, Key2, Typ1, SortIndex) Values ('RE', '1', 'Bel', 0)")
        self.assertEqual([["RE", "1"]], verbindung.fuehre_aus(KUNDEN)[0].zeilen)
        text = "UPDATE Bild_Zuordnungen SET Key1 = 'RE', SortIndex = 5 WHERE Key1 = 'RE'"
        self.assertEqual(1, verbindung.fuehre_aus(text)[0].anzahl)
        text = "Select SortIndex from Bild_Zuordnungen  where SortIndex = 5order by SortIndex"
        self.assertEqual([["5"]], self.zeilen(verbindung, text))
        self.assertEqual(1, verbindung.fuehre_aus("Delete from Bild_Zuordnungen  where Key1 = 'RE'")[0].anzahl)

    def test_zeiger_und_parameter(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus(EINFUEGEN + "('a', '', '', 1), ('b''ä', '', '', 2), ('c', '', '', 3)")
        ergebnis = verbindung.fuehre_aus("select Key1 from Bild_Zuordnungen order by SortIndex", zeigerart=3)[0]
        self.assertEqual((["Key1"], [["a"], ["b'ä"], ["c"]]), (ergebnis.namen, ergebnis.zeilen))
        frage = "select SortIndex from Bild_Zuordnungen where Key1 = ? and '?' <> '@P1'"
        for vorbereitet in (True, False):
            self.assertEqual([["2"]], verbindung.mit_parametern(frage, ["b'ä"], vorbereitet)[0].zeilen)
        aufruf = json.loads(self.server.steuere("protokoll"))[-1]
        self.assertEqual(("sp_executesql", frage, ["b'ä"]), (aufruf["name"], aufruf["anweisung"], aufruf["gebunden"]))

    def test_auskunft_ueber_server_und_tabellen(self) -> None:
        verbindung = self.verbinde()
        text = "select @@version as a, db_name() as b, object_id(N'dbo.Nix') as c, @@trancount as d"
        zeile = self.zeilen(verbindung, text)[0]
        self.assertTrue(zeile[0] and zeile[0].startswith("Microsoft SQL Server"))
        self.assertEqual(["bilder", None, "0"], zeile[1:])
        text = ("select COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH from INFORMATION_SCHEMA.COLUMNS "
                "where TABLE_NAME = 'Bild_Zuordnungen' order by ORDINAL_POSITION")  # fmt: skip
        zeilen = self.zeilen(verbindung, text)
        self.assertEqual(["Key1", "nvarchar", "50"], zeilen[0])
        self.assertEqual([["Druckkennzeichen", "char", "50"], ["SortIndex", "smallint", None]], zeilen[10:14:3])

    def test_skripte_des_servers_laufen_zweimal(self) -> None:
        verbindung = self.verbinde()
        ordner = Path(__file__).resolve().parents[2] / "sql" / "mssql"
        verbindung.fuehre_aus(EINFUEGEN + "('bleibt', '', '', 1)")
        for skript in sorted(s for s in ordner.glob("*.sql") if s.name != "Bild_Vorgaenge_Beispiel.sql"):
            for stapel in skript.read_text(encoding="utf-8").split("\nGO\n"):
                if stapel.strip():
                    verbindung.fuehre_aus(stapel)
        self.assertEqual([["bleibt"]], verbindung.fuehre_aus("select Key1 from Bild_Zuordnungen")[0].zeilen)


class TransaktionenTest(Fall):
    def anzahl(self) -> int:
        return int(self.server.sql("select count(*) from Bild_Zuordnungen")[0][0])

    def test_abschluss_und_ruecknahme(self) -> None:
        verbindung = self.verbinde(autocommit=False)
        for abschluss, danach in ((False, 0), (True, 1)):
            verbindung.fuehre_aus(EINFUEGEN + "('a', '', '', 1)")
            verbindung.beende_transaktion(abschluss)
            self.assertEqual(danach, self.anzahl())

    def test_als_text(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus("begin tran " + EINFUEGEN + "('a', '', '', 1)")
        self.assertEqual([["1"]], verbindung.fuehre_aus("select @@trancount as n")[0].zeilen)
        verbindung.fuehre_aus("rollback")
        self.assertEqual(0, self.anzahl())

    def test_ende_der_leitung_nimmt_zurueck(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus("begin tran " + EINFUEGEN + "('a', '', '', 1)")
        self.server.steuere("trenne-alle")
        while self.server.steuere("verbindungen") != "0":
            time.sleep(0.01)
        self.assertEqual(0, self.anzahl())

    def test_zwei_schreiben_abwechselnd_und_nichts_geht_verloren(self) -> None:
        fehler: list[BaseException] = []

        def schreibe(wer: str) -> None:
            try:
                verbindung = self.verbinde()
                for i in range(50):
                    verbindung.fuehre_aus(EINFUEGEN + f"('{wer}', '', '', {i})")
                    wo = f"where Key1 = '{wer}' and SortIndex = {i}"
                    verbindung.fuehre_aus(f"update Bild_Zuordnungen set Typ1 = '{wer}' {wo}")
            except BaseException as e:
                fehler.append(e)

        faeden = [threading.Thread(target=schreibe, args=(wer,)) for wer in ("eins", "zwei")]
        for faden in faeden:
            faden.start()
        for faden in faeden:
            faden.join()
        self.assertEqual([], fehler)
        zahlen = self.server.sql("select count(*) from Bild_Zuordnungen where Typ1 = Key1 group by Key1")
        self.assertEqual([[50], [50]], zahlen)


class AnmeldungTest(Fall):
    def test_falsches_kennwort_wird_verweigert(self) -> None:
        saetze = self.fehler(self.verbinde, kennwort="falsch")
        self.assertEqual(18456, saetze[0][1])
        self.assertNotIn("falsch", str(saetze) + str(self.server.steuere("protokoll")))

    def test_verweigert_auf_bestellung(self) -> None:
        self.server.steuere("anmeldung 1 verweigere")
        self.assertEqual(18456, self.fehler(self.verbinde)[0][1])
        self.verbinde()
        self.server.steuere("anmeldung * verweigere 4060 14 Cannot open database")
        self.assertIn((4060, "[FreeTDS][SQL Server]Cannot open database"), [s[1:] for s in self.fehler(self.verbinde)])

    def test_haengende_anmeldung_endet_an_der_grenze_des_clients(self) -> None:
        self.server.steuere("anmeldung 1 stumm")
        beginn = time.monotonic()
        self.assertEqual("HYT00", self.fehler(self.verbinde, anmeldegrenze=1)[0][0])
        self.assertLess(time.monotonic() - beginn, 10)

    def test_getrennte_anmeldung(self) -> None:
        self.server.steuere("anmeldung 1 trenne")
        self.fehler(self.verbinde)
        self.verbinde()

    def test_wer_verschluesselung_verlangt_kommt_nicht_herein(self) -> None:
        self.fehler(self.verbinde, Encryption="require")
        self.assertEqual([], self.server.protokoll("anmeldung"))

    def test_server_fort_und_wieder_da(self) -> None:
        verbindung = self.verbinde()
        self.server.steuere("halt")
        self.fehler(verbindung.fuehre_aus, "select 1 as a")
        self.fehler(self.verbinde)
        self.server.steuere("weiter")
        self.assertEqual([["1"]], self.verbinde().fuehre_aus("select 1 as a")[0].zeilen)


class EingriffeTest(Fall):
    def test_jeder_zweite_stapel_scheitert(self) -> None:
        verbindung = self.verbinde()
        self.server.steuere("fehler 2,4/insert 8152 16 Zu lang: ä")
        for i in range(5):
            if i % 2:
                self.assertEqual(("22001", 8152, "[FreeTDS][SQL Server]Zu lang: ä"),
                                 self.fehler(verbindung.fuehre_aus, EINFUEGEN + f"('{i}', '', '', {i})")[0])  # fmt: skip
            else:
                verbindung.fuehre_aus(EINFUEGEN + f"('{i}', '', '', {i})")
        self.assertEqual([["0"], ["2"], ["4"]], self.server.sql("select Key1 from Bild_Zuordnungen order by Key1"))
        self.assertEqual(5, len(self.server.protokoll()))

    def test_nachricht_und_langsamkeit(self) -> None:
        verbindung = self.verbinde()
        self.server.steuere("meldung 1 Die Sicherung läuft")
        self.server.steuere("langsam 1 0.3")
        beginn = time.monotonic()
        self.assertEqual([["1"]], verbindung.fuehre_aus("select 1 as a")[-1].zeilen)
        self.assertGreaterEqual(time.monotonic() - beginn, 0.3)
        self.assertIn("Die Sicherung läuft", verbindung.hinweise[0][2])

    def test_gemerkte_antwort_kommt_ohne_die_datenbank_noch_einmal(self) -> None:
        verbindung = self.verbinde()
        zaehle = "select count(*) as n from Bild_Zuordnungen"
        self.server.steuere("merke */select")
        for _ in range(2):
            self.assertEqual([["0"]], verbindung.fuehre_aus(zaehle)[0].zeilen)
            verbindung.fuehre_aus(EINFUEGEN + "('a', '', '', 0)")
        self.assertEqual([["2"]], self.verbinde().fuehre_aus(zaehle)[0].zeilen)
        self.server.steuere("heile")
        self.assertEqual([["2"]], verbindung.fuehre_aus(zaehle)[0].zeilen)

    def test_abbruch_laesst_die_verbindung_heil(self) -> None:
        verbindung = self.verbinde()
        self.server.steuere("stumm 1")
        for text in ("select 1 as a", "waitfor delay '0:1:00'"):
            self.assertEqual("HYT00", self.fehler(verbindung.fuehre_aus, text, zeitgrenze=1)[0][0])
        self.assertEqual([["2"]], verbindung.fuehre_aus("select 2 as a")[0].zeilen)
        self.assertEqual(2, len(self.server.protokoll("abbruch")))

    def test_trennung_an_jeder_stelle(self) -> None:
        self.server.sql(EINFUEGEN + ",".join(f"('a{i}', '', '', {i})" for i in range(100)))
        for ort in ("vor", "nach", "halb", "zeile:50"):
            verbindung = self.verbinde()
            self.server.steuere(f"trenne 1 {ort}")
            self.fehler(verbindung.fuehre_aus, "select * from Bild_Zuordnungen")
            self.fehler(verbindung.fuehre_aus, "select 1 as a")

    def test_trennung_vor_der_anweisung_laesst_sie_ungetan_und_danach_getan(self) -> None:
        for ort, danach in (("vor", 0), ("nach", 1)):
            verbindung = self.verbinde()
            self.server.steuere(f"trenne 1/insert {ort}")
            self.fehler(verbindung.fuehre_aus, EINFUEGEN + "('a', '', '', 0)")
            self.assertEqual([[danach]], self.server.sql("select count(*) from Bild_Zuordnungen"))

    def test_toedlicher_fehler_beendet_die_verbindung(self) -> None:
        verbindung = self.verbinde()
        self.server.steuere("fehler 1 4014 20 A fatal error occurred")
        self.assertEqual(4014, self.fehler(verbindung.fuehre_aus, "select 1 as a")[0][1])
        self.fehler(verbindung.fuehre_aus, "select 1 as a")

    def test_unverstandene_befehle_werden_gemeldet(self) -> None:
        for zeile in ("tanze", "fehler 1", "sql select * from nix"):
            self.assertTrue(self.server.frage(zeile).startswith("fehler: "), zeile)


class KleinePaketeTest(Fall):
    schalter = ("--paketgroesse", "512")

    def test_grosse_texte_und_ergebnisse_gehen_durch_kleine_pakete(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus(EINFUEGEN + ",".join(f"('{i}', '{'ä😀' * 80}', '', {i})" for i in range(200)))
        ergebnis = verbindung.fuehre_aus("select SortIndex, Beschreibung from Bild_Zuordnungen order by SortIndex")[0]
        self.assertEqual([[str(i), "ä😀" * 80] for i in range(200)], ergebnis.zeilen)
        pakete = self.server.pakete()
        self.assertGreater(pakete["ein"], 100)
        self.assertGreater(pakete["aus"], 100)


class H2AnweisungenTest(AnweisungenTest):
    maschine = "h2"


class BeispielsichtTest(Fall):
    """The worked example of a firm's view; only H2 has CONCAT, as the server has."""

    maschine = "h2"
    TABELLEN = ("BelegKopfZunft (Belegart, Belegnummer, Kundennummer, Projektnummer, Betreff, GeaendertAm)",
                "Kundenstamm (Kundennummer, Name1, Ort)", "Personal (PersonalNr, Nachname)",
                "Montageauftrag (Belegart, Belegnummer, MontageNr, Aufgabe, Monteur, GeplantFuer)",
                "Artikelstamm (Artikelnummer, Bezeichnung1, Bezeichnung2, Warengruppe, Gesperrt, GeaendertAm)",
                "Anlagen (Kundennummer, Gewerk, LfdNr, Bezeichnung, Standort, LetzteWartung)")  # fmt: skip
    ZEILEN = ("BelegKopfZunft values (N'AB', N'24-1', N'7', N'P1', N'', N'2024-05-01')",
              "BelegKopfZunft values (N'AB', NULL, N'7', NULL, NULL, NULL)",
              "Kundenstamm values (N'7', N'Öztürk', N'Ulm')", "Personal values (N'3', N'Maier')",
              "Montageauftrag values (N'AB', N'24-1', N'2', N'Kessel', N'3', NULL)",
              "Artikelstamm values (N'WP', N'Pumpe', N'rot', N'Heizung', N'0', NULL)",
              "Artikelstamm values (N'XX', N'gesperrt', N'', N'', N'1', NULL)",
              "Anlagen values (N'7', N'Solar', N'1', N'Kollektor', N'Dach', NULL)")  # fmt: skip

    def test_sie_gibt_die_sieben_spalten(self) -> None:
        verbindung = self.verbinde()
        verbindung.fuehre_aus("drop table BelegKopfZunft")
        for tabelle in self.TABELLEN:
            verbindung.fuehre_aus("create table " + tabelle.replace(",", " nvarchar(50),").replace(")", " nvarchar(50))"))
        for zeile in self.ZEILEN:
            verbindung.fuehre_aus("insert into " + zeile)
        skript = Path(__file__).resolve().parents[2] / "sql" / "mssql" / "Bild_Vorgaenge_Beispiel.sql"
        verbindung.fuehre_aus(skript.read_text(encoding="utf-8").split("\nGO\n")[1])
        text = "select Typ1, Key1, Key2, Key3, Bezeichnung, Ordner, Stand from Bild_Vorgaenge order by Typ1"
        self.assertEqual([["ANL", "7", "Solar", "1", "Kollektor · Öztürk, Dach", None, None],
                          ["ART", "WP", "", "", "Pumpe rot", "Artikel\\Heizung", None],
                          ["BEL", "AB", "24-1", "", "Öztürk, Ulm · Projekt P1", None, "2024-05-01"],
                          ["MON", "AB", "24-1", "2", "Kessel · Monteur Maier", None, None]],
                         self.zeilen(verbindung, text))  # fmt: skip


class H2TransaktionenTest(TransaktionenTest):
    maschine = "h2"


class H2EingriffeTest(EingriffeTest):
    maschine = "h2"


if __name__ == "__main__":
    unittest.main()
