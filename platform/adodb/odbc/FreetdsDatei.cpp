#include "platform/adodb/odbc/FreetdsDatei.h"

#include <pwd.h>
#include <unistd.h>

#include <QFile>
#include <QStringList>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

/// The user's folder as FreeTDS finds it: the account's own, whatever the surroundings say.
QString heim() {
  std::vector<char> platz(4096);
  passwd eintrag{};
  passwd* gefunden = nullptr;
  if (getpwuid_r(getuid(), &eintrag, platz.data(), platz.size(), &gefunden) != 0 || !gefunden) return {};
  return QFile::decodeName(gefunden->pw_dir);
}

QStringList orte() {
  QStringList liste;
  if (const QByteArray datei = qgetenv("FREETDSCONF"); !datei.isEmpty()) liste.append(QFile::decodeName(datei));
  if (const QByteArray ordner = qgetenv("FREETDS"); !ordner.isEmpty())
    liste.append(QFile::decodeName(ordner) + u"/etc/freetds.conf"_s);
  if (const QString ordner = heim(); !ordner.isEmpty()) liste.append(ordner + u"/.freetds.conf"_s);
  liste.append(u"/etc/freetds/freetds.conf"_s);
  return liste;
}

/// Runs of blanks count as one, those at the ends do not count.
QString schlicht(const QByteArray& text) {
  return QString::fromUtf8(text).simplified();
}

/// The rest of a line up to a comment.
QByteArray ohne_Kommentar(const QByteArray& zeile) {
  for (qsizetype i = 0; i < zeile.size(); ++i)
    if (zeile.at(i) == ';' || zeile.at(i) == '#') return zeile.left(i);
  return zeile;
}

void uebernimm(const QByteArray& zeile, FreetdsAbschnitt& abschnitt) {
  const qsizetype gleich = zeile.indexOf('=');
  if (gleich < 0) return;
  const QString wort = schlicht(zeile.left(gleich)).toLower();
  const QString wert = schlicht(zeile.mid(gleich + 1));
  if (wort == "ca file"_L1) abschnitt.stellen = wert;
  if (wort == "encryption"_L1) abschnitt.verschluesselung = wert.toLower();
  // With any word that it does not know FreeTDS refuses to connect at all.
  if (wort == "check certificate hostname"_L1)
    abschnitt.prueft_Namen = QStringList{u"yes"_s, u"on"_s, u"true"_s, u"1"_s}.contains(wert.toLower());
}

/// Takes what all sections of this name in a file say, the last word for each; whether there was one.
bool lies_Abschnitte(const QByteArray& datei, const QString& name, FreetdsAbschnitt& abschnitt) {
  bool gefunden = false;
  bool darin = false;
  for (const QByteArray& roh : datei.split('\n')) {
    const QByteArray zeile = ohne_Kommentar(roh).trimmed();
    if (zeile.startsWith('[')) {
      const qsizetype ende = zeile.indexOf(']');
      const QString kopf = QString::fromUtf8(zeile.mid(1, ende < 0 ? -1 : ende - 1));
      darin = kopf.compare(name, Qt::CaseInsensitive) == 0;
      gefunden = gefunden || darin;
    } else if (darin) {
      uebernimm(zeile, abschnitt);
    }
  }
  return gefunden;
}

}  // namespace

QList<QByteArray> lies_Freetds_Dateien() {
  QList<QByteArray> inhalte;
  for (const QString& ort : orte()) {
    QFile datei(ort);
    if (datei.open(QIODevice::ReadOnly)) inhalte.append(datei.readAll());
  }
  return inhalte;
}

FreetdsAbschnitt freetds_Abschnitt(const QList<QByteArray>& dateien, const QString& name) {
  FreetdsAbschnitt abschnitt;
  for (const QByteArray& datei : dateien) {
    lies_Abschnitte(datei, u"global"_s, abschnitt);
    abschnitt.gefunden = lies_Abschnitte(datei, name, abschnitt);
    if (abschnitt.gefunden) break;
  }
  return abschnitt;
}

}  // namespace adodb
