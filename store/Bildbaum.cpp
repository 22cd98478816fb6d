#include "store/Bildbaum.h"

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"

namespace {

QString pfad_von(const QString& ordner, const QString& name) {
  return ordner + u'\\' + name;
}

/// A missing name is looked up without these once more.
QString ohne_Punkte_am_Ende(QString name) {
  while (name.endsWith(u'.') || name.endsWith(u' ')) name.chop(1);
  return name;
}

}  // namespace

Bildbaum::~Bildbaum() = default;

QStringList Bildbaum::Files(const QString& ordner) {
  return FileSystemObject().GetFolder(ordner).Files();
}

bool Bildbaum::FileExists(const QString& ordner, const QString& name) {
  // A text must not go because the share that holds its picture can't be asked.
  return !dateien::fehlt_gewiss(pfad_von(ordner, name));
}

bool Bildbaum::ist_leer(const QString& ordner) {
  return FileSystemObject().GetFolder(ordner).Anzahl_Eintraege() == 0;
}

void Bildbaum::DeleteFile(const QString& ordner, const QString& name, Aufraeumposten::Grund) {
  FileSystemObject().DeleteFile(pfad_von(ordner, name), true);
}

void Bildbaum::DeleteFolder(const QString& ordner) {
  FileSystemObject().DeleteFolder(ordner, true);
}

QStringList Gedachter_Bildbaum::Files(const QString& ordner) {
  const Pfadkarte& karte = Pfadkarte::aktuell();
  uebrige_.clear();
  QStringList namen;
  for (const QString& name : FileSystemObject().GetFolder(ordner).Files()) {
    if (weg_.contains(karte.genauer_Pfad(pfad_von(ordner, name)))) continue;
    ++uebrige_[text::UCase(name)];
    namen.append(name);
  }
  return namen;
}

bool Gedachter_Bildbaum::FileExists(const QString& ordner, const QString& name) {
  const QString pfad = pfad_von(ordner, name);
  if (!Bildbaum::FileExists(ordner, name)) return false;
  if (!weg_.contains(Pfadkarte::aktuell().maschinenpfad(pfad))) return true;
  // Without it, the name would lead to one that differs from it in case.
  return uebrige_.value(text::UCase(name)) > 0 || uebrige_.value(text::UCase(ohne_Punkte_am_Ende(name))) > 0;
}

bool Gedachter_Bildbaum::ist_leer(const QString& ordner) {
  return FileSystemObject().GetFolder(ordner).Anzahl_Eintraege() == weg_im_Ordner_.value(ordner);
}

void Gedachter_Bildbaum::DeleteFile(const QString& ordner, const QString& name, Aufraeumposten::Grund grund) {
  merke(ordner, name, grund);
  --uebrige_[text::UCase(name)];
}

void Gedachter_Bildbaum::DeleteFolder(const QString& ordner) {
  const qsizetype trenner = ordner.lastIndexOf(u'\\');
  if (trenner >= 0) return merke(ordner.left(trenner), ordner.mid(trenner + 1), Aufraeumposten::Grund::LeererOrdner);
  if (!FileSystemObject().darf_loeschen(ordner)) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  posten_.push_back({ordner, Aufraeumposten::Grund::LeererOrdner});
}

bool Gedachter_Bildbaum::naechste_Datei() {
  if (weiter_ && !angehalten_) angehalten_ = !weiter_(dateien_++);
  return !angehalten_;
}

void Gedachter_Bildbaum::merke(const QString& ordner, const QString& name, Aufraeumposten::Grund grund) {
  const QString pfad = pfad_von(ordner, name);
  if (!FileSystemObject().darf_loeschen(pfad)) throw Laufzeitfehler(fehlernummer::ZugriffVerweigert);
  posten_.push_back({pfad, grund});
  weg_.insert(Pfadkarte::aktuell().genauer_Pfad(pfad));
  ++weg_im_Ordner_[ordner];
}
