#include "component/weg/Ablage.h"

#include "component/weg/Satz.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "store/Bildnamen.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The failure's words, or none.
template <class Anweisung>
std::optional<QString> versuche(Anweisung&& anweisung) {
  std::optional<QString> grund;
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { grund = f.Beschreibung(); },
      [&] {
    anweisung();
    return true;
  });
  return grund;
}

}  // namespace

namespace weg::ablage {

bool ist_da(const QString& wurzel, const clsBilderSpeicher& satz) {
  return FileSystemObject().FileExists(dateipfad(wurzel, satz));
}

std::optional<QString> kopiere(const QString& wurzel, const QString& quelle, const clsBilderSpeicher& satz) {
  const QString ordner = wurzel + u'\\' + satz.Bild_Pfad;
  return versuche([&] {
    if (!FileSystemObject().FolderExists(ordner)) mod_BilderSuchen::Fkt_MakePath(ordner);
    FileSystemObject().CopyFile(quelle, dateipfad(wurzel, satz), false);
  });
}

std::optional<QString> schreibe_Text(const QString& wurzel, const clsBilderSpeicher& satz, const QString& text) {
  const QString datei =
      wurzel + u'\\' + satz.Bild_Pfad + u'\\' + bildnamen::textdatei(satz.Bild_Bildname, satz.Bild_BildExt);
  return mod_BilderSuchen::Fkt_WriteFile(datei, text) ? std::nullopt
                                                      : std::optional(u"„%1“ ist nicht zu schreiben"_s.arg(datei));
}

QString einwand_Groesse(const QString& wurzel, const clsBilderSpeicher& satz, std::int64_t groesse) {
  if (groesse < 0) return {};
  std::int64_t ist = groesse;
  if (versuche([&] { ist = ::dateien::FileLen(dateipfad(wurzel, satz)); }) || ist == groesse) return {};
  return u"Die Datei in der Bildablage hat %1 statt %2 Bytes. Sehen Sie das Bild an; stimmt es nicht, entfernen Sie es "
         "und hängen Sie es neu an."_s.arg(ist)
             .arg(groesse);
}

}  // namespace weg::ablage
