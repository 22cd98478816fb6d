#include "host/bericht/Berichtskopf.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Einstellungsdatei.h"
#include "host/betrieb/vorgaben/Betriebsvorgaben.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Zeichen = u"Zeichen"_s;

QString zeilenname(qsizetype i) {
  return u"Zeile%1"_s.arg(i + 1);
}

/// A comma in an INI file makes a list of a value.
QString wert(const QSettings& datei, const QString& name) {
  return datei.value(name).toStringList().join(u", "_s).trimmed();
}

Berichtskopf gelesen(const QSettings& datei) {
  QStringList zeilen;
  for (qsizetype i = 0; i < Berichtskopf::Zeilenzahl; ++i) zeilen.append(wert(datei, zeilenname(i)));
  return Berichtskopf::aus(zeilen, wert(datei, Zeichen));
}

struct Datei : Einstellungsdatei {
  Datei() : Einstellungsdatei(u"Berichtskopf"_s) {}
};

}  // namespace

Berichtskopf Berichtskopf::aus(const QStringList& zeilen, const QString& zeichen) {
  Berichtskopf kopf{{}, zeichen};
  for (const QString& zeile : zeilen) kopf.zeilen.append(zeile.trimmed());
  while (!kopf.zeilen.isEmpty() && kopf.zeilen.last().isEmpty()) kopf.zeilen.removeLast();
  return kopf;
}

Berichtskopf Berichtskopf::aus_Datei(const QString& pfad) {
  const QFileInfo ort(pfad);
  const QSettings datei(ort.absoluteFilePath(), QSettings::IniFormat);
  // Asking makes it read; a missing file alone is no failure to it.
  Berichtskopf kopf = gelesen(datei);
  if (!ort.isFile() || !ort.isReadable() || datei.status() != QSettings::NoError)
    throw Abbruch(Ausgang::Datei, u"Der Briefkopf „%1“ ist nicht zu lesen."_s.arg(pfad));
  if (kopf.zeichen.isEmpty()) return kopf;
  kopf.zeichen = ort.absoluteDir().absoluteFilePath(kopf.zeichen);
  if (!QFileInfo(kopf.zeichen).isFile())
    throw Abbruch(Ausgang::Datei, u"Das Zeichen „%1“ des Briefkopfs gibt es nicht."_s.arg(kopf.zeichen));
  return kopf;
}

Berichtskopf Berichtskopf::gemerkter() {
  const Datei datei;
  const Betriebsvorgaben betrieb = Betriebsvorgaben::geltende();
  const bool eigener = datei.contains(zeilenname(0)) || datei.contains(Zeichen);
  if (betrieb.berichtskopf.isEmpty() || (eigener && !betrieb.sperrt(Betriebsvorgaben::Berichtskopf)))
    return gelesen(datei);
  QStringList zeilen;
  for (qsizetype i = 0; i < Zeilenzahl; ++i) zeilen.append(betrieb.berichtskopf.value(zeilenname(i)));
  return aus(zeilen, betrieb.berichtskopf.value(Zeichen));
}

bool Berichtskopf::ist_gesperrt() {
  return Betriebsvorgaben::geltende().sperrt(Betriebsvorgaben::Berichtskopf);
}

void Berichtskopf::merke() const {
  // The firm's own, looked at and not changed, is to follow when the firm changes it.
  if (*this == gemerkter()) return;
  Datei datei;
  for (qsizetype i = 0; i < Zeilenzahl; ++i) datei.setValue(zeilenname(i), zeilen.value(i));
  datei.setValue(Zeichen, zeichen);
}
