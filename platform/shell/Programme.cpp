#include "platform/shell/Programme.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QMimeDatabase>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace shell {
namespace {

using Gruppe = QHash<QString, QString>;

/// The groups of a file in the desktop's key format; the first value of a repeated key counts.
QHash<QString, Gruppe> lies_Gruppen(const QString& pfad) {
  QHash<QString, Gruppe> gruppen;
  QFile datei(pfad);
  if (!datei.open(QIODevice::ReadOnly)) return gruppen;
  QString gruppe;
  for (const QByteArray& rohzeile : datei.readAll().split('\n')) {
    const QString zeile = QString::fromUtf8(rohzeile).trimmed();
    if (zeile.isEmpty() || zeile.startsWith(u'#')) continue;
    if (zeile.startsWith(u'[') && zeile.endsWith(u']')) {
      gruppe = zeile.mid(1, zeile.size() - 2);
      continue;
    }
    const qsizetype gleich = zeile.indexOf(u'=');
    const QString schluessel = zeile.left(gleich).trimmed();
    if (gleich > 0 && !gruppen[gruppe].contains(schluessel))
      gruppen[gruppe].insert(schluessel, zeile.mid(gleich + 1).trimmed());
  }
  return gruppen;
}

QStringList liste(const QString& wert) {
  return wert.split(u';', Qt::SkipEmptyParts);
}

/// The text with what `ersatz` gives for each character behind a mark, in place of both.
template <class Ersatz>
QString mit_Ersatz(const QString& text, QChar marke, Ersatz ersatz) {
  QString neu;
  for (qsizetype i = 0; i < text.size(); ++i)
    neu += text[i] != marke || i + 1 == text.size() ? QString(text[i]) : ersatz(text[++i]);
  return neu;
}

/// Escapes of a string value.
QString entschluesselt(const QString& wert) {
  return mit_Ersatz(wert, u'\\', [](QChar z) -> QString {
    return z == u's' ? u' ' : z == u'n' ? u'\n' : z == u't' ? u'\t' : z;
  });
}

QString uebersetzt(const Gruppe& gruppe, const QString& schluessel) {
  const QString land = QLocale().name();
  for (const QString& sprache : {land, land.section(u'_', 0, 0)})
    if (const QString wert = gruppe.value(u"%1[%2]"_s.arg(schluessel, sprache)); !wert.isEmpty())
      return entschluesselt(wert);
  return entschluesselt(gruppe.value(schluessel));
}

/// All desktop entries by their identity; what the user has goes before what the system has.
QHash<QString, QString> alle_Eintraege() {
  QHash<QString, QString> eintraege;
  for (const QString& ordner : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
    QDirIterator lauf(ordner, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (lauf.hasNext()) {
      const QString pfad = lauf.next();
      const QString kennung = QDir(ordner).relativeFilePath(pfad).replace(u'/', u'-');
      if (!eintraege.contains(kennung)) eintraege.insert(kennung, pfad);
    }
  }
  return eintraege;
}

struct Zuordnungen {
  QStringList bevorzugte;
  QSet<QString> entfernte;
};

/// What the user and the system have said about a type beside the entries themselves.
Zuordnungen zuordnungen(const QStringList& typen) {
  Zuordnungen z;
  QStringList orte = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
  orte += QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
  // From the user's own to the system's: what an earlier one says about a program, a later one can't take back.
  for (const QString& ort : std::as_const(orte)) {
    const auto gruppen = lies_Gruppen(ort + u"/mimeapps.list"_s);
    for (const QString& gruppe : {u"Default Applications"_s, u"Added Associations"_s})
      for (const QString& typ : typen)
        for (const QString& kennung : liste(gruppen.value(gruppe).value(typ)))
          if (!z.entfernte.contains(kennung)) z.bevorzugte.append(kennung);
    for (const QString& typ : typen)
      for (const QString& kennung : liste(gruppen.value(u"Removed Associations"_s).value(typ)))
        if (!z.bevorzugte.contains(kennung)) z.entfernte.insert(kennung);
  }
  return z;
}

/// The arguments of a value of Exec. Quotes hold an argument together; a backslash in them takes the next character as
/// it stands. None for a quote that does not end.
QStringList zerlegt(const QString& befehl) {
  QStringList teile;
  QString teil;
  bool offen = false;
  bool begonnen = false;
  for (qsizetype i = 0; i < befehl.size(); ++i) {
    const QChar zeichen = befehl[i];
    if (zeichen == u'"') {
      offen = !offen;
      begonnen = true;
    } else if (!offen && (zeichen == u' ' || zeichen == u'\t')) {
      if (begonnen) teile.append(std::exchange(teil, QString()));
      begonnen = false;
    } else {
      teil += offen && zeichen == u'\\' && i + 1 < befehl.size() ? befehl[++i] : zeichen;
      begonnen = true;
    }
  }
  if (offen) return {};
  if (begonnen) teile.append(teil);
  return teile;
}

bool ist_ausfuehrbar(const QString& befehl) {
  const QStringList teile = zerlegt(befehl);
  return !teile.isEmpty() && !QStandardPaths::findExecutable(teile.first()).isEmpty();
}

/// The program of an entry, or one without a name for an entry that is not offered.
Programm lies_Programm(const QString& pfad, const Gruppe& eintrag) {
  const auto ja = [&](const QString& schluessel) { return eintrag.value(schluessel) == u"true"_s; };
  // NoDisplay keeps a program out of menus only: it is how one says that it opens files and nothing else.
  if (eintrag.value(u"Type"_s) != u"Application"_s || ja(u"Hidden"_s) || ja(u"Terminal"_s)) return {};
  const QString befehl = entschluesselt(eintrag.value(u"Exec"_s));
  const QString probe = entschluesselt(eintrag.value(u"TryExec"_s));
  if (!ist_ausfuehrbar(befehl) || (!probe.isEmpty() && QStandardPaths::findExecutable(probe).isEmpty())) return {};
  return {
      uebersetzt(eintrag, u"Name"_s), befehl, eintrag.value(u"Icon"_s), pfad, entschluesselt(eintrag.value(u"Path"_s))};
}

std::shared_ptr<Programmwahl>& in_Kraft() {
  static std::shared_ptr<Programmwahl> dienst;
  return dienst;
}

void warne(const QString& text) {
  using namespace oberflaeche;
  MsgBox(text, Knoepfe::OK, Symbol::Ausrufezeichen, u"Achtung"_s);
}

}  // namespace

Programmwahl::~Programmwahl() = default;

std::shared_ptr<Programmwahl> setze(std::shared_ptr<Programmwahl> dienst) {
  return std::exchange(in_Kraft(), std::move(dienst));
}

QList<Programm> Programme_fuer(const QString& datei) {
  const QMimeType typ = QMimeDatabase().mimeTypeForFile(datei);
  const QStringList typen = QStringList{typ.name()} + typ.aliases() + typ.allAncestors();
  const Zuordnungen z = zuordnungen(typen);
  QList<std::pair<qsizetype, Programm>> gefunden;
  const auto eintraege = alle_Eintraege();
  for (auto e = eintraege.cbegin(); e != eintraege.cend(); ++e) {
    const Gruppe gruppe = lies_Gruppen(e.value()).value(u"Desktop Entry"_s);
    const QStringList kann = liste(gruppe.value(u"MimeType"_s));
    const bool passt = std::any_of(typen.begin(), typen.end(), [&](const QString& t) { return kann.contains(t); });
    const qsizetype vorzug = z.bevorzugte.indexOf(e.key());
    if ((!passt && vorzug < 0) || z.entfernte.contains(e.key())) continue;
    const Programm programm = lies_Programm(e.value(), gruppe);
    if (!programm.name.isEmpty()) gefunden.append({vorzug < 0 ? z.bevorzugte.size() : vorzug, programm});
  }
  std::sort(gefunden.begin(), gefunden.end(), [](const auto& a, const auto& b) {
    if (a.first != b.first) return a.first < b.first;
    return a.second.name.localeAwareCompare(b.second.name) < 0;
  });
  QList<Programm> programme;
  for (const auto& [vorzug, programm] : std::as_const(gefunden)) programme.append(programm);
  return programme;
}

QString als_Argument(const QString& text) {
  QString wert = u"\""_s;
  for (const QChar zeichen : text) {
    if (u"\"`$\\"_s.contains(zeichen)) wert += u'\\';
    if (zeichen == u'%') wert += u'%';
    wert += zeichen;
  }
  return wert + u'"';
}

QStringList Befehlszeile(const Programm& programm, const QString& datei) {
  QStringList zeile;
  bool eingesetzt = false;
  for (const QString& teil : zerlegt(programm.befehl)) {
    if (teil == "%i"_L1) {
      if (!programm.symbol.isEmpty()) zeile += {u"--icon"_s, programm.symbol};
      continue;
    }
    const QString wert = mit_Ersatz(teil, u'%', [&](QChar code) -> QString {
      eingesetzt = eingesetzt || u"fFuU"_s.contains(code);
      if (code == u'f' || code == u'F') return datei;
      if (code == u'u' || code == u'U') return QUrl::fromLocalFile(datei).toString(QUrl::FullyEncoded);
      if (code == u'c') return programm.name;
      if (code == u'k') return programm.eintrag;
      return code == u'%' ? u"%"_s : QString();
    });
    // A field that stands for nothing leaves no empty argument.
    if (!wert.isEmpty() || !teil.startsWith(u'%')) zeile.append(wert);
  }
  if (!zeile.isEmpty() && !eingesetzt) zeile.append(datei);
  return zeile;
}

QString starte(const QStringList& befehlszeile, const QString& verzeichnis) {
  if (befehlszeile.isEmpty()) return {};
  const QString programm = QStandardPaths::findExecutable(befehlszeile.first());
  if (programm.isEmpty()) return {};
  return QProcess::startDetached(programm, befehlszeile.mid(1), verzeichnis) ? programm : QString();
}

QString OpenAs(const QString& datei) {
  if (!FileSystemObject().FileExists(datei)) {
    warne(u"Die Datei „%1“ gibt es nicht."_s.arg(datei));
    return {};
  }
  const std::shared_ptr<Programmwahl> wahl = in_Kraft();
  if (!wahl) return {};
  const QString pfad = QFile::decodeName(Pfadkarte::aktuell().maschinenpfad(datei));
  QString verzeichnis;
  const QStringList befehlszeile = wahl->waehle(pfad, Programme_fuer(pfad), verzeichnis);
  if (befehlszeile.isEmpty()) return {};
  const QString name = starte(befehlszeile, verzeichnis);
  if (name.isEmpty()) warne(u"Das Programm „%1“ ließ sich nicht starten."_s.arg(befehlszeile.first()));
  return name;
}

}  // namespace shell
