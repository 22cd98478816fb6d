"""One client from its first packet to its last."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Iterable

from . import anfragen, antworten, maschine, pakete
from .anfragen import Anmeldung
from .antwortbau import Antwortbau
from .auftraege import Auftraege, Eingriff
from .auskunft import Sitzungswerte
from .maschine import Abgebrochen, Maschine, SqlFehler
from .pakete import Paketleitung, Protokollfehler, Verbindungsende
from .prozeduren import Prozeduren
from .protokoll import Protokoll
from .stapel import Anweisungsende, Ereignis, Hinweis, Stapellauf, warte
from .tls import NICHT_UNTERSTUETZT, Tlswahl, Umfang


@dataclass(frozen=True)
class Zugang:
    """Who may come in, and where to. An empty database takes every name."""

    benutzer: str
    kennwort: str
    datenbank: str = ""
    paketgroesse: int = pakete.ERSTE_PAKETGROESSE


class Sitzung:
    """Serves one link until it ends; `bediene` runs in a thread of its own."""

    def __init__(self, nummer: int, leitung: Paketleitung, dahinter: Maschine, zugang: Zugang, auftraege: Auftraege,
                 protokoll: Protokoll, tls: Tlswahl) -> None:  # fmt: skip
        self._tls = tls
        self._nummer = nummer
        self._leitung = leitung
        self._maschine = dahinter
        self._zugang = zugang
        self._auftraege = auftraege
        self._protokoll = protokoll
        self._werte = Sitzungswerte(nummer=50 + nummer)
        self._gemerkte: dict[str, bytes] = {}

    def trenne(self) -> None:
        self._leitung.trenne()

    def bediene(self) -> None:
        try:
            if self._melde_an():
                self._arbeite()
        except (Verbindungsende, Protokollfehler, Abgebrochen) as ende:
            self._protokoll.notiere(self._nummer, "ende", str(ende))
        finally:
            self._leitung.trenne()

    def _melde_an(self) -> bool:
        art, inhalt = self._leitung.lies_nachricht()
        umfang = Umfang.NICHTS
        if art == pakete.VORANMELDUNG:
            umfang = self._verabrede(inhalt)
            art, inhalt = self._leitung.lies_nachricht()
        if art != pakete.ANMELDUNG:
            raise Protokollfehler(f"keine Anmeldung, sondern 0x{art:02X}")
        if umfang is Umfang.ANMELDUNG:
            self._leitung.beende_tls()
        self._werte.verschluesselt = self._leitung.verschluesselt
        anmeldung = anfragen.lies_anmeldung(inhalt)
        self._protokoll.notiere(self._nummer, "anmeldung", anmeldung.benutzer, programm=anmeldung.programm,
                                server=anmeldung.server, datenbank=anmeldung.datenbank,
                                verschluesselt=umfang.value)  # fmt: skip
        eingriff = self._auftraege.eingriff("anmeldung", anmeldung.benutzer)
        if eingriff.trenne:
            return False
        self._verzoegere(eingriff)
        fehler = self._ablehnung(anmeldung, eingriff)
        if fehler:
            self._leitung.sende(b"".join(antworten.meldung(f.nummer, f.zustand, f.klasse, f.text) for f in fehler)
                                + antworten.fertig(antworten.FEHLER))  # fmt: skip
            return False
        self._nimm_auf(anmeldung)
        return True

    def _verabrede(self, inhalt: bytes) -> Umfang:
        """Answers the pre-login; what of the rest is to be encrypted."""
        wunsch = anfragen.lies_voranmeldung(inhalt).get("verschluesselung", b"")
        absprache = self._tls.verabrede(wunsch[0] if wunsch else NICHT_UNTERSTUETZT)
        if absprache.antwort is None:
            raise Verbindungsende("auf Bestellung nach der Voranmeldung")
        self._leitung.sende(anfragen.antwort_auf_voranmeldung(absprache.antwort))
        if absprache.umfang is Umfang.ABBRUCH:
            raise Verbindungsende("ohne Verschlüsselung kommt niemand herein")
        if absprache.umfang is not Umfang.NICHTS and absprache.kontext is not None:
            self._leitung.beginne_tls(absprache.kontext)
        return absprache.umfang

    def _ablehnung(self, anmeldung: Anmeldung, eingriff: Eingriff) -> list[Hinweis]:
        """The errors that refuse a login; none where it is welcome."""
        verweigert = Hinweis(18456, f"Login failed for user '{anmeldung.benutzer}'.", 14)
        if eingriff.fehler:
            nummer, klasse, text = eingriff.fehler
            return [Hinweis(nummer, text, klasse) if text else verweigert]
        if anmeldung.version < anfragen.VERSION_72:
            return [Hinweis(17836, "The version of the protocol is too old; 7.2 to 7.4 are spoken.", 20)]
        if anmeldung.windows:
            return [Hinweis(18452, "Login failed. The login is from an untrusted domain.", 14)]
        if (anmeldung.benutzer, anmeldung.kennwort) != (self._zugang.benutzer, self._zugang.kennwort):
            return [verweigert]
        gewollt = anmeldung.datenbank.lower()
        if gewollt and self._zugang.datenbank and gewollt not in (self._zugang.datenbank.lower(), "master"):
            wort = f'Cannot open database "{anmeldung.datenbank}" requested by the login. The login failed.'
            return [Hinweis(4060, wort, 11), verweigert]
        return []

    def _nimm_auf(self, anmeldung: Anmeldung) -> None:
        self._werte.benutzer = anmeldung.benutzer
        self._werte.datenbank = anmeldung.datenbank or self._zugang.datenbank or "master"
        gewuenscht = min(max(anmeldung.paketgroesse, pakete.KLEINSTES_PAKET), pakete.GROESSTES_PAKET)
        groesse = min(gewuenscht, self._zugang.paketgroesse)
        name = self._werte.datenbank
        self._leitung.sende(
            antworten.umgebung_text(antworten.UMGEBUNG_DATENBANK, name, "master")
            + antworten.meldung(5701, 2, 0, f"Changed database context to '{name}'.")
            + antworten.umgebung_sortierung()
            + antworten.umgebung_text(antworten.UMGEBUNG_SPRACHE, "us_english")
            + antworten.meldung(5703, 1, 0, "Changed language setting to us_english.")
            + antworten.anmeldung_angenommen(min(anmeldung.version, anfragen.VERSION_74))
            + antworten.umgebung_text(antworten.UMGEBUNG_PAKETGROESSE, str(groesse), str(pakete.ERSTE_PAKETGROESSE))
            + antworten.fertig()
        )
        self._leitung.paketgroesse = groesse

    def _arbeite(self) -> None:
        arbeit = self._maschine.verbinde(self._leitung.wartet_eingabe)
        lauf = Stapellauf(arbeit, self._werte, self._leitung.wartet_eingabe)
        prozeduren = Prozeduren(lauf)
        try:
            while True:
                art, inhalt = self._leitung.lies_nachricht()
                try:
                    self._beantworte(art, inhalt, lauf, prozeduren)
                except Abgebrochen:
                    # What woke the guard is the cancel itself, or the end of the link.
                    self._bestaetige_abbruch(self._leitung.lies_nachricht()[0])
        finally:
            arbeit.nimm_zurueck()
            arbeit.schliesse()

    def _beantworte(self, art: int, inhalt: bytes, lauf: Stapellauf, prozeduren: Prozeduren) -> None:
        if art == pakete.STAPEL:
            text = anfragen.lies_stapel(inhalt)
            self._protokoll.notiere(self._nummer, "stapel", text)
            self._fuehre_aus(text, lauf.fuehre_aus(text))
        elif art == pakete.TRANSAKTION:
            self._transaktion(anfragen.lies_transaktionswunsch(inhalt), lauf)
        elif art == pakete.RPC:
            self._rufe(inhalt, prozeduren)
        elif art == pakete.ABBRUCH:
            self._bestaetige_abbruch(art)
        else:
            raise Protokollfehler(f"unbekannte Nachricht 0x{art:02X}")

    def _rufe(self, inhalt: bytes, prozeduren: Prozeduren) -> None:
        aufruf = anfragen.lies_aufruf(inhalt)
        text = prozeduren.text(aufruf)
        werte = [repr(p.wert) for p in aufruf.parameter]
        gebundene = prozeduren.gebundene(aufruf)
        self._protokoll.notiere(self._nummer, "aufruf", text, name=aufruf.name, werte=werte, **gebundene)
        self._fuehre_aus(text, prozeduren.rufe(aufruf), prozeduren)

    def _transaktion(self, wunsch: anfragen.Transaktionswunsch, lauf: Stapellauf) -> None:
        wege = {anfragen.TA_BEGINN: ("BEGIN TRANSACTION", lauf.beginne),
                anfragen.TA_ABSCHLUSS: ("COMMIT", lauf.schliesse_ab),
                anfragen.TA_RUECKNAHME: ("ROLLBACK", lauf.nimm_zurueck)}  # fmt: skip
        if wunsch.art not in wege:
            raise Protokollfehler(f"unbekannter Transaktionswunsch {wunsch.art}")
        name, weg = wege[wunsch.art]
        self._protokoll.notiere(self._nummer, "transaktion", name)

        def ereignisse() -> Iterable[Ereignis]:
            yield from weg()
            if wunsch.neu:
                yield from lauf.beginne()

        self._fuehre_aus(name, ereignisse(), zaehlt=False)

    def _fuehre_aus(self, text: str, ereignisse: Iterable[Ereignis],
                    prozeduren: Prozeduren | None = None, zaehlt: bool = True) -> None:  # fmt: skip
        """Runs what the events come from and answers, with what was ordered in between."""
        eingriff = self._auftraege.eingriff("stapel", text, zaehlt and bool(text or prozeduren is None))
        if eingriff.trenne == "vor":
            raise Verbindungsende("auf Bestellung vor der Anweisung")
        self._verzoegere(eingriff)
        if eingriff.merke and text in self._gemerkte:
            self._leitung.sende(self._gemerkte[text])
            return
        bau = Antwortbau(self._werte, prozedur=prozeduren is not None)
        for worte in eingriff.meldungen:
            bau.nimm(Hinweis(0, worte))
        if eingriff.fehler:
            nummer, klasse, worte = eingriff.fehler
            ereignisse = [Hinweis(nummer, worte, klasse), Anweisungsende(gescheitert=True)]
        self._sammle(ereignisse, bau)
        antwort = bau.fertig(1 if bau.gescheitert else 0, prozeduren.ausgaben if prozeduren else None)
        self._trenne_auf_bestellung(eingriff, bau, antwort)
        if eingriff.merke:
            self._gemerkte[text] = antwort
        self._leitung.sende(antwort)
        if eingriff.fehler and eingriff.fehler[1] >= 20:
            raise Verbindungsende("nach einem Fehler, der die Verbindung beendet")

    def _sammle(self, ereignisse: Iterable[Ereignis], bau: Antwortbau) -> None:
        try:
            for ereignis in ereignisse:
                bau.nimm(ereignis)
        except SqlFehler as fehler:
            bau.nimm(Hinweis(fehler.nummer, fehler.text, fehler.klasse, fehler.zustand))
            bau.nimm(Anweisungsende(gescheitert=True))
        except ValueError as fehler:
            bau.nimm(Hinweis(maschine.ALLGEMEIN, f"Der Wert passt nicht: {fehler}", 16))
            bau.nimm(Anweisungsende(gescheitert=True))

    def _trenne_auf_bestellung(self, eingriff: Eingriff, bau: Antwortbau, antwort: bytes) -> None:
        if not eingriff.trenne:
            return
        if eingriff.trenne == "zeile":
            stueck = bau.bis_mitte_der_zeile(eingriff.zeile)
            self._leitung.sende_rumpf(antwort[: len(antwort) // 2] if stueck is None else stueck)
        elif eingriff.trenne == "halb":
            self._leitung.sende_rumpf(antwort[: len(antwort) // 2])
        raise Verbindungsende(f"auf Bestellung: {eingriff.trenne}")

    def _verzoegere(self, eingriff: Eingriff) -> None:
        """Waits as ordered; where it was ordered never to answer, until the client gives up."""
        if eingriff.stumm:
            while True:
                warte(3600, self._leitung.wartet_eingabe)
        warte(eingriff.sekunden, self._leitung.wartet_eingabe)

    def _bestaetige_abbruch(self, art: int) -> None:
        if art != pakete.ABBRUCH:
            raise Protokollfehler("Eingabe, während eine Anweisung läuft")
        self._protokoll.notiere(self._nummer, "abbruch", "")
        self._leitung.sende(antworten.fertig(antworten.ABGEBROCHEN))
