#include "platform/files/Pfadkarte.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QVarLengthArray>
#include <algorithm>
#include <optional>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/files/Verzeichnis.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool ist_Laufwerk(QStringView name) {
  return name.size() == 2 && name[1] == u':' &&
      ((name[0] >= u'A' && name[0] <= u'Z') || (name[0] >= u'a' && name[0] <= u'z'));
}

bool ist_Freigabe(const QString& name) {
  const QStringList teile = name.mid(2).split(u'\\');
  return name.startsWith("\\\\"_L1) && teile.size() == 2 && !teile[0].isEmpty() && !teile[1].isEmpty();
}

bool vorhanden(const QByteArray& pfad) {
  struct stat info {};
  return ::lstat(pfad.constData(), &info) == 0;
}

QByteArray verbinde(const QByteArray& ordner, const QByteArray& name) {
  return ordner.endsWith('/') ? ordner + name : ordner + '/' + name;
}

/// The name without the dots and blanks at its end; a name of nothing else stays.
QString ohne_Ende(const QString& name) {
  qsizetype laenge = name.size();
  while (laenge > 0 && (name[laenge - 1] == u'.' || name[laenge - 1] == u' ')) --laenge;
  return laenge == 0 ? name : name.left(laenge);
}

/// One level down: the entry that the name means, or the form in which it would be made.
QByteArray steige_ab(const QByteArray& ordner, const QString& name) {
  const QByteArray genau = verbinde(ordner, QFile::encodeName(name));
  if (vorhanden(genau)) return genau;
  if (const auto treffer = verzeichnis::suche_ohne_Schreibung(ordner, name)) return verbinde(ordner, *treffer);
  const QString gekuerzt = ohne_Ende(name);
  if (gekuerzt.size() == name.size()) return genau;
  return steige_ab(ordner, gekuerzt);
}

// Paths are resolved for every picture of a strip at every scroll step: levels are views, not texts of their own.
using Ebenen = QVarLengthArray<QStringView, 16>;

/// The levels of a text with backslashes, "." and ".." resolved.
Ebenen ebenen_von(QStringView rest) {
  Ebenen ebenen;
  for (const QStringView teil : rest.tokenize(u'\\', Qt::SkipEmptyParts)) {
    if (teil == u".") continue;
    if (teil != u"..")
      ebenen.append(teil);
    else if (!ebenen.isEmpty())
      ebenen.removeLast();
  }
  return ebenen;
}

QByteArray ohne_Nachsehen(const QString& wurzel, const Ebenen& ebenen) {
  QString ort;
  ort.reserve(wurzel.size() + 256);  // seldom more, so that one memory serves
  ort += wurzel;
  for (const QStringView ebene : ebenen) {
    if (!ort.endsWith(u'/')) ort += u'/';
    ort += ebene;
  }
  return QFile::encodeName(ort);
}

QByteArray steige_ab(const QString& wurzel, const Ebenen& ebenen) {
  // Nearly always the path is there as asked for: one look instead of one for each level.
  const QByteArray genau = ohne_Nachsehen(wurzel, ebenen);
  if (vorhanden(genau)) return genau;
  QByteArray ordner = QFile::encodeName(wurzel);
  for (const QStringView ebene : ebenen) ordner = steige_ab(ordner, ebene.toString());
  return ordner;
}

}  // namespace

Pfadkarte& Pfadkarte::aktuell() {
  static Pfadkarte karte;
  return karte;
}

const Pfadkarte::Eintrag* Pfadkarte::suche(QStringView name) const {
  const auto treffer = std::find_if(eintraege_.begin(), eintraege_.end(),
      [&](const Eintrag& eintrag) { return name.compare(eintrag.name, Qt::CaseInsensitive) == 0; });
  return treffer == eintraege_.end() ? nullptr : &*treffer;
}

void Pfadkarte::setze(const QString& laufwerk_oder_Freigabe, const QString& ordner) {
  if (!ist_Laufwerk(laufwerk_oder_Freigabe) && !ist_Freigabe(laufwerk_oder_Freigabe))
    throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
  entferne(laufwerk_oder_Freigabe);
  eintraege_.append({laufwerk_oder_Freigabe, QDir::cleanPath(QDir::current().absoluteFilePath(ordner))});
}

void Pfadkarte::entferne(const QString& laufwerk_oder_Freigabe) {
  eintraege_.removeIf(
      [&](const Eintrag& eintrag) { return eintrag.name.compare(laufwerk_oder_Freigabe, Qt::CaseInsensitive) == 0; });
}

std::optional<QString> Pfadkarte::ordner(const QString& laufwerk_oder_Freigabe) const {
  const Eintrag* eintrag = suche(laufwerk_oder_Freigabe);
  return eintrag ? std::optional(eintrag->ordner) : std::nullopt;
}

QStringList Pfadkarte::namen() const {
  QStringList namen;
  for (const Eintrag& eintrag : eintraege_) namen.append(eintrag.name);
  std::stable_partition(namen.begin(), namen.end(), [](const QString& name) { return ist_Laufwerk(name); });
  return namen;
}

QString Pfadkarte::freigabe(const QString& name) const {
  if (const Eintrag* eintrag = suche(name)) return eintrag->ordner;
  if (const auto ort = verzeichnis::einhaengepunkt(name)) return *ort;
  throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
}

Pfadkarte::Zerlegt Pfadkarte::zerlege(const QString& pfad) const {
  if (pfad.isEmpty()) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  if (pfad.contains(QChar(u'\0'))) throw Laufzeitfehler(fehlernummer::UngueltigerDateiname);
  QString s = pfad;
  s.replace(u'/', u'\\');
  if (s.startsWith("\\\\"_L1)) {
    const QStringList teile = s.split(u'\\', Qt::SkipEmptyParts);
    if (teile.size() < 2) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
    const QString ort = freigabe("\\\\"_L1 + teile[0] + u'\\' + teile[1]);
    return {ort, teile.mid(2).join(u'\\')};
  }
  if (ist_Laufwerk(QStringView(s).left(2))) {
    if (const Eintrag* eintrag = suche(QStringView(s).left(2))) return {eintrag->ordner, s.mid(2)};
    if (s[0].toUpper() != u'C') throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
    s.remove(0, 2);
  }
  if (s.startsWith(u'\\')) return {u"/"_s, s};
  const QString hier = QDir::currentPath().replace(u'/', u'\\');
  return {u"/"_s, hier + u'\\' + s};
}

QByteArray Pfadkarte::maschinenpfad(const QString& pfad) const {
  const Zerlegt teile = zerlege(pfad);
  return steige_ab(teile.wurzel, ebenen_von(teile.rest));
}

QByteArray Pfadkarte::genauer_Pfad(const QString& pfad) const {
  const Zerlegt teile = zerlege(pfad);
  return ohne_Nachsehen(teile.wurzel, ebenen_von(teile.rest));
}

QByteArray Pfadkarte::maschinenpfad_neu(const QString& pfad) const {
  const Zerlegt teile = zerlege(pfad);
  Ebenen ebenen = ebenen_von(teile.rest);
  if (ebenen.isEmpty()) return QFile::encodeName(teile.wurzel);
  const QString name = ebenen.last().toString();
  ebenen.removeLast();
  const QByteArray ordner = steige_ab(teile.wurzel, ebenen);
  const QByteArray genau = verbinde(ordner, QFile::encodeName(name));
  return vorhanden(genau) ? genau : verbinde(ordner, QFile::encodeName(ohne_Ende(name)));
}

QString Pfadkarte::tabellenpfad(const QString& maschinenpfad) const {
  const QString pfad = QDir::cleanPath(QDir::current().absoluteFilePath(maschinenpfad));
  const Eintrag* bester = nullptr;
  for (const Eintrag& eintrag : eintraege_) {
    const bool darunter = eintrag.ordner == "/"_L1 || pfad == eintrag.ordner || pfad.startsWith(eintrag.ordner + u'/');
    if (darunter && (!bester || eintrag.ordner.size() > bester->ordner.size())) bester = &eintrag;
  }
  const QString name = bester ? bester->name : u"C:"_s;
  QString rest = bester && bester->ordner != "/"_L1 ? pfad.mid(bester->ordner.size()) : pfad;
  rest.replace(u'/', u'\\');
  return rest.isEmpty() ? name + u'\\' : name + rest;
}
