#include "host/bericht/Berichtsinhalt.h"

#include <QDateTime>

#include "exif/clsExifInfo.h"
#include "host/bericht/Bildladung.h"
#include "host/betrieb/Ausgang.h"
#include "platform/basic/Text.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace berichtsinhalt {
namespace {

/// DateTimeOriginal of Exif 2.32.
constexpr std::int32_t Aufnahmezeit = 36867;

/// "Aufgenommen am 05.03.2024 um 14:22 Uhr", or nothing where the picture does not tell.
QString aufnahmedatum(const QString& pfad) {
  QString text;
  gelingt([&] {
    clsExifInfo exif;
    if (exif.Load(pfad)) text = CStr(exif.Tag(Aufnahmezeit));
  });
  const QDateTime zeit = QDateTime::fromString(text.left(19), u"yyyy:MM:dd HH:mm:ss"_s);
  return zeit.isValid() ? zeit.toString(u"'Aufgenommen am 'dd.MM.yyyy' um 'HH:mm' Uhr'"_s) : QString();
}

QString info_von(clsBildZuordnungen& store, const Bilddatei& datei) {
  if (!store.Fkt_FileExists(datei.textpfad())) return {};
  return text::Trim(store.Fkt_ReadFile(datei.textpfad()));
}

Berichtsbild bild_von(clsBildZuordnungen& store, const QString& wurzel, const Berichtswahl& wahl, Bildladung& ladung) {
  const Bilddatei datei = Bilddatei::von(*store.AktBildObj, wurzel);
  Berichtsbild bild{datei.ordner, datei.datei(), store.Bild_DruckGesamteSeite(), store.Bild_NeueSeite(),
      store.Bild_AlsAnhang(), store.Bild_Beschreibung(), {}, {}, {}, {}};
  const bool unten = Bilddatei::liegt_unter_Wurzel(*store.AktBildObj);
  // Nothing is looked at out of the root; a report shows such a picture as missing.
  if (unten)
    ladung.miss(bild);
  else
    bild.grund = u"Die Datei fehlt."_s;
  if (wahl.mit_Info && unten) bild.info = info_von(store, datei);
  QStringList klein;
  if (wahl.mit_Dateiname) klein.append(bild.datei);
  if (wahl.mit_Aufnahmedatum && bild.grund.isEmpty()) klein.append(aufnahmedatum(datei.pfad()));
  klein.removeAll(QString());
  bild.kleingedrucktes = klein.join(u" · "_s);
  return bild;
}

}  // namespace

Bericht lies(clsBildZuordnungen& store, const QString& wurzel, const QString& vorgang, const Berichtswahl& wahl,
    const Fortgang& fortgang) {
  Bericht bericht;
  bericht.vorgang = vorgang;
  bericht.datum = QDate::currentDate();
  bericht.anlagen_auf_neuer_Seite = store.Pruefe_naechstes_Bild_neueSeite(-1);
  Bildladung ladung;
  const std::int32_t anzahl = store.AnzahlPos();
  for (std::int32_t zeile = 0; zeile < anzahl; ++zeile) {
    store.AktInd(zeile);
    if (store.AktBildObj && (wahl.alle || store.Bild_Drucken()))
      bericht.bilder.push_back(bild_von(store, wurzel, wahl, ladung));
    if (fortgang && !fortgang(static_cast<std::size_t>(zeile) + 1, static_cast<std::size_t>(anzahl))) break;
  }
  bericht.ohne_Bilder = anzahl == 0 ? u"Zu diesem Vorgang gibt es keine Bilder."_s
                                    : u"Zu diesem Vorgang ist kein Bild zum Drucken gekennzeichnet."_s;
  return bericht;
}

}  // namespace berichtsinhalt
