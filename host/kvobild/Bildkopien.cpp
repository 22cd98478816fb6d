#include "host/kvobild/Bildkopien.h"

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void kopiere_Datei(const QString& quelle, const QString& ziel) {
  if (const auto grund = versuche([&] { FileSystemObject().CopyFile(quelle, ziel, false); }))
    throw Abbruch(Ausgang::Datei,
        u"„%1“ ist nicht nach „%2“ zu kopieren: %3 (Fehler %4). Nichts ist zugeordnet."_s.arg(
            quelle, ziel, grund->Beschreibung(), QString::number(grund->Nummer())));
}

/// The text file beside a picture: name and extension without the dot, then ".txt".
QString textdatei_von(const QString& bild) {
  const qsizetype name = bild.lastIndexOf(u'\\') + 1;
  return bild.left(name) + namen::zerlege(bild.mid(name)).textdatei();
}

}  // namespace

Bildkopien::~Bildkopien() {
  const FileSystemObject dateien;
  for (const Kopie& kopie : std::as_const(kopien_)) {
    // A copy of a read-only file is read-only too, and is ours all the same.
    if (gelingt([&] { dateien.DeleteFile(kopie.pfad, true); }))
      ausgabe::meldung(u"Die Kopie „%1“ ist wieder entfernt."_s.arg(kopie.pfad));
    else
      ausgabe::meldung(u"Die Kopie „%1“ ist nicht zu entfernen und gehört zu keiner Zuordnung."_s.arg(kopie.pfad));
  }
}

void Bildkopien::kopiere(const QString& quelle, const QString& ordner, const namen::Bilddatei& neu) {
  const QString bild = ordner + u'\\' + neu.datei();
  kopiere_Datei(quelle, bild);
  kopien_.append({neu, bild});
  const QString text = textdatei_von(quelle);
  if (!FileSystemObject().FileExists(text)) return;
  const QString text_neu = ordner + u'\\' + neu.textdatei();
  kopiere_Datei(text, text_neu);
  kopien_.append({neu, text_neu});
}

void Bildkopien::behalte(const namen::Bilddatei& neu) {
  kopien_.removeIf([&](const Kopie& kopie) { return kopie.bild.gleich(neu); });
}
