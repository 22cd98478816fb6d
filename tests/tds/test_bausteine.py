"""The server's parts for themselves: frames, tokens, types, texts, orders. Needs nothing but Python."""

from __future__ import annotations

import random
import socket
import struct
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from tdsserver import anfragen, antworten, pakete, tls, typen  # noqa: E402
from tdsserver.anfragen import Parameter, Prozeduraufruf  # noqa: E402
from tdsserver.auftraege import Auftraege, Auftragsfehler, Eingriff  # noqa: E402
from tdsserver.antwortbau import Antwortbau  # noqa: E402
from tdsserver.auskunft import Sitzungswerte  # noqa: E402
from tdsserver.dialekt import sqlite_dialekt  # noqa: E402
from tdsserver.katalog import Katalog, zerlege_skript  # noqa: E402
from tdsserver.leser import Leser, entziffere, verschluessele  # noqa: E402
from tdsserver.maschine import Ergebnis  # noqa: E402
from tdsserver.maschine_sqlite import vergleiche_servertext  # noqa: E402
from tdsserver.prozeduren import Prozeduren, setze_ein  # noqa: E402
from tdsserver.protokoll import Protokoll  # noqa: E402
from tdsserver.stapel import Anweisungsende, Hinweis  # noqa: E402
from tdsserver.typen import Typ  # noqa: E402
from tdsserver.zerleger import offene_klammerung, zerlege, zerlege_stapel  # noqa: E402

SKRIPTE = Path(__file__).resolve().parents[2] / "sql"


def fertige(antwort: bytes) -> list[tuple[int, int, int]]:
    """Kind, state and count of each DONE of a response that holds nothing else but messages and empty results."""
    leser, ergebnis = Leser(antwort), []
    while not leser.am_ende:
        marke = leser.u8()
        if marke in (0xFD, 0xFE, 0xFF):
            zustand, _, anzahl = leser.u16(), leser.u16(), leser.u64()
            ergebnis.append((marke, zustand, anzahl))
        elif marke == 0x79:
            leser.u32()
        elif marke == 0xAC:
            leser.u16()
            leser.text(leser.u8())
            leser.bytes(1 + 4 + 2 + 2 + 5)
        else:
            leser.bytes(leser.u16())
    return ergebnis


class PaketeTest(unittest.TestCase):
    def test_nachricht_geht_in_pakete_der_vereinbarten_groesse_und_kommt_ganz_an(self) -> None:
        zufall = random.Random(7)
        for laenge in (0, 1, 503, 504, 505, 1008, 5000):
            inhalt = zufall.randbytes(laenge)
            stuecke = pakete.zerteile(pakete.STAPEL, inhalt, 512)
            self.assertEqual(max(1, -(-laenge // 504)), len(stuecke))
            self.assertEqual([0] * (len(stuecke) - 1) + [1], [s[1] for s in stuecke])
            self.assertTrue(all(struct.unpack(">H", s[2:4])[0] == len(s) <= 512 for s in stuecke))
            links, rechts = socket.socketpair()
            with links, rechts:
                links.sendall(b"".join(stuecke))
                self.assertEqual((pakete.STAPEL, inhalt), pakete.Paketleitung(rechts).lies_nachricht())

    def test_abbruch_mitten_im_senden_verwirft_den_anfang(self) -> None:
        links, rechts = socket.socketpair()
        with links, rechts:
            anfang = pakete.zerteile(pakete.STAPEL, b"x" * 1000, 512)[0]
            links.sendall(anfang + pakete.zerteile(pakete.ABBRUCH, b"", 512)[0])
            self.assertEqual((pakete.ABBRUCH, b""), pakete.Paketleitung(rechts).lies_nachricht())

    def test_ende_der_leitung_und_unsinn_werden_gemeldet(self) -> None:
        for roh, fehler in ((b"\1\1\0", pakete.Verbindungsende), (b"\1\1\0\3\0\0\0\0", pakete.Protokollfehler)):
            links, rechts = socket.socketpair()
            with rechts:
                links.sendall(roh)
                links.close()
                self.assertRaises(fehler, pakete.Paketleitung(rechts).lies_nachricht)


class TlsTest(unittest.TestCase):
    def test_die_absprache_ist_die_des_protokolls(self) -> None:
        wuensche = (tls.MOEGLICH, tls.AN, tls.NICHT_UNTERSTUETZT)
        self.assertEqual([(tls.NICHT_UNTERSTUETZT, tls.Umfang.NICHTS)] * 3,
                         [(a.antwort, a.umfang) for a in map(tls.Tlswahl().verabrede, wuensche)])  # fmt: skip
        self.assertEqual(tls.Umfang.ABBRUCH, tls.Tlswahl().verabrede(77).umfang)

    def test_ohne_zertifikat_und_mit_unbekannter_stufe_wird_nichts_verschluesselt(self) -> None:
        wahl = tls.Tlswahl()
        self.assertRaises(ValueError, wahl.setze, "immer")
        self.assertRaises(ValueError, wahl.setze, "vielleicht")
        self.assertEqual(tls.Umfang.NICHTS, wahl.verabrede(tls.AN).umfang)


class AnfragenTest(unittest.TestCase):
    def test_kennwort_wird_entwirrt(self) -> None:
        roh = verschluessele("Kenn}wort;ä€😀")
        self.assertEqual(roh, anfragen.entwirre_kennwort(anfragen.verwirre_kennwort(roh)))
        self.assertEqual(bytes([0xB3, 0xA5]), anfragen.verwirre_kennwort(verschluessele("a")))

    def test_voranmeldung_hin_und_her(self) -> None:
        felder = anfragen.lies_voranmeldung(anfragen.antwort_auf_voranmeldung())
        self.assertEqual(bytes([tls.NICHT_UNTERSTUETZT]), felder["verschluesselung"])
        self.assertEqual(6, len(felder["version"]))
        self.assertRaises(pakete.Protokollfehler, anfragen.lies_voranmeldung, b"\0\0\1\0\5")

    def test_anmeldung_wird_gelesen_und_zeigt_ihr_kennwort_nicht(self) -> None:
        texte = ["pc", "wer", "", "prog", "srv", "", "lib", "", "bilder"]
        stelle, tafel, daten = 94, b"", b""
        for i, text in enumerate(texte):
            roh = anfragen.verwirre_kennwort(verschluessele("geheim")) if i == 2 else verschluessele(text)
            tafel += struct.pack("<HH", stelle + len(daten), len(roh) // 2)
            daten += roh
        kopf = struct.pack("<III", stelle + len(daten), anfragen.VERSION_74, 8000) + bytes(12) + b"\0\0" + bytes(10)
        anmeldung = anfragen.lies_anmeldung(kopf + tafel + bytes(stelle - len(kopf) - len(tafel)) + daten)
        self.assertEqual(("wer", "geheim", "bilder", 8000),
                         (anmeldung.benutzer, anmeldung.kennwort, anmeldung.datenbank, anmeldung.paketgroesse))  # fmt: skip
        self.assertNotIn("geheim", repr(anmeldung))

    def test_stapel_behaelt_einzelne_haelften_von_zeichenpaaren(self) -> None:
        text = "select '\ud83d', '😀', '\udc00'"
        roh = text.encode("utf-16-le", "surrogatepass")
        gelesen = anfragen.lies_stapel(struct.pack("<IIHQI", 22, 18, 2, 0, 1) + roh)
        self.assertEqual(roh, verschluessele(gelesen))

    def test_aufruf_mit_parametern_aller_art(self) -> None:
        def parameter(name: str, typ: bytes, wert: bytes, aus: int = 0) -> bytes:
            return bytes([len(name)]) + verschluessele(name) + bytes([aus]) + typ + wert

        lang = verschluessele("lang" * 100)
        roh = struct.pack("<IIHQIHHH", 22, 18, 2, 0, 1, 0xFFFF, 10, 0)
        roh += parameter("@s", b"\xe7\xff\xff" + bytes(5), struct.pack("<QI", len(lang), 300) + lang[:300]
                         + struct.pack("<I", len(lang) - 300) + lang[300:] + bytes(4))  # fmt: skip
        roh += parameter("", b"\x26\4", b"\4" + struct.pack("<i", -5), 1)
        roh += parameter("", b"\x26\4", b"\0")
        roh += parameter("", b"\x63" + bytes(9), struct.pack("<I", 4) + verschluessele("äb"))
        roh += parameter("", b"\xa7\x0a\0" + bytes(5), b"\1\0\xe4")
        roh += parameter("", b"\x6d\x08", b"\x08" + struct.pack("<d", 1.5))
        roh += parameter("", b"\x6c\x09\x05\x02", b"\x05\0" + struct.pack("<I", 1234))
        aufruf = anfragen.lies_aufruf(roh)
        self.assertEqual("sp_executesql", aufruf.name)
        self.assertEqual(["lang" * 100, -5, None, "äb", "ä", 1.5, "-12.34"], [p.wert for p in aufruf.parameter])
        self.assertEqual([False, True], [p.ausgabe for p in aufruf.parameter][:2])


class AntwortenTest(unittest.TestCase):
    def test_meldung_unterscheidet_fehler_und_hinweis(self) -> None:
        for klasse, marke in ((0, 0xAB), (10, 0xAB), (11, 0xAA), (16, 0xAA)):
            roh = antworten.meldung(8152, 13, klasse, "Zu lang: ä😀")
            leser = Leser(roh)
            self.assertEqual((marke, len(roh) - 3, 8152, 13, klasse),
                             (leser.u8(), leser.u16(), leser.u32(), leser.u8(), leser.u8()))  # fmt: skip
            self.assertEqual("Zu lang: ä😀", leser.text(leser.u16()))

    def test_nur_das_letzte_ende_ist_ohne_mehr(self) -> None:
        for prozedur in (False, True):
            bau = Antwortbau(Sitzungswerte(), prozedur=prozedur)
            for ereignis in (Ergebnis("INSERT", anzahl=3), Hinweis(0, "hallo"), Ergebnis("DELETE", anzahl=0),
                             Hinweis(207, "x", 16), Anweisungsende(gescheitert=True)):  # fmt: skip
                bau.nimm(ereignis)
            enden = fertige(bau.fertig(0, [(0, "@h", 7)] if prozedur else None))
            self.assertEqual([1] * (len(enden) - 1) + [0], [z & antworten.MEHR for _, z, _ in enden])
            self.assertEqual([(0x10, 3), (0x10, 0), (2, 0)], [(z & ~1, n) for _, z, n in enden[:3]])
            self.assertEqual([0xFF] * 3 + [0xFE] if prozedur else [0xFD] * 3, [m for m, _, _ in enden])

    def test_leerer_stapel_hat_ein_ende(self) -> None:
        self.assertEqual([(0xFD, 0, 0)], fertige(Antwortbau(Sitzungswerte()).fertig()))

    def test_antwort_bis_zur_mitte_einer_zeile_ist_ihr_anfang(self) -> None:
        bau = Antwortbau(Sitzungswerte())
        spalte = antworten.Spalte("a", Typ("nvarchar", 50))
        bau.nimm(Ergebnis("SELECT", [spalte], [["erste"], ["zweite"]], 2))
        stueck, ganz = bau.bis_mitte_der_zeile(2), bau.fertig()
        assert stueck is not None
        self.assertTrue(ganz.startswith(stueck))
        self.assertIn(verschluessele("erste"), stueck)
        self.assertNotIn(verschluessele("zweite"), stueck)
        self.assertIsNone(bau.bis_mitte_der_zeile(3))


class TypenTest(unittest.TestCase):
    def test_werte_gehen_hin_und_her(self) -> None:
        faelle: list[tuple[Typ, typen.Wert]] = [
            (Typ("smallint"), -32768), (Typ("smallint"), 32767), (Typ("int"), -1), (Typ("bigint"), 2**40),
            (Typ("int"), None),
            (Typ("float"), 1.25), (Typ("nvarchar", 50), "ä😀'\\?{"), (Typ("nvarchar", 50), ""),
            (Typ("nvarchar", 50), None),
            (Typ("nvarchar"), "x😀" * 5000), (Typ("nvarchar"), ""), (Typ("nvarchar"), None),
            (Typ("varbinary", 9), b"\0\xff"),
        ]  # fmt: skip
        for typ, wert in faelle:
            leser = Leser(typen.typangabe(typ) + typen.verpacke(typ, wert))
            self.assertEqual(wert, typen.lies_parameterwert(leser), typ)
            self.assertTrue(leser.am_ende, typ)

    def test_char_wird_aufgefuellt_und_verliert_was_die_codeseite_nicht_hat(self) -> None:
        self.assertEqual(b"\x04\0\xe4?  ", typen.verpacke(Typ("char", 4), "ä😀"))

    def test_was_nicht_passt_wird_nicht_gesendet(self) -> None:
        for typ, wert in ((Typ("smallint"), 32768), (Typ("nvarchar", 2), "😀a"), (Typ("int"), "x")):
            self.assertRaises(ValueError, typen.verpacke, typ, wert)
            self.assertFalse(typen.passt(typ, [wert]))

    def test_typ_ohne_erklaerung_richtet_sich_nach_den_werten(self) -> None:
        self.assertEqual(Typ("int"), typen.errate([1, None]))
        self.assertEqual(Typ("bigint"), typen.errate([2**31]))
        self.assertEqual(Typ("float"), typen.errate([1, 1.5]))
        self.assertEqual(Typ("nvarchar", 3), typen.errate(["a", "😀b"]))
        self.assertEqual(Typ("nvarchar"), typen.errate(["a" * 4001]))


class TexteTest(unittest.TestCase):
    def test_stuecke_ergeben_zusammen_den_text(self) -> None:
        zufall = random.Random(3)
        for _ in range(500):
            text = "".join(zufall.choice("a1'\"[]-*/ \n;.N@(ä😀") for _ in range(30))
            self.assertEqual(text, "".join(s.text for s in zerlege(text)))

    def test_dialekt_schreibt_nur_um_was_sqlite_nicht_kennt(self) -> None:
        faelle = {
            "Select Top 1 Key1 from T where a = 'x'order by b": "Select Key1 from T where a = 'x'order by b LIMIT 1",
            "SELECT TOP 100 PERCENT dbo.T.a FROM dbo.T": "SELECT T.a FROM T",
            "select a from t where b in (select top 2 b from u) and c = 0order by a":
                "select a from t where b in (select b from u LIMIT 2) and c = 0 order by a",
            "select N'dbo.x top 1'": "select 'dbo.x top 1'",
            "select 'select top 1 0order' as dbo": "select 'select top 1 0order' as dbo",
        }  # fmt: skip
        for text, erwartet in faelle.items():
            self.assertEqual(erwartet, sqlite_dialekt(text))

    def test_stapel_wird_in_anweisungen_zerlegt(self) -> None:
        faelle = {
            "print 'select 1' select 1 as a": ["print 'select 1'", "select 1 as a"],
            "insert into t select top 1 a from u update t set a = 1":
                ["insert into t select top 1 a from u", "update t set a = 1"],
            "select 1 union all select 2; ;delete from t": ["select 1 union all select 2", "delete from t"],
            "if exists (select 1 from t) delete from t print 'x'":
                ["if exists (select 1 from t) delete from t", "print 'x'"],
            "begin tran insert into t values (1) commit": ["begin tran", "insert into t values (1)", "commit"],
            "set nocount on insert into t values (1) set nocount off":
                ["set nocount on", "insert into t values (1)", "set nocount off"],
            "create table t (a int) create index i on t (a)": ["create table t (a int)", "create index i on t (a)"],
            "alter table t alter column a int null": ["alter table t alter column a int null"],
            " Select * from T  where a = 'b'order by c ": [" Select * from T  where a = 'b'order by c "],
            " -- nichts": [],
        }  # fmt: skip
        for text, erwartet in faelle.items():
            self.assertEqual(erwartet, zerlege_stapel(text), text)

    def test_offenes_hochkomma_wird_bemerkt(self) -> None:
        for text in ("select 'a", "select 'Bob's'", "select '''", "select [a", "select N'"):
            self.assertIsNotNone(offene_klammerung(text), text)
        for text in ("select ''", "select 'it''s'", "select '''' -- '", "select [a'b] /* ' */"):
            self.assertIsNone(offene_klammerung(text), text)

    def test_parameter_werden_als_literale_eingesetzt(self) -> None:
        werte = [Parameter("", False, "O'Neil"), Parameter("@b", False, None), Parameter("", False, -3)]
        self.assertEqual("select N'O''Neil', '@P1', NULL, 1-(-3)",
                         setze_ein("select @P1, '@P1', @B, 1-@p3", "@P1 nvarchar(50),@b int,@p3 int", werte))  # fmt: skip

    def test_aufruf_mit_werten_zeigt_die_anweisung_des_programms_und_ihre_werte(self) -> None:
        werte: list[typen.Wert] = ["select @P1, '@P2', @P22 /* @P1 */, @P2", "@P1 NVARCHAR(9),@P2 BIGINT", "O'N @P2", -3]
        aufruf = Prozeduraufruf("sp_executesql", [Parameter("", False, w) for w in werte])
        self.assertEqual({"anweisung": "select ?, '@P2', @P22 /* @P1 */, ?", "gebunden": ["O'N @P2", -3]},
                         Prozeduren.gebundene(aufruf))  # fmt: skip
        ohne = Prozeduraufruf("sp_executesql", [Parameter("", False, "select @P1")])
        self.assertEqual({"anweisung": "select @P1", "gebunden": []}, Prozeduren.gebundene(ohne))
        self.assertEqual({}, Prozeduren.gebundene(Prozeduraufruf("sp_prepare", ohne.parameter)))

    def test_vergleich_ohne_gross_und_klein_und_ohne_blanks_am_ende(self) -> None:
        self.assertEqual(0, vergleiche_servertext("ÄB  ", "äb"))
        self.assertEqual(-1, vergleiche_servertext("a", "B"))
        self.assertNotEqual(0, vergleiche_servertext(" a", "a"))

    def test_katalog_kennt_alle_spalten_der_beiden_tabellen(self) -> None:
        katalog = Katalog.aus_ordner(SKRIPTE / "mssql")
        self.assertEqual((14, 4), (len(katalog.tabellen["Bild_Zuordnungen"]), len(katalog.tabellen["BelegKopfZunft"])))
        self.assertEqual(Typ("char", 50), katalog.typ("DRUCKKENNZEICHEN"))
        self.assertEqual(Typ("smallint"), katalog.typ("sortindex"))
        self.assertEqual("Key4".lower(), katalog.schreibweise("KEY4"))
        self.assertEqual(["a", "b 'x\n go y'"], zerlege_skript("a\nGO\n-- nur das\n go \nb 'x\n go y'"))


class AuftraegeTest(unittest.TestCase):
    def test_gezaehlt_wird_ab_dem_auftrag_und_nach_dem_anfang(self) -> None:
        auftraege = Auftraege()
        auftraege.nimm("fehler 2,3/insert 8152 14 Zu lang".split())
        texte = ["insert 1", "select", " INSERT 2", "insert 3", "insert 4"]
        self.assertEqual([None, None, (8152, 14, "Zu lang"), (8152, 14, "Zu lang"), None],
                         [auftraege.eingriff("stapel", t).fehler for t in texte])  # fmt: skip

    def test_mehrere_auftraege_wirken_zusammen_und_heilen(self) -> None:
        auftraege = Auftraege()
        for zeile in ("meldung * eins", "meldung 1 zwei drei", "langsam * 0.5", "trenne * zeile:3"):
            auftraege.nimm(zeile.split())
        erwartet = Eingriff(None, ("eins", "zwei drei"), 0.5, False, "zeile", 3)
        self.assertEqual(erwartet, auftraege.eingriff("stapel", "x"))
        self.assertEqual(Eingriff(), auftraege.eingriff("anmeldung", "x"))
        auftraege.heile()
        self.assertEqual(Eingriff(), auftraege.eingriff("stapel", "x"))

    def test_unverstaendliches_wird_abgelehnt(self) -> None:
        for zeile in ("fehler", "fehler 1", "fehler 1 x y", "fehler 0 1 x", "trenne 1 irgendwo", "trenne 1 vor:3",
                      "langsam 1 bald", "anmeldung 1 tanze", "tanze 1", "meldung 1"):  # fmt: skip
            with self.assertRaises(Auftragsfehler, msg=zeile):
                Auftraege().nimm(zeile.split())


class ProtokollTest(unittest.TestCase):
    def test_datei_haelt_den_text_ohne_verlust(self) -> None:
        import json

        with tempfile.TemporaryDirectory() as ordner:
            datei = Path(ordner) / "p.json"
            protokoll = Protokoll(datei)
            protokoll.notiere(1, "stapel", "ä\n\t\ud83d '😀'", weiteres=1)
            eintrag = json.loads(datei.read_text(encoding="ascii"))
            self.assertEqual(verschluessele("ä\n\t\ud83d '😀'"), verschluessele(eintrag["text"]))
            self.assertEqual(1, eintrag["weiteres"])
            protokoll.leere()
            self.assertEqual("", datei.read_text())
            self.assertEqual("ä", entziffere(verschluessele("ä")))


if __name__ == "__main__":
    unittest.main()
