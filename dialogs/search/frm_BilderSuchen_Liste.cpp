// The list of a folder's files: reading it, and what is done with the chosen ones.
#include <QGuiApplication>
#include <QScopeGuard>
#include <algorithm>

#include "dialogs/search/Vorschaubild.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/Dateien.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"
#include "store/Bildereignis.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;
using Dimension = XArrayDBObject::Dimension;

namespace {

constexpr double Vorschauseite = 1500;

/// So many files ahead of the one that is due: enough for all cores and for a share that answers late, and few enough
/// that their pixels are still in the cache when they are due.
constexpr qsizetype Voraus = 16;

QString mit_Trenner(const QString& ordner) {
  return ordner.endsWith(u'\\') ? ordner : ordner + u'\\';
}

QString name_von(const QString& pfad) {
  return pfad.mid(pfad.lastIndexOf(u'\\') + 1);
}

/// What follows the last point; a name without one is an extension itself.
QString endung_von(const QString& name) {
  return name.mid(name.lastIndexOf(u'.') + 1);
}

/// Plain files that are neither hidden nor of the system, in the order of their names.
QStringList sichtbare_Dateien(const QString& ordner, const QString& muster) {
  QStringList namen = dateien::Dir(ordner + muster);
  namen.removeIf([](const QString& name) { return name.startsWith(u'.'); });
  return namen;
}

/// Key of a file type's icon. A key of digits alone would be taken for an index.
QString typschluessel(const QString& endung) {
  bool zahl = false;
  endung.toDouble(&zahl);
  // "nan" and "inf" are words here.
  return zahl && endung.front() != u'n' && endung.front() != u'i' ? endung + u'K' : endung;
}

void fuelle_Zeile(XArrayDBObject& tabelle, std::int32_t zeile, const QString& tag) {
  tabelle.Value(zeile, fund::VollerName, text::Trim(tag));
  for (const fund::Spalte s : {fund::Pfad, fund::Name, fund::Endung})
    tabelle.Value(zeile, s, mod_BilderSuchen::Fkt_SplitFileName(tag, static_cast<std::int16_t>(s)));
}

}  // namespace

bool frm_BilderSuchen::passt(const QString& endung) const {
  // A part of the pattern is enough: "IF" passes for "TIF" and "GIF". Meant so.
  return pDateifilter == "*.*"_L1 || pDateifilter.contains(text::UCase(endung));
}

std::int32_t frm_BilderSuchen::Zaehle_Dateien(const QString& pPfad, const QString& pMuster) {
  const QStringList namen = sichtbare_Dateien(mit_Trenner(pPfad), pMuster);
  return static_cast<std::int32_t>(
      std::count_if(namen.begin(), namen.end(), [this](const QString& name) { return passt(endung_von(name)); }));
}

void frm_BilderSuchen::Show_Folder_Content(const QString& pPfad, const QString& pMuster) {
  const std::uint32_t lesung = ++m_Lesung;
  mauszeiger().form(Zeigerform::Sanduhr);
  fehler::still_enden([&] { lies_Ordner(mit_Trenner(pPfad), pMuster); });
  // A read that a newer one took over leaves the window to it.
  if (lesung != m_Lesung && isVisible()) return;
  SSP_Fortschritt.Visible(false);
  mauszeiger().form(Zeigerform::Standard);
}

void frm_BilderSuchen::lies_Ordner(const QString& ordner, const QString& muster) {
  const std::uint32_t lesung = m_Lesung;
  lvwContent.MultiSelect(MultiSelect);
  lvwContent.Clear();
  lvwContent.Tag = ordner;
  const QStringList namen = sichtbare_Dateien(ordner, muster);
  m_Teiler = std::max(Zaehle_Dateien(ordner, muster) - 1, 0);
  m_Nummer = 0;
  m_Duldsam = false;
  lvwContent.Icons(nullptr);
  entferne_Vorschaubilder();
  if (!namen.isEmpty()) {
    SSP_Fortschritt.FloodPercent(0);
    SSP_Fortschritt.Visible(true);
    ereignispumpe().verarbeite_anstehende();
    if (lesung != m_Lesung) return;
    lvwContent.Visible(false);
    SSP_Liste.Visible(true);
    const bool eigene = lies_Dateien(ordner, namen, lesung);
    // Also after a read that a newer one ended: that one may have found nothing, and touched neither list.
    SSP_Liste.Visible(false);
    lvwContent.Visible(true);
    if (!eigene) return;
  }
  SSP_Anzahl.Caption(QString::number(lvwContent.Count()) + u" Objekt(e)"_s);
}

bool frm_BilderSuchen::lies_Dateien(const QString& ordner, const QStringList& namen, std::uint32_t lesung) {
  m_Vorlauf.gib_auf();
  const auto fertig = qScopeGuard([&] {
    if (lesung == m_Lesung) m_Vorlauf.gib_auf();
  });
  for (const QString& name : namen.first(std::min(Voraus, namen.size()))) sage_an(ordner, name);
  for (qsizetype i = 0; i < namen.size(); ++i) {
    const QString& name = namen[i];
    ereignispumpe().verarbeite_anstehende();
    if (lesung != m_Lesung) return false;
    if (pEinlesenAbbrechen) {
      pEinlesenAbbrechen = false;
      break;
    }
    if (i + Voraus < namen.size()) sage_an(ordner, namen[i + Voraus]);
    if (passt(endung_von(name))) fuege_Datei_ein(ordner, name);
  }
  return true;
}

void frm_BilderSuchen::sage_an(const QString& ordner, const QString& name) {
  if (!passt(endung_von(name)) || !vorschaubild::ist_Bildtyp(endung_von(name))) return;
  m_Vorlauf.datei(ordner + name, [dichte = devicePixelRatioF()](QSize groesse) {
    return vorschaubild::ziel_auf_Blatt(groesse, Vorschauseite, Vorschauseite, false, dichte);
  });
}

void frm_BilderSuchen::fuege_Datei_ein(const QString& ordner, const QString& name) {
  const int eintrag = lvwContent.Add(name, ordner + name);
  const QString endung = text::LCase(endung_von(name));
  const int bekannt = vorschaubild::ist_Bildtyp(endung) ? 0 : ilsImages.Suche(typschluessel(endung));
  if (bekannt == 0) {
    gib_Bild(eintrag, ordner + name, endung);
    return;
  }
  lvwContent.Icons(&ilsImages);
  lvwContent.Icon(eintrag, bekannt);
}

// A failure on the very first image ends the read; from then on each is marked on its entry.
void frm_BilderSuchen::gib_Bild(int eintrag, const QString& pfad, const QString& endung) {
  const bool bild = vorschaubild::ist_Bildtyp(endung);
  const QString schluessel = bild ? name_von(pfad) : typschluessel(endung);
  const auto nimm = [&] {
    ilsImages.Add(schluessel, Create_Picture(pfad, Vorschauseite, Vorschauseite));
    // The bar is set twice for these; meant so, and no step further.
    if (schluessel != endung && !bild) zeige_Fortschritt();
  };
  if (!m_Duldsam) {
    nimm();
    m_Duldsam = true;
  } else {
    fehler::Weiter weiter;
    if (!weiter(nimm)) lvwContent.Text(eintrag, lvwContent.Text(eintrag) + u" (Ungültig)"_s);
  }
  zeige_Fortschritt();
  ++m_Nummer;
  lvwContent.Icons(&ilsImages);
  lvwContent.Icon(eintrag, ilsImages.Count());
}

void frm_BilderSuchen::zeige_Fortschritt() {
  // The filter may have changed in the middle of the read: the count is then another one.
  if (m_Nummer <= 0 || m_Teiler <= 0) return;
  SSP_Fortschritt.FloodPercent(std::min(100.0, 100.0 / m_Teiler * m_Nummer));
  SSP_Fortschritt.repaint();
}

void frm_BilderSuchen::entferne_Vorschaubilder() {
  for (int i = ilsImages.Count(); i >= 1; --i)
    if (vorschaubild::ist_Bildtyp(endung_von(ilsImages.Key(i)))) ilsImages.Remove(i);
}

QIcon frm_BilderSuchen::Create_Picture(const QString& pDatei, double pBreite, double pHoehe) {
  return QIcon(QPixmap::fromImage(vorschaubild::zeichne_Datei(
      pDatei, pBreite, pHoehe, Pic_Blank.Picture(), mod_GrafikKonvert::m_GdiAktiv, devicePixelRatioF())));
}

// ── Texts ───────────────────────────────────────────────────────────────────────────────────────────────────────────

QString frm_BilderSuchen::Textdatei(const QString& tag) const {
  using mod_BilderSuchen::Fkt_SplitFileName;
  return Fkt_SplitFileName(tag, 1) + Bilddatei{Fkt_SplitFileName(tag, 2), Fkt_SplitFileName(tag, 3)}.textdatei();
}

// A text that can't be read is none: the search stays open for the other files.
void frm_BilderSuchen::lvwContent_ItemClick(int eintrag) {
  txt_Info.Text(QString());
  const QString datei = Textdatei(lvwContent.ItemTag(eintrag));
  fehler::Weiter weiter;
  weiter([&] {
    if (mod_BilderSuchen::Fkt_FileExists(datei)) txt_Info.Text(text::Trim(mod_BilderSuchen::Fkt_ReadFile(datei)));
  });
}

// The last entry is not looked at: the bound is one short, and callers count on it.
void frm_BilderSuchen::speichere_Text() {
  if (text::Trim(txt_Info.Text()).isEmpty()) return;
  for (int i = 1; i <= lvwContent.Count() - 1; ++i)
    if (lvwContent.Selected(i)) mod_BilderSuchen::Fkt_WriteFile(Textdatei(lvwContent.ItemTag(i)), txt_Info.Text());
}

// ── Chosen files ────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BilderSuchen::uebernimm() {
  for (int i = 1; i <= lvwContent.Count(); ++i) {
    if (!lvwContent.Selected(i) || !pFindArray) continue;
    fuelle_Zeile(*pFindArray, pFindArray->UpperBound(Dimension::Zeilen), lvwContent.ItemTag(i));
    pFindArray->AppendRows(1);
  }
  Hide();
}
void frm_BilderSuchen::bearbeite() {
  QString datei;
  if (const int eintrag = lvwContent.SelectedItem(); eintrag > 0) datei = text::Trim(lvwContent.ItemTag(eintrag));
  mod_GrafikKonvert::Fkt_OpenWith(datei);
}

// The session of the dialog's start ends here: later pictures are loaded without one.
void frm_BilderSuchen::drehe() {
  using namespace mod_GrafikKonvert;
  QStringList gewaehlte;
  for (int i = 1; i <= lvwContent.Count(); ++i)
    if (lvwContent.Selected(i)) gewaehlte.append(text::Trim(lvwContent.ItemTag(i)));
  if (gewaehlte.isEmpty()) return;
  const auto beende = [this] {
    beende_GdiSitzungen();
    m_GdiAktiv = false;
  };
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& /*fehler*/) {
    MsgBox(u"Bild konnte nicht bearbeitet werden!"_s, Knoepfe::OK, Symbol::Keins, u"Achtung"_s);
    beende();
      },
      [&] {
    starte_GdiSitzung();
    if (m_GdiAktiv) drehe_Dateien(gewaehlte);
    Show_Folder_Content(Dir1.Path(), u"*.*"_s);
    beende();
  });
}

void frm_BilderSuchen::drehe_Dateien(const QStringList& dateien) {
  constexpr std::int32_t Rechts = 13;
  for (const QString& datei : dateien) {
    const bool gedreht = mod_GrafikKonvert::Fkt_Bild_Drehen(datei, Rechts);
    bildereignis::melde({Bildereignis::Tat::Drehen, gedreht, {}, {}, {}, {}, {}, {}, datei});
    if (!gedreht) MsgBox(u"Das rotieren der JPG ist fehlgeschlagen."_s, Knoepfe::OK, Symbol::Keins, u"Error"_s);
  }
}
