#include "host/betrieb/aufnahme/Bildkopien.h"

#include "host/betrieb/Ausgang.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

template <class Anweisung>
void lege_an(const QString& quelle, const QString& ziel, Anweisung&& anweisung) {
  if (const auto grund = versuche(anweisung))
    throw Abbruch(Ausgang::Datei,
        u"„%1“ ist nicht nach „%2“ zu kopieren: %3 (Fehler %4)."_s.arg(
            quelle, ziel, grund->Beschreibung(), QString::number(grund->Nummer())));
}

void kopiere_Datei(const QString& quelle, const QString& ziel) {
  lege_an(quelle, ziel, [&] { FileSystemObject().CopyFile(quelle, ziel, false); });
}

/// The text file beside a picture: name and extension without the dot, then ".txt".
QString textdatei_von(const QString& bild) {
  const qsizetype name = bild.lastIndexOf(u'\\') + 1;
  return bild.left(name) + namen::zerlege(bild.mid(name)).textdatei();
}

}  // namespace

Bildkopien::~Bildkopien() {
  for (const Kopie& kopie : std::as_const(kopien_)) entferne(kopie);
}

void Bildkopien::entferne(const Kopie& kopie) const {
  // A copy of a read-only file is read-only too, and is ours all the same.
  const bool fort = gelingt([&] { FileSystemObject().DeleteFile(kopie.pfad, true); });
  if (!melde_) return;
  melde_(fort ? u"Die Kopie „%1“ ist wieder entfernt."_s.arg(kopie.pfad)
              : u"Die Kopie „%1“ ist nicht zu entfernen und gehört zu keiner Zuordnung."_s.arg(kopie.pfad));
}

QString Bildkopien::kopiere(const QString& quelle, const QString& ordner, const namen::Bilddatei& neu) {
  const QString bild = ordner + u'\\' + neu.datei();
  kopiere_Datei(quelle, bild);
  kopien_.append({neu, bild});
  return kopiere_Text(quelle, ordner, neu);
}

QString Bildkopien::schreibe(
    const QByteArray& inhalt, const QString& quelle, const QString& ordner, const namen::Bilddatei& neu) {
  const QString bild = ordner + u'\\' + neu.datei();
  lege_an(quelle.isEmpty() ? neu.datei() : quelle, bild, [&] { dateien::schreibe_neu(bild, inhalt, quelle); });
  kopien_.append({neu, bild});
  return quelle.isEmpty() ? QString() : kopiere_Text(quelle, ordner, neu);
}

QString Bildkopien::kopiere_Text(const QString& quelle, const QString& ordner, const namen::Bilddatei& neu) {
  const QString text = textdatei_von(quelle);
  if (!FileSystemObject().FileExists(text)) return {};
  const QString text_neu = ordner + u'\\' + neu.textdatei();
  kopiere_Datei(text, text_neu);
  kopien_.append({neu, text_neu});
  return text_neu;
}

void Bildkopien::behalte(const namen::Bilddatei& neu) {
  kopien_.removeIf([&](const Kopie& kopie) { return kopie.bild.gleich(neu); });
}

void Bildkopien::verwirf(const namen::Bilddatei& neu) {
  for (const Kopie& kopie : std::as_const(kopien_))
    if (kopie.bild.gleich(neu)) entferne(kopie);
  behalte(neu);
}
