#include "host/bericht/ausgabe/Ausgabebild.h"

#include <algorithm>

#include "host/betrieb/Ausgang.h"
#include "platform/basic/Text.h"
#include "platform/files/Dateien.h"
#include "store/Bilddatei.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Stellen_mindestens = 2;

std::vector<std::int32_t> gewaehlte_Zeilen(clsBildZuordnungen& store, const Ausgabewahl& wahl) {
  std::vector<std::int32_t> zeilen;
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    if (!wahl.nur_gekennzeichnete || store.Bild_Drucken()) zeilen.push_back(i);
  }
  return zeilen;
}

/// What the text file beside a picture holds; nothing where there is none.
QString infotext(clsBildZuordnungen& store, const Bilddatei& bild) {
  const QString pfad = bild.textpfad();
  if (!store.Fkt_FileExists(pfad)) return {};
  // The store gives an empty text for one that it can't read.
  if (const auto grund = versuche([&] { dateien::lies_Anfang(pfad, 1); }))
    throw Abbruch(Ausgang::Datei, u"Der Text „%1“ ist nicht zu lesen: %2."_s.arg(pfad, grund->Beschreibung()));
  return store.Fkt_ReadFile(pfad);
}

/// The Drucktext in front, the information below; with the line ends that every system's editors know.
QByteArray zusammengesetzt(const QString& drucktext, const QString& information) {
  QStringList absaetze;
  for (const QString& text : {drucktext, information})
    if (!text::Trim(text).isEmpty()) absaetze.append(text);
  if (absaetze.isEmpty()) return {};
  QString alles = absaetze.join(u"\n\n"_s).replace(u"\r\n"_s, u"\n"_s);
  if (!alles.endsWith(u'\n')) alles += u'\n';
  return alles.replace(u'\n', u"\r\n"_s).toUtf8();
}

/// No folder and no character that another system's names can't have.
QString name_im_Ziel(const QString& nummer, const QString& name) {
  return nummer + u'_' + Bilddatei::ersetze_verbotene(name);
}

}  // namespace

std::vector<Ausgabebild> ausgabebilder::waehle(
    clsBildZuordnungen& store, const QString& wurzel, const Ausgabewahl& wahl) {
  const std::vector<std::int32_t> zeilen = gewaehlte_Zeilen(store, wahl);
  const auto stellen = std::max(Stellen_mindestens, static_cast<int>(QString::number(zeilen.size()).size()));
  std::vector<Ausgabebild> bilder;
  for (const std::int32_t zeile : zeilen) {
    store.AktInd(zeile);
    const QString nummer = u"%1"_s.arg(bilder.size() + 1, stellen, 10, QChar(u'0'));
    const Bilddatei datei = Bilddatei::von(*store.AktBildObj, wurzel);
    const QString ordner = store.Bild_Pfad();
    // Out of the root nothing is read: such a picture is a missing one.
    const bool unten = Bilddatei::liegt_unter_Wurzel(*store.AktBildObj);
    Ausgabebild bild{ordner.isEmpty() ? datei.datei() : ordner + u'\\' + datei.datei(),
        unten ? datei.pfad() : QString(), name_im_Ziel(nummer, datei.datei()), {}, {}};
    if (wahl.texte) bild.text = zusammengesetzt(store.Bild_Beschreibung(), unten ? infotext(store, datei) : QString());
    const bool ist_Text = datei.ext.compare(u"txt"_s, Qt::CaseInsensitive) == 0;
    if (!bild.text.isEmpty()) bild.textname = name_im_Ziel(nummer, ist_Text ? datei.datei() : datei.name) + u".txt"_s;
    bilder.push_back(std::move(bild));
  }
  return bilder;
}

int ausgabebilder::anzahl(clsBildZuordnungen& store, const Ausgabewahl& wahl) {
  return static_cast<int>(gewaehlte_Zeilen(store, wahl).size());
}
