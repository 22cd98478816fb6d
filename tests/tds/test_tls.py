"""Encryption through unixODBC and FreeTDS: what crosses the wire, and what Debian's driver checks of a certificate."""

from __future__ import annotations

import json
import os
import tempfile
import unittest
from pathlib import Path
from typing import ClassVar

import odbc
from probe import BENUTZER, KENNWORT, Probe, ohne_treiber
from tdsserver.anfragen import verwirre_kennwort
from zertifikate import Zertifikate, ohne_openssl

TEXT = "select 'Zwetschge' as a"
VORANMELDUNG = 0x12


def weit(text: str) -> bytes:
    return text.encode("utf-16-le")


@unittest.skipIf(ohne_treiber() or ohne_openssl(), ohne_treiber() or ohne_openssl())
class TlsTest(unittest.TestCase):
    ordner: ClassVar[tempfile.TemporaryDirectory[str]]
    server: ClassVar[Probe]
    zertifikate: ClassVar[Zertifikate]
    datei: ClassVar[Path]

    @classmethod
    def setUpClass(cls) -> None:
        cls.ordner = tempfile.TemporaryDirectory(prefix="tls-")
        cls.zertifikate = Zertifikate(Path(cls.ordner.name))
        cls.datei = Path(cls.ordner.name) / "freetds.conf"
        os.environ["FREETDSCONF"] = str(cls.datei)
        cls.server = Probe("--mitschnitt")

    @classmethod
    def tearDownClass(cls) -> None:
        cls.server.schliesse()
        cls.ordner.cleanup()
        del os.environ["FREETDSCONF"]

    def setUp(self) -> None:
        self.server.steuere("mitschnitt-leeren")
        self.server.steuere("protokoll-leeren")
        self.datei.write_text("[global]\n")

    def stelle(self, stufe: str, zertifikat: str = "richtig") -> None:
        self.server.steuere(f"tls {stufe} {self.zertifikate.pfad(zertifikat)}")

    def frage(self, zeichenfolge: str) -> bool:
        """One statement over one connection; whether it came to that."""
        try:
            verbindung = odbc.Verbindung(zeichenfolge, anmeldegrenze=10)
        except odbc.Odbcfehler:
            return False
        self.assertEqual([["Zwetschge"]], verbindung.fuehre_aus(TEXT)[0].zeilen)
        verbindung.schliesse()
        return True

    def am_server(self, verschluesselung: str = "") -> bool:
        return self.frage(self.server.zeichenfolge(**({"Encryption": verschluesselung} if verschluesselung else {})))

    def nach_abschnitt(self, *zeilen: str) -> bool:
        """With a section of freetds.conf that holds these lines."""
        kopf = ["[kvo]", "host = 127.0.0.1", f"port = {self.server.port}", "tds version = 7.4"]
        self.datei.write_text("\n".join([*kopf, *zeilen, ""]))
        return self.frage(f"DRIVER=FreeTDS;SERVERNAME=kvo;UID={BENUTZER};PWD={{{KENNWORT}}};")

    def roh(self) -> tuple[bytes, bytes]:
        """All that came and all that went since the test began."""
        leitungen = json.loads(self.server.steuere("mitschnitt"))
        return (b"".join(bytes.fromhex(e["ein"]) for e in leitungen),
                b"".join(bytes.fromhex(e["aus"]) for e in leitungen))  # fmt: skip

    def lesbares(self) -> set[str]:
        """Which of these can be read off the wire."""
        ein, aus = self.roh()
        stellen = {"anweisung": weit(TEXT) in ein, "antwort": weit("Zwetschge") in aus,
                   "kennwort": verwirre_kennwort(weit(KENNWORT)) in ein or weit(KENNWORT) in ein,
                   "benutzer": weit(BENUTZER) in ein}  # fmt: skip
        return {name for name, lesbar in stellen.items() if lesbar}

    def umfang(self) -> list[str]:
        eintraege = json.loads(self.server.steuere("protokoll"))
        return [e["verschluesselt"] for e in eintraege if e["art"] == "anmeldung"]

    def test_verlangt_ist_nichts_lesbar(self) -> None:
        for stufe in ("moeglich", "immer"):
            with self.subTest(stufe):
                self.server.steuere("mitschnitt-leeren")
                self.stelle(stufe)
                self.assertTrue(self.am_server("require"))
                self.assertEqual(set(), self.lesbares())
                self.assertEqual("alles", self.umfang()[-1])

    def test_ein_server_ohne_verschluesselung_bekommt_nur_die_voranmeldung(self) -> None:
        self.server.steuere("tls nie")
        self.assertFalse(self.am_server("require"))
        ein, _ = self.roh()
        self.assertEqual(VORANMELDUNG, ein[0])
        self.assertEqual(len(ein), int.from_bytes(ein[2:4], "big"))
        self.assertEqual([], self.umfang())

    def test_ohne_angabe_ist_die_anmeldung_verschluesselt_wo_der_server_kann(self) -> None:
        for wort in ("", "request"):
            with self.subTest(wort):
                self.server.steuere("mitschnitt-leeren")
                self.stelle("moeglich")
                self.assertTrue(self.am_server(wort))
                self.assertEqual({"anweisung", "antwort"}, self.lesbares())
                self.assertEqual("anmeldung", self.umfang()[-1])
        self.server.steuere("tls nie")
        self.assertTrue(self.am_server())
        self.assertEqual({"anweisung", "antwort", "kennwort", "benutzer"}, self.lesbares())

    def test_verlangt_der_server_ist_alles_verschluesselt_oder_niemand_kommt_herein(self) -> None:
        self.stelle("immer")
        self.assertTrue(self.am_server())
        self.assertEqual(set(), self.lesbares())
        self.assertFalse(self.am_server("off"))
        self.assertEqual(set(), self.lesbares())

    def test_der_treiber_laesst_sich_auf_die_anmeldung_herunterhandeln(self) -> None:
        # No honest server answers so; the programs look at the wire themselves for this.
        self.stelle("ausweichend")
        self.assertTrue(self.am_server("require"))
        self.assertEqual({"anweisung", "antwort"}, self.lesbares())

    def test_mit_auto_versucht_der_treiber_es_auch_in_einem_protokoll_ohne_verschluesselung(self) -> None:
        self.server.steuere("tls fort")
        self.assertFalse(self.frage(self.server.zeichenfolge(Encryption="require", TDS_Version="auto")))
        self.assertIn(BENUTZER.encode(), self.roh()[0])
        self.server.steuere("mitschnitt-leeren")
        self.assertFalse(self.am_server("require"))
        self.assertEqual(VORANMELDUNG, self.roh()[0][0])
        self.assertNotIn(BENUTZER.encode(), self.roh()[0])

    def test_ein_protokoll_vor_7_1_uebergeht_was_verlangt_ist(self) -> None:
        self.stelle("moeglich")
        self.frage(self.server.zeichenfolge(Encryption="require", TDS_Version="7.0"))
        self.assertEqual({"kennwort", "benutzer"}, self.lesbares())
        os.environ["TDSVER"] = "7.0"
        try:
            self.server.steuere("mitschnitt-leeren")
            self.am_server("require")
            self.assertEqual({"kennwort", "benutzer"}, self.lesbares())
        finally:
            del os.environ["TDSVER"]

    def test_ohne_ca_file_prueft_der_treiber_nichts(self) -> None:
        for name in ("richtig", "unbekannt", "anderer", "abgelaufen"):
            with self.subTest(name):
                self.stelle("immer", name)
                self.assertTrue(self.am_server("require"))
                self.assertTrue(self.nach_abschnitt("encryption = require", "check certificate hostname = yes"))

    def test_mit_ca_file_prueft_der_treiber_stelle_zeit_und_namen(self) -> None:
        stelle = f"ca file = {self.zertifikate.pfad('stelle')}"
        for name, kommt in (("richtig", True), ("unbekannt", False), ("anderer", False), ("abgelaufen", False)):
            with self.subTest(name):
                self.stelle("immer", name)
                self.assertEqual(kommt, self.nach_abschnitt("encryption = require", stelle))
                # Also where nobody demanded it: the login is encrypted only to the right server.
                self.stelle("moeglich", name)
                self.assertEqual(kommt, self.nach_abschnitt(stelle))
        self.stelle("immer", "anderer")
        self.assertTrue(self.nach_abschnitt(stelle, "check certificate hostname = no"))

    def test_wird_ein_zertifikat_abgelehnt_geht_keine_anmeldung_hinaus(self) -> None:
        self.stelle("immer", "unbekannt")
        self.assertFalse(self.nach_abschnitt("encryption = require", f"ca file = {self.zertifikate.pfad('stelle')}"))
        self.assertEqual([], self.umfang())
        self.assertEqual(set(), self.lesbares())

    def test_fehlt_die_datei_der_stellen_kommt_niemand_herein(self) -> None:
        self.stelle("immer")
        self.assertFalse(self.nach_abschnitt("encryption = require", "ca file = /gibt/es/nicht.pem"))

    def test_die_pruefung_steht_nur_in_der_freetds_conf(self) -> None:
        self.stelle("immer", "unbekannt")
        stelle = self.zertifikate.pfad("stelle")
        self.datei.write_text(f"[global]\nca file = {stelle}\n[127.0.0.1]\nca file = {stelle}\n")
        for wort in ("", "ca file", "ca_file", "CAFile"):
            with self.subTest(wort):
                worte = {wort: str(stelle)} if wort else {}
                self.assertTrue(self.frage(self.server.zeichenfolge(Encryption="require", **worte)))
        for wort, wert in (("Encrypt", "yes"), ("TrustServerCertificate", "no"), ("HostNameInCertificate", "x")):
            with self.subTest(wort):
                self.assertTrue(self.frage(self.server.zeichenfolge(Encryption="require", **{wort: wert})))

    def test_wie_der_treiber_die_freetds_conf_liest(self) -> None:
        stelle = self.zertifikate.pfad("stelle")
        self.stelle("immer", "unbekannt")
        for zeile, prueft in ((f"CA   File= {stelle} ; mit einem Kommentar", True), (f"\tca\tfile\t=\t{stelle}", True),
                              (f"ca file = {stelle} # noch einer", True), (f"; ca file = {stelle}", False),
                              (f"# ca file = {stelle}", False), (f"ca file = {stelle}\nca file =", False),
                              (f"[kvo]\nca file = {stelle}", True), (f"[global]\nca file = {stelle}", True),
                              (f"[KVO] nochmal\nca file = {stelle}", True), (f"[ kvo ]\nca file = {stelle}", False),
                              (f"ca file = {stelle}\r", True)):  # fmt: skip
            with self.subTest(zeile):
                self.assertEqual(not prueft, self.nach_abschnitt(zeile))


if __name__ == "__main__":
    unittest.main()
