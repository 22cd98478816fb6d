#include "platform/files/wirt/Namenswechsel.h"

#include <sys/stat.h>
#include <unistd.h>

#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Stand.h"
#include "platform/files/Umbenennen.h"

namespace {

bool sind_eine(const QString& a, const QString& b) {
  const stand::Stand links = stand::von(a);
  const stand::Stand rechts = stand::von(b);
  return links.ist_Datei() && rechts.ist_Datei() && links.info.st_dev == rechts.info.st_dev &&
      links.info.st_ino == rechts.info.st_ino;
}

bool verdoppelt(const QString& alt, const QString& neu) {
  const stand::Stand quelle = stand::von(alt);
  // A name that differs in case alone is in the way too: both would mean the same picture.
  if (!quelle.ist_Datei() || stand::von(neu).vorhanden()) return false;
  // A name that its folder does not let go would stay beside the new one for ever.
  if (!FileSystemObject().darf_loeschen(alt)) return false;
  const QByteArray nach = Pfadkarte::aktuell().maschinenpfad_neu(neu);
  if (::link(quelle.ort.constData(), nach.constData()) != 0) return false;
  // Some mounts give each name a number of its own; later nobody could tell whether both are still one file.
  if (!sind_eine(alt, neu)) return ::unlink(nach.constData()), false;
  umbenennen::sichere_Ordner(umbenennen::ordner_von(nach));
  return true;
}

}  // namespace

Namenswechsel::Namenswechsel(QString alt, QString neu) : alt_(std::move(alt)), neu_(std::move(neu)) {
  if (fehler::still_enden([&] { return verdoppelt(alt_, neu_); })) namen_ = Namen::Beide;
}

void Namenswechsel::behalte(Namen welchen) {
  if (sind_eine(alt_, neu_)) FileSystemObject().DeleteFile(welchen == Namen::Neuer ? alt_ : neu_, true);
  namen_ = welchen;
}

void Namenswechsel::benenne() {
  if (namen_ != Namen::Alter) return;
  FileSystemObject().MoveFile(alt_, neu_);
  namen_ = Namen::Neuer;
}

void Namenswechsel::vollende() {
  if (namen_ == Namen::Beide) return behalte(Namen::Neuer);
  benenne();
}

void Namenswechsel::nimm_zurueck() {
  if (namen_ == Namen::Beide) return behalte(Namen::Alter);
  if (namen_ == Namen::Neuer) FileSystemObject().MoveFile(neu_, alt_);
  namen_ = Namen::Alter;
}
