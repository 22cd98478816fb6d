// Drives, folders, filter, and the dialog's start and end.
#include <QHideEvent>
#include <utility>

#include "dialogs/search/frm_BilderSuchen.h"
#include "imaging/mod_GrafikKonvert.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/Laufwerke.h"
#include "platform/gdiplus/gdiplus.h"
#include "platform/host/Oberflaeche.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Alle = u"*.*"_s;

/// A name with its first letter in upper case and the others in lower case.
QString wie_ein_Wort(const QString& name) {
  return text::UCase(text::Left(name, 1)) + text::LCase(name.mid(1));
}

QString bis_zum_Nullzeichen(const QString& puffer) {
  const qsizetype null = puffer.indexOf(QChar(0));
  return null < 0 ? puffer : puffer.left(null);
}

QString ohne_fuehrende_Blanks(const QString& text) {
  qsizetype i = 0;
  while (i < text.size() && text[i] == u' ') ++i;
  return text.mid(i);
}

/// A letter tells a floppy from a removable disk, and the first fixed disk from later ones.
int laufwerksbild(std::int32_t typ, QChar buchstabe) {
  const bool vorn = buchstabe < u'D';
  switch (typ) {
    case laufwerke::Wechsel:
      return vorn ? 12 : 16;
    case laufwerke::Fest:
      return vorn ? 14 : 19;
    case laufwerke::Netz:
      return 17;
    default:
      return 15;
  }
}

}  // namespace

void frm_BilderSuchen::Lade_Laufwerke() {
  laufwerke::Anbieter& anbieter = laufwerke::aktuell();
  ImageCombo1.Clear();
  anbieter.sieh_nach();
  for (char16_t buchstabe = u'A'; buchstabe <= u'Z'; ++buchstabe) {
    const QString root = QString(QChar(buchstabe)) + u":\\"_s;
    const std::int32_t typ = anbieter.GetDriveType(root);
    if (typ < laufwerke::Wechsel || typ > laufwerke::CdRom) continue;
    QString name;
    if (typ == laufwerke::Netz) {
      name = Hole_Netzname(root);
    } else if (typ == laufwerke::Wechsel && buchstabe < u'D') {
      name = u"3,5-Diskette"_s;
    } else {
      name = Hole_Volumename(root);
      if (name.isEmpty() && typ == laufwerke::Wechsel) name = u"Wechseldatenträger"_s;
    }
    const int bild = laufwerksbild(typ, QChar(buchstabe));
    ImageCombo1.Add(root, ohne_fuehrende_Blanks(name + u" ("_s + root.left(2) + u')'), bild,
        ImageList1.Image(ImageList1.Suche(QString::number(bild))));
  }
  ImageCombo1.waehle(text::UCase(text::Left(anbieter.aktuelles_Verzeichnis(), 3)));
}

QString frm_BilderSuchen::Hole_Volumename(const QString& root) {
  QString bezeichnung;
  if (!laufwerke::aktuell().GetVolumeInformation(root, bezeichnung)) return {};
  return text::Trim(wie_ein_Wort(bis_zum_Nullzeichen(bezeichnung)));
}

QString frm_BilderSuchen::Hole_Netzname(const QString& root) {
  const QString leer(256, u' ');
  fehler::Weiter weiter;
  QString puffer = leer;
  std::int32_t ergebnis = -1;
  weiter([&] { ergebnis = laufwerke::aktuell().WNetGetConnection(root.left(2), puffer); });
  if (ergebnis != 0) return leer;
  const QString ziel = bis_zum_Nullzeichen(puffer);
  if (!ziel.startsWith(u"\\\\"_s)) return ziel;
  const qsizetype trenner = ziel.indexOf(u'\\', 2);
  if (trenner < 0) return ziel;
  return ziel.mid(trenner + 1) + u" auf \""_s + wie_ein_Wort(ziel.mid(2, trenner - 2)) + u'"';
}

// A label with a colon in it yields a wrong drive, and nothing happens; nor for a drive that is not ready.
void frm_BilderSuchen::ImageCombo1_Click() {
  fehler::Weiter weiter;
  weiter([&] {
    const QString text = ImageCombo1.gewaehlter_Text();
    const qsizetype doppelpunkt = text.indexOf(u':');
    if (doppelpunkt >= 1) Dir1.Path(text.mid(doppelpunkt - 1, 2));
  });
}

void frm_BilderSuchen::Dir1_Change() {
  mod_BilderSuchen::pLetzterOrdner = Dir1.Path();
  Show_Folder_Content(Dir1.Path(), Alle);
}

void frm_BilderSuchen::cbo_BildTypen_Click() {
  static const QStringList Muster{Alle, u"*.BMP|*.JPG|*.GIF|*.TIF"_s, u"*.BMP"_s, u"*.JPG"_s, u"*.GIF"_s, u"*.TIF"_s};
  pDateifilter = Muster.value(cbo_BildTypen.ListIndex());
  if (!pLaedt) Show_Folder_Content(Dir1.Path(), Alle);
}

void frm_BilderSuchen::melde_GdiFehler() {
  MsgBox(u"GDI+ not inizialized."_s, Knoepfe::OK, Symbol::Keins, u"GDI Error"_s);
}

bool frm_BilderSuchen::starte_GdiSitzung() {
  using namespace mod_GrafikKonvert;
  m_GdiAktiv = false;
  m_GdiStatus = Fkt_GdiStartup(1);
  if (m_GdiStatus == gdiplus::Ok) {
    m_GdiAktiv = true;
    ++m_Sitzungen;
  } else {
    melde_GdiFehler();
  }
  return m_GdiAktiv;
}

void frm_BilderSuchen::beende_GdiSitzungen() {
  using namespace mod_GrafikKonvert;
  fehler::Weiter weiter;
  for (; m_Sitzungen > 0; --m_Sitzungen) weiter([] { m_GdiStatus = Fkt_GdiShutdown(); });
}

void frm_BilderSuchen::Form_Load() {
  Caption(u"Bilder suchen"_s);
  pEinlesenAbbrechen = false;
  SSP_Liste.Visible(false);
  starte_GdiSitzung();
  pLaedt = true;
  for (const QString& typ :
      {u"Alle Dateien (*.*)"_s, u"Alle Bild-Dateien (*.bmp; *.jpg; *.gif; *.tif)"_s, u"Windows Bitmap (*.bmp)"_s,
          u"JPEG-Dateien (*.jpg)"_s, u"CompuServe Bitmap (*.gif)"_s, u"Tagged Image File Format (*.tif)"_s})
    cbo_BildTypen.AddItem(typ);
  cbo_BildTypen.ListIndex(1);
  Lade_Laufwerke();
  ImageCombo1_Click();
}

// The folder list raises its change only for a real one: a later activation does not read the folder again. Where the
// dialog opens in the folder that the list starts in, there is no change, and the folder is read all the same.
void frm_BilderSuchen::Form_Activate() {
  fehler::Weiter weiter;
  weiter([&] { ereignispumpe().verarbeite_anstehende(); });
  // The window may have been left while it was being painted.
  if (!isVisible()) return;
  bool am_Ziel = false;
  if (!text::Trim(mod_BilderSuchen::pLetzterOrdner).isEmpty()) {
    am_Ziel = weiter([&] { Dir1.Path(mod_BilderSuchen::pLetzterOrdner); });
  } else {
    // The hidden drive list stands on the drive of the current directory.
    weiter([&] { Dir1.Path(text::Left(laufwerke::aktuell().aktuelles_Verzeichnis(), 2)); });
    am_Ziel = weiter([&] { Dir1.Path(text::Trim(pRootpath).isEmpty() ? u"C:\\"_s : pRootpath); });
  }
  if (pLaedt && am_Ziel && m_Lesung == 0) weiter([&] { Dir1_Change(); });
  pLaedt = false;
}

void frm_BilderSuchen::Form_QueryUnload(bool& Cancel) {
  Cancel = false;
  raeume_auf();
}

// It may come in the middle of a turn's read, which then has nothing left to end.
void frm_BilderSuchen::raeume_auf() {
  if (std::exchange(m_Aufgeraeumt, true)) return;
  if (mod_GrafikKonvert::m_GdiAktiv) beende_GdiSitzungen();
  lvwContent.Icons(nullptr);
  ilsImages.Clear();
  Hide();
  pFindArray.reset();
}

// A read that is running has nobody left to read for. A window that is only iconified will be looked at again.
void frm_BilderSuchen::hideEvent(QHideEvent* ereignis) {
  if (!ereignis->spontaneous()) ++m_Lesung;
  Form::hideEvent(ereignis);
}
