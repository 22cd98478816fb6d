#include "host/betrieb/beispiel/Datenordner.h"

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/beispiel/Beispieldaten.h"
#include "host/betrieb/beispiel/Uebernahme.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString datenbank(const QString& ordner) {
  return ordner + u"\\betrieb.db"_s;
}

/// What the folders beside are named: the data folder's name, this, and the number of the process that makes it.
const QString Beizeichen = u".neu-"_s;

bool laeuft(qint64 prozess) {
  return ::kill(static_cast<pid_t>(prozess), 0) == 0 || errno != ESRCH;
}

/// Removes what a killed start left behind; one that is still at work keeps its folder.
void raeume_Reste_weg(const QString& ordner) {
  const qsizetype trenner = ordner.lastIndexOf(u'\\');
  const QString oberhalb = ordner.left(trenner);
  const QString anfang = ordner.mid(trenner + 1) + Beizeichen;
  const FileSystemObject dateien;
  if (!dateien.FolderExists(oberhalb)) return;
  for (const QString& name : dateien.GetFolder(oberhalb).SubFolders()) {
    if (!name.startsWith(anfang)) continue;
    bool ist_Zahl = false;
    const qint64 prozess = name.mid(anfang.size()).toLongLong(&ist_Zahl);
    if (ist_Zahl && prozess > 0 && !laeuft(prozess)) datenordner::entferne(oberhalb + u'\\' + name);
  }
}

/// A folder that is removed at the end of its life, unless it has another name by then.
class Nebenordner {
 public:
  explicit Nebenordner(QString pfad) : pfad_(std::move(pfad)) {}
  ~Nebenordner() {
    gelingt([&] { datenordner::entferne(pfad_); });
  }
  Q_DISABLE_COPY_MOVE(Nebenordner)
  const QString& pfad() const noexcept { return pfad_; }

 private:
  QString pfad_;
};

/// One assigned picture is lost, so that the way of the dialog with lost files can be seen.
void verliere_ein_Bild(const QString& ordner) {
  const QString beleg = ordner + u"\\bilder\\Belege\\24-2003"_s;
  for (const QString& name : dateien::Dir(beleg + u"\\Fliesen_*.jpg"_s))
    FileSystemObject().DeleteFile(beleg + u'\\' + name);
}

void pruefe_frei(const QString& ordner) {
  if (FileSystemObject().FileExists(ordner))
    throw Abbruch(Ausgang::Datei, u"„%1“ ist eine Datei und kein Ordner."_s.arg(namen::angezeigt(ordner)));
  if (!datenordner::ist_frei(ordner))
    throw Abbruch(Ausgang::Datei,
        u"Im Ordner „%1“ liegt anderes, aber keine Datenbank „betrieb.db“. Es ist nichts angelegt; nennen "
        "Sie mit „--datenordner“ einen leeren Ordner."_s.arg(namen::angezeigt(ordner)));
}

/// Database and picture tree without a record in them.
void erzeuge_Leeren(const QString& ordner, clsBildZuordnungen& store) {
  if (!store.Fkt_MakePath(datenordner::bilder(ordner)) || !store.Fkt_DirExists(datenordner::bilder(ordner)))
    throw Abbruch(Ausgang::Datei, u"Der Ordner „%1“ ist nicht anzulegen."_s.arg(namen::angezeigt(ordner)));
  const QString verbindung = datenordner::verbindung(ordner);
  schema::lege_an(verbindung);
  schema::richte_Betrieb_ein(*oeffne(verbindung));
}

/// Work on a server's records has begun it.
void nimm_Protokoll_mit(const QString& ordner, const QString& neuer) {
  const FileSystemObject dateien;
  if (!dateien.FolderExists(ordner)) return;
  for (const QString& name : dateien.GetFolder(ordner).Files())
    if (Protokoll::ist_Datei(name)) dateien.MoveFile(ordner + u'\\' + name, neuer + u'\\' + name);
}

void mache(const QString& ordner, datenordner::Inhalt inhalt) {
  pruefe_frei(ordner);
  clsBildZuordnungen store;
  const Nebenordner neu(ordner + Beizeichen + QString::number(QCoreApplication::applicationPid()));
  datenordner::entferne(neu.pfad());
  raeume_Reste_weg(ordner);
  store.Fkt_MakePath(neu.pfad());
  if (inhalt == datenordner::Inhalt::Leer) {
    erzeuge_Leeren(neu.pfad(), store);
  } else {
    beispieldaten::erzeuge(neu.pfad());
    verliere_ein_Bild(neu.pfad());
  }
  const FileSystemObject dateien;
  nimm_Protokoll_mit(ordner, neu.pfad());
  if (dateien.FolderExists(ordner)) dateien.DeleteFolder(ordner);
  dateien.MoveFolder(neu.pfad(), ordner);
}

}  // namespace

bool datenordner::eingerichtet(const QString& ordner) {
  return FileSystemObject().FileExists(datenbank(ordner));
}

bool datenordner::ist_frei(const QString& ordner) {
  const FileSystemObject dateien;
  if (!dateien.FolderExists(ordner)) return true;
  const Folder inhalt = dateien.GetFolder(ordner);
  const QStringList namen = inhalt.Files();
  return std::all_of(namen.begin(), namen.end(), Protokoll::ist_Datei) && inhalt.SubFolders().isEmpty();
}

void datenordner::richte_ein(const QString& ordner, Inhalt inhalt) {
  if (eingerichtet(ordner)) return uebernahme::bringe_auf_Stand(ordner);
  const auto grund = versuche([&] { mache(ordner, inhalt); });
  // Another start of the program may have come first.
  if (!grund || eingerichtet(ordner)) return;
  throw Abbruch(Ausgang::Datei,
      u"Der Datenordner „%1“ ist nicht anzulegen: %2"_s.arg(namen::angezeigt(ordner), grund->Beschreibung()));
}

void datenordner::entferne(const QString& ordner) {
  const FileSystemObject dateien;
  if (!dateien.FolderExists(ordner)) return;
  const Folder inhalt = dateien.GetFolder(ordner);
  for (const QString& name : inhalt.SubFolders()) entferne(ordner + u'\\' + name);
  for (const QString& name : inhalt.Files()) gelingt([&] { dateien.DeleteFile(ordner + u'\\' + name, true); });
  gelingt([&] { dateien.DeleteFolder(ordner, true); });
}

QString datenordner::verbindung(const QString& ordner) {
  return verbindung_zur_Datei(QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(datenbank(ordner))));
}

QString datenordner::bilder(const QString& ordner) {
  return ordner + u"\\bilder"_s;
}
