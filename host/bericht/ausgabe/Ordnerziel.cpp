#include "host/bericht/ausgabe/Ordnerziel.h"

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

Ordnerziel::~Ordnerziel() {
  const FileSystemObject dateien;
  // A copy of a read-only file is read-only too, and is ours all the same.
  for (const QString& pfad : std::as_const(neue_Dateien_)) gelingt([&] { dateien.DeleteFile(pfad, true); });
  for (const QString& pfad : std::as_const(neue_Ordner_)) gelingt([&] { dateien.DeleteFolder(pfad); });
}

void Ordnerziel::behalte() {
  neue_Dateien_.clear();
  neue_Ordner_.clear();
}

void Ordnerziel::pruefe_Namen(const QString& name) const {
  const QString pfad = ordner_ + u'\\' + name;
  if (FileSystemObject().FileExists(pfad) || FileSystemObject().FolderExists(pfad))
    throw Abbruch(Ausgang::Datei,
        u"„%1“ gibt es im Ordner „%2“ schon; es ist nichts ausgegeben."_s.arg(name, namen::angezeigt(ordner_)));
}

void Ordnerziel::pruefe(const std::vector<Ausgabebild>& bilder) const {
  const FileSystemObject dateien;
  if (dateien.FileExists(ordner_))
    throw Abbruch(Ausgang::Datei,
        u"„%1“ ist eine Datei; das Ziel ist ein Ordner oder eine Datei, die auf „.zip“ endet."_s.arg(
            namen::angezeigt(ordner_)));
  if (!dateien.FolderExists(ordner_)) return;
  for (const Ausgabebild& bild : bilder) {
    pruefe_Namen(bild.name);
    if (!bild.textname.isEmpty()) pruefe_Namen(bild.textname);
  }
}

void Ordnerziel::mache_Ordner() {
  const FileSystemObject dateien;
  QString oben = ordner_;
  while (!oben.isEmpty() && !dateien.FolderExists(oben)) {
    neue_Ordner_.append(oben);
    oben = oben.left(oben.lastIndexOf(u'\\'));
    if (!oben.contains(u'\\')) break;
  }
  if (neue_Ordner_.isEmpty()) return;
  if (!store_.Fkt_MakePath(ordner_) || !dateien.FolderExists(ordner_))
    throw Abbruch(Ausgang::Datei, u"Der Ordner „%1“ ist nicht anzulegen."_s.arg(namen::angezeigt(ordner_)));
}

void Ordnerziel::schreibe_Datei(const QString& name, const QByteArray& bytes, const QString& vorbild) {
  const QString pfad = ordner_ + u'\\' + name;
  if (const auto grund = versuche([&] { dateien::schreibe_neu(pfad, bytes, vorbild); }))
    throw Abbruch(Ausgang::Datei,
        u"„%1“ ist nicht zu schreiben: %2 Es ist nichts ausgegeben."_s.arg(
            namen::angezeigt(pfad), grund->Beschreibung() + u'.'));
  neue_Dateien_.append(pfad);
}

void Ordnerziel::schreibe(const std::vector<Ausgabebild>& bilder, Bildleser& leser) {
  mache_Ordner();
  for (const Ausgabebild& bild : bilder) {
    const auto bytes = leser.lies(bild);
    if (leser.angehalten()) return;
    if (!bytes) continue;
    schreibe_Datei(bild.name, *bytes, bild.quelle);
    if (!bild.textname.isEmpty()) schreibe_Datei(bild.textname, bild.text, {});
  }
}
