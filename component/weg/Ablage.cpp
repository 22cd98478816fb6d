#include "component/weg/Ablage.h"

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "store/Bilddatei.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The failure's words, or none.
template <class Anweisung>
std::optional<QString> versuche(Anweisung&& anweisung) {
  std::optional<QString> grund;
  fehler::melden_und_enden([&](const Laufzeitfehler& f) { grund = f.Beschreibung(); }, anweisung);
  return grund;
}

}  // namespace

namespace weg::ablage {

bool ist_da(const QString& wurzel, const clsBilderSpeicher& satz) {
  return Bilddatei::liegt_unter_Wurzel(satz) && FileSystemObject().FileExists(Bilddatei::von(satz, wurzel).pfad());
}

std::optional<QString> kopiere(const QString& wurzel, const QString& quelle, const clsBilderSpeicher& satz) {
  const Bilddatei ziel = Bilddatei::von(satz, wurzel);
  return versuche([&] {
    if (!FileSystemObject().FolderExists(ziel.ordner)) mod_BilderSuchen::Fkt_MakePath(ziel.ordner);
    FileSystemObject().CopyFile(quelle, ziel.pfad(), false);
  });
}

std::optional<QString> schreibe_Text(const QString& wurzel, const clsBilderSpeicher& satz, const QString& text) {
  const QString datei = Bilddatei::von(satz, wurzel).textpfad();
  if (mod_BilderSuchen::Fkt_WriteFile(datei, text)) return std::nullopt;
  return u"„%1“ ist nicht zu schreiben"_s.arg(datei);
}

QString einwand_Groesse(const QString& wurzel, const clsBilderSpeicher& satz, std::int64_t groesse) {
  if (groesse < 0) return {};
  std::int64_t ist = groesse;
  if (versuche([&] { ist = ::dateien::FileLen(Bilddatei::von(satz, wurzel).pfad()); }) || ist == groesse) return {};
  return u"Die Datei in der Bildablage hat %1 statt %2 Bytes. Sehen Sie das Bild an; stimmt es nicht, entfernen Sie es "
         "und hängen Sie es neu an."_s.arg(QString::number(ist), QString::number(groesse));
}

}  // namespace weg::ablage
