// What the dialog does: articles, the preview, and the saving.
#include <algorithm>
#include <set>

#include "dialogs/Bedienschritt.h"
#include "dialogs/Bildbuehne.h"
#include "dialogs/overview/Uebersichtszeile.h"
#include "dialogs/overview/frm_AnzeigeZuordnung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Twips.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;
using Dimension = XArrayDBObject::Dimension;

namespace {

/// The reports name the form so, with one letter more than it has.
const QString Klasse = u"frm_AnzeigeZuordnungen"_s;

/// What the component creates and the host makes.
template <class Objekt>
void verlange(const std::shared_ptr<Objekt>& objekt) {
  if (!objekt) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
}

}  // namespace

// Whatever still runs when the form is unloaded finds no arrays any more.
XArrayDBObject& frm_AnzeigeZuordnung::Zuordnungen() const {
  verlange(m_Zuordnungen);
  return *m_Zuordnungen;
}

XArrayDBObject& frm_AnzeigeZuordnung::Artikel() const {
  verlange(m_Artikel);
  return *m_Artikel;
}

QString frm_AnzeigeZuordnung::Zuordnungstext(std::int32_t zeile, std::int32_t spalte) const {
  return mit_Leertext(Zuordnungen().Value(zeile, spalte));
}

QString frm_AnzeigeZuordnung::Artikeltext(std::int32_t zeile, std::int32_t spalte) const {
  return mit_Leertext(Artikel().Value(zeile, spalte));
}

// ── Loading ─────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_AnzeigeZuordnung::Lade_Zuordnungen() {
  bedienschritt(Klasse, u"Lade_Zuordnungen", [this] { lies_Zuordnungen(); });
}

void frm_AnzeigeZuordnung::lies_Zuordnungen() {
  verlange(pAppObj);
  QString wert;
  pAppObj->Settings()->GetSetting(u"Firmendaten"_s, u"MitArtikelstammZF"_s, wert, u"Standard"_s, u"Standard"_s, u"0"_s);
  pMitArtikelstammZF = wert == "1"_L1;
  SSP_Info.Caption(u"   "_s + pInfoZeile);
  Init_ThumbNailArray();
  Init_Artikelgrid();
  verlange(pBildObj);
  uebersicht::fuelle(Zuordnungen(), *pBildObj, pRootpath);
  Init_Grid();
  // The pictures are marked as they come; what is missing is an article.
  TDBG_WeitereZuordnungen.setFocus();
}

// ── Articles ────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_AnzeigeZuordnung::AuskunftSelect(const QString& pName) {
  bedienschritt(Klasse, u"AuskunftSelect", [&] {
    verlange(pAppObj);
    pAuskunftObj = komponenten::erzeuge<clsAuskunft>(u"KVOListAuskunft.clsAuskunft"_s);
    pAuskunftObj->Anzeige_Auskunft(pName, QString(), pAppObj->Name(), pAppObj->User(), pAppObj->ExeDir(),
        pAppObj->ConnectStringDB(), pAppObj->ConnectionDB(), *this, pAppObj->ReportDBTemplateDir(), pAppObj->DBName());
  });
  pAuskunftObj.reset();
}

void frm_AnzeigeZuordnung::LA_Doppelclick(const QString& pWert) {
  pAuswahlWert = text::Trim(text::Trim(pWert).section(u'|', 0, 0));
}

void frm_AnzeigeZuordnung::waehle_Artikel() {
  pAuswahlWert.clear();
  AuskunftSelect(u"Artikel"_s);
  // The form may have been unloaded meanwhile.
  if (!m_Artikel || text::Trim(pAuswahlWert).isEmpty()) return;
  TDBG_WeitereZuordnungen.Text(pAuswahlWert);
  TDBG_WeitereZuordnungen.Update();
}

void frm_AnzeigeZuordnung::nach_Artikeleingabe() {
  QString nummer = TDBG_WeitereZuordnungen.Text();
  if (!Lese_Artikel(nummer, pAktZeile, true))
    for (const auto spalte : {artikel::Kurztext1, artikel::Kurztext2}) Artikel().Value(pAktZeile, spalte, QString());
  TDBG_WeitereZuordnungen.Refresh();
  Pruefe_ZuordnungSchalter();
}

std::shared_ptr<clsArtikelManagerSQL> frm_AnzeigeZuordnung::neuer_Artikelmanager() const {
  verlange(pAppObj);
  auto manager = komponenten::erzeuge<clsArtikelManagerSQL>(
      pMitArtikelstammZF ? u"KVOArtikelZF.clsArtikelManagerSQLZF"_s : u"KVOArtik.clsArtikelManagerSQL"_s);
  manager->Init(0, pAppObj->ConnectStringDB(), pAppObj->ConnectionDB());
  return manager;
}

// A number that was found by a part counts, even where the search for it then ends without its article. A component
// that keeps naming numbers that it does not know itself must not keep this going.
bool frm_AnzeigeZuordnung::Lese_Artikel(QString& pArtikelNr, std::int32_t pZeile, bool pFuellen) {
  const auto suche = [&] { return fehler::still_enden([&] { return suche_Artikel(pArtikelNr, pZeile, pFuellen); }); };
  std::set<QString> versucht{pArtikelNr};
  Fund fund = suche();
  const bool gefunden = fund == Fund::Genau || (fund == Fund::Teil && !pArtikelNr.isEmpty());
  while (fund == Fund::Teil && versucht.insert(pArtikelNr).second) fund = suche();
  return gefunden;
}

/// One search by one component. What it finds by a part replaces the number.
frm_AnzeigeZuordnung::Fund frm_AnzeigeZuordnung::suche_Artikel(QString& nummer, std::int32_t zeile, bool fuellen) {
  const auto manager = neuer_Artikelmanager();
  if (manager->fktLeseArtikel(nummer, true, false, false, false, false, true)) {
    if (!fuellen) return Fund::Genau;
    Artikel().Value(zeile, artikel::Kurztext1, mit_Leertext(manager->Bez()));
    Artikel().Value(zeile, artikel::Kurztext2, mit_Leertext(manager->bez3()));
    Artikel().Value(zeile, artikel::Lieferant, mit_Leertext(manager->Hauptlieferant()));
    TDBG_WeitereZuordnungen.Refresh();
    return Fund::Genau;
  }
  if (!manager->fktLeseArtikel_TeilArtikel(nummer)) return Fund::Keiner;
  nummer = manager->Artikelnummer();
  return Fund::Teil;
}

void frm_AnzeigeZuordnung::Pruefe_ZuordnungSchalter() {
  bedienschritt(Klasse, u"Pruefe_ZuordnungSchalter", [this] {
    SSC_ZuordnungSpeichern.Enabled(false);
    const auto gibt = [](const XArrayDBObject& tabelle, auto&& bedingung) {
      for (std::int32_t i = 0; i <= tabelle.UpperBound(Dimension::Zeilen); ++i)
        if (bedingung(i)) return true;
      return false;
    };
    const bool markiert =
        gibt(Zuordnungen(), [&](std::int32_t i) { return ist_True(Zuordnungen().Value(i, uebersicht::Marke)); });
    const bool benannt = markiert &&
        gibt(Artikel(), [&](std::int32_t i) { return !text::Trim(Artikeltext(i, artikel::Nummer)).isEmpty(); });
    if (benannt) SSC_ZuordnungSpeichern.Enabled(true);
  });
}

// ── The preview ─────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_AnzeigeZuordnung::Bild_Vorschau(std::int32_t pZeile) {
  if (pZeile == -1) return;
  bedienschritt(Klasse, u"Bild_Vorschau", [&] {
    mauszeiger().form(Zeigerform::Sanduhr);
    lade_Vorschau(pZeile);
    VorschauBild_Einpassen(pZeile);
    mauszeiger().form(Zeigerform::Standard);
  });
}

void frm_AnzeigeZuordnung::lade_Vorschau(std::int32_t zeile) {
  if (ist_True(Zuordnungen().Value(zeile, uebersicht::Fehlt))) return Pic_Dummy.Picture(Pic_Blank.Picture());
  stelle_auf(Pic_Dummy, pBildObj, Zuordnungstext(zeile, uebersicht::Datei));
}

void frm_AnzeigeZuordnung::VorschauBild_Einpassen(std::int32_t pZeile) {
  bedienschritt(Klasse, u"VorschauBild_Einpassen", [&] {
    if (pZeile < 0 || text::Trim(Zuordnungstext(pZeile, uebersicht::Datei)).isEmpty()) return;
    pic_Anzeige.Visible(false);
    StretchPicture(Pic_Dummy, pic_Anzeige, SSP_Anzeige.Width() / twips::JePixel, SSP_Anzeige.Height() / twips::JePixel);
    pic_Anzeige.Left((SSP_Anzeige.Width() - pic_Anzeige.Width()) / 2);
    pic_Anzeige.Top((SSP_Anzeige.Height() - pic_Anzeige.Height()) / 2);
    pic_Anzeige.Visible(true);
  });
}

void frm_AnzeigeZuordnung::StretchPicture(const Bildfeld& quelle, Bildfeld& ziel, double breite, double hoehe) {
  bedienschritt(Klasse, u"StretchPicture", [&] {
    ziel.Cls();
    if (!quelle.Picture()) return;
    const QSizeF groesse = quelle.Picture()->groesse();
    const double faktor = std::min(breite / groesse.width(), hoehe / groesse.height());
    const QSizeF neue = groesse * faktor;
    ziel.Width(neue.width() * twips::JePixel);
    ziel.Height(neue.height() * twips::JePixel);
    ziel.PaintPicture(quelle.Picture(), QRectF(QPointF(0, 0), neue));
  });
}

// ── Saving ──────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_AnzeigeZuordnung::frage_und_speichere() {
  bedienschritt(Klasse, u"SSC_ZuordnungSpeichern_Click", [this] {
    const Antwort antwort = MsgBox(
        u"Die oben gekennzeichneten Dateien werden den unten aufgeführten Artikeln zugeordnet! Möchten Sie den Vorgang "
        "starten?"_s,
        Knoepfe::JaNein, Symbol::Frage, u"Dateien zuordnen"_s);
    if (antwort != Antwort::Ja) return;
    verlange(pAppObj);
    pNeuObj = std::make_shared<clsBildZuordnungen>();
    pNeuObj->Init(pAppObj->ConnectStringDB(), pAppObj->ConnectionDB(), pGL_jmtVerarbeitungsdatum);
    pNeuObj->FKT_Neu();
    Artikelzuordnung lauf;
    for (std::int32_t j = 0; j <= Artikel().UpperBound(Dimension::Zeilen); ++j) ordne_zu(lauf, j);
    // Until here no row was written.
    pNeuObj->FKT_SpeichernBilder();
    Hide();
  });
}

void frm_AnzeigeZuordnung::ordne_zu(Artikelzuordnung& lauf, std::int32_t artikelzeile) {
  const QString lieferant = Artikeltext(artikelzeile, artikel::Lieferant);
  const QString ordner = u"Artikel\\"_s + (text::Trim(lieferant).isEmpty() ? u"Allg"_s : lieferant);
  for (std::int32_t i = 0; i <= Zuordnungen().UpperBound(Dimension::Zeilen); ++i)
    if (ist_True(Zuordnungen().Value(i, uebersicht::Marke)))
      ordne_Bild_zu(lauf, i, Artikeltext(artikelzeile, artikel::Nummer), ordner);
}

// The table is asked for the name that the picture has; what this saving itself has assigned it does not know yet.
void frm_AnzeigeZuordnung::ordne_Bild_zu(
    Artikelzuordnung& lauf, std::int32_t zeile, const QString& artikelnummer, const QString& zielordner) {
  using namespace uebersicht;
  const auto wert = [&](Spalte spalte) { return Zuordnungstext(zeile, spalte); };
  const QString ziel = pRootpath + u'\\' + zielordner;
  const Artikelzuordnung::Bild bild = Bild_der_Zeile(zeile);
  const auto vorhanden = [&](const QString& name) {
    return pNeuObj->FKT_BilderVorhanden(artikelnummer, {}, {}, {}, name, bild.Endung, u"Art"_s, {}, {});
  };
  if (vorhanden(bild.Name)) return;
  const std::optional<QString> name = lauf.Name_fuer(artikelnummer, bild, ist_einziges(bild),
      [&](const QString& moeglicher) { return Platz_von(ziel, moeglicher, bild, vorhanden(moeglicher)); });
  if (!name) return;
  lauf.merke(artikelnummer, bild, *name);
  pNeuObj->FKT_NeuesBild(artikelnummer, {}, {}, {}, *name, bild.Endung, u"Art"_s, {});
  if (text::Trim(wert(Pfad)) != zielordner && !pNeuObj->Fkt_DirExists(ziel)) pNeuObj->Fkt_MakePath(ziel);
  const bool eigener = *name == bild.Name;
  kopiere(bild, ziel, eigener ? wert(Dateiname) : *name, eigener);
  pNeuObj->Bild_Neu(true);
  pRootpath = wert(Root);
  pNeuObj->Bild_Pfad(zielordner);
  pNeuObj->Bild_Bildname(eigener ? wert(Dateiname) : *name);
  uebernimm_Angaben(zeile);
  if (!text::Trim(wert(Info)).isEmpty())
    pNeuObj->Fkt_WriteFile(Bilddatei{pNeuObj->Bild_Bildname(), wert(Ext), ziel}.textpfad(), wert(Info));
  pNeuObj->Bild_Delete(false);
  pNeuObj->Bild_Changeflag(true);
}

Artikelzuordnung::Bild frm_AnzeigeZuordnung::Bild_der_Zeile(std::int32_t zeile) const {
  using namespace uebersicht;
  const auto wert = [&](Spalte spalte) { return Zuordnungstext(zeile, spalte); };
  const QString name = mod_BilderSuchen::Fkt_SplitFileName(wert(Datei), 2);
  return {zeile, text::Trim(wert(Dateiname)), text::Trim(wert(Ext)),
      pRootpath + u'\\' + wert(Pfad) + u'\\' + name + u'.' + wert(Ext)};
}

/// No other marked picture has its name.
bool frm_AnzeigeZuordnung::ist_einziges(const Artikelzuordnung::Bild& bild) const {
  for (std::int32_t i = 0; i <= Zuordnungen().UpperBound(Dimension::Zeilen); ++i)
    if (i != bild.Zeile && ist_True(Zuordnungen().Value(i, uebersicht::Marke)) &&
        Artikelzuordnung::heissen_gleich(Bild_der_Zeile(i), bild))
      return false;
  return true;
}

Artikelzuordnung::Platz frm_AnzeigeZuordnung::Platz_von(
    const QString& ziel, const QString& name, const Artikelzuordnung::Bild& bild, bool zugeordnet) const {
  using Platz = Artikelzuordnung::Platz;
  const QString datei = Bilddatei{name, bild.Endung, ziel}.pfad();
  if (Artikelzuordnung::sind_gleich(datei, bild.Datei)) return zugeordnet ? Platz::Zugeordnet : Platz::Frei;
  const QString text = Bilddatei{name, bild.Endung, ziel}.textpfad();
  const bool fremdes = pNeuObj->Fkt_FileExists(datei) || pNeuObj->Fkt_FileExists(text);
  return zugeordnet || fremdes ? Platz::Vergeben : Platz::Frei;
}

// Under its own name a picture spares what lies there. A copy that fails goes unnoticed, and its row is written.
void frm_AnzeigeZuordnung::kopiere(
    const Artikelzuordnung::Bild& bild, const QString& ziel, const QString& name, bool schonend) {
  const QString datei = name + u'.' + Zuordnungstext(bild.Zeile, uebersicht::Ext);
  // A numbered name is free, or holds this very picture.
  if (!schonend && pNeuObj->Fkt_FileExists(ziel + u'\\' + datei)) return;
  // The copy writes into the text it is given.
  QString kopierziel = ziel;
  static_cast<void>(pNeuObj->Fkt_FileCopy(bild.Datei, kopierziel, false, schonend, datei, true));
}

void frm_AnzeigeZuordnung::uebernimm_Angaben(std::int32_t zeile) {
  using namespace uebersicht;
  const auto ja = [&](Spalte spalte) { return ist_True(Zuordnungen().Value(zeile, spalte)); };
  pNeuObj->Bild_BildExt(Zuordnungstext(zeile, Ext));
  pNeuObj->Bild_AlsAnhang(ja(AlsAnhang));
  pNeuObj->Bild_Beschreibung(Zuordnungstext(zeile, Beschreibung));
  pNeuObj->Bild_Drucken(ja(Drucken));
  pNeuObj->Bild_DruckGesamteSeite(ja(DruckGesamteSeite));
  pNeuObj->Bild_NeueSeite(ja(NeueSeite));
}
