#include "host/betrieb/aufnahme/Aufnahmequelle.h"

#include <QFileInfo>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/aufnahme/Bildstatus.h"
#include "host/betrieb/aufnahme/Umwandlung.h"
#include "imaging/Bilddrehung.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What stands at a place that holds no file that can be opened.
void pruefe_Ort(const QString& ort) {
  const QFileInfo info(ort);
  if (info.isSymLink() && !info.exists())
    throw Abbruch(Ausgang::Datei, u"„%1“ ist eine Verknüpfung, die ins Leere führt."_s.arg(ort));
  if (info.exists() && !info.isFile() && !info.isDir())
    throw Abbruch(Ausgang::Datei, u"„%1“ ist keine Datei, sondern ein Gerät oder eine Leitung."_s.arg(ort));
  // The table's paths take a backslash for a separator, and another file might answer to it.
  if (info.exists()) namen::pruefe_Dateiname(info.fileName());
}

bool ist_umzuwandeln(const QString& pfad) {
  return umwandlung::erkenne(dateien::lies_Anfang(pfad, umwandlung::Signaturlaenge)) != umwandlung::Format::Keines;
}

}  // namespace

Aufnahmequelle aufnahmequelle::pruefe(const QString& angabe) {
  const QString pfad = namen::tabellenpfad(angabe);
  const FileSystemObject dateien;
  if (dateien.FolderExists(pfad)) throw Abbruch(Ausgang::Datei, u"„%1“ ist ein Ordner."_s.arg(angabe));
  // The name is checked first: to the path map a name that no share can hold is merely missing.
  const namen::Bilddatei name = namen::zerlege_geprueft(pfad.mid(pfad.lastIndexOf(u'\\') + 1));
  if (!dateien.FileExists(pfad)) throw Abbruch(Ausgang::Datei, u"Die Datei „%1“ gibt es nicht."_s.arg(angabe));
  return {angabe, pfad, name};
}

Aufnahmequelle aufnahmequelle::pruefe_Bild(const QString& ort) {
  pruefe_Ort(ort);
  Aufnahmequelle quelle = pruefe(ort);
  const std::int32_t status = bilddrehung::pruefe(quelle.pfad);
  if (status == 0) return quelle;
  bool umzuwandeln = false;
  if (const auto grund = versuche([&] { umzuwandeln = ist_umzuwandeln(quelle.pfad); }))
    throw Abbruch(Ausgang::Datei, u"„%1“ ist nicht zu lesen: %2"_s.arg(ort, grund->Beschreibung()));
  if (umzuwandeln) return quelle;
  throw Abbruch(Ausgang::Datei, u"„%1“: %2"_s.arg(ort, bildstatus::worte(status)));
}
