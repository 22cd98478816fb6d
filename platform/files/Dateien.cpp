#include "platform/files/Dateien.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"
#include "platform/files/Binaerdatei.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Schreiben.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Verzeichnis.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray ort_von(const QString& pfad) {
  return Pfadkarte::aktuell().maschinenpfad(pfad);
}

stand::Stand stand_von(const QString& pfad) {
  stand::Stand s = stand::von(pfad);
  if (!s.vorhanden()) systemfehler::wirf(s.fehler);
  return s;
}

bool hat_verbotene_Zeichen(const QString& pfad) {
  return std::any_of(pfad.begin(), pfad.end(), [](QChar c) { return QStringView(u"<>\"|?*").contains(c) || c < u' '; });
}

/// "\\server" and "\\server\share" are no folders that anybody makes.
bool ist_nur_Freigabe(const QString& pfad) {
  const bool netz = pfad.startsWith("\\\\"_L1) || pfad.startsWith("//"_L1);
  QString s = pfad;
  return netz && s.replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts).size() <= 2;
}

/// Wildcards on whole names: * any run, ? one character; both texts in upper case.
bool passt(QStringView name, QStringView muster) {
  qsizetype n = 0;
  qsizetype m = 0;
  qsizetype stern = -1;
  qsizetype merke = 0;
  while (n < name.size()) {
    if (m < muster.size() && muster[m] == u'*') {
      stern = m++;
      merke = n;
    } else if (m < muster.size() && (muster[m] == u'?' || muster[m] == name[n])) {
      ++m;
      ++n;
    } else if (stern >= 0) {
      m = stern + 1;
      n = ++merke;
    } else {
      return false;
    }
  }
  while (m < muster.size() && muster[m] == u'*') ++m;
  return m == muster.size();
}

/// The file's own place, behind every link, so that a link stays one when its file is written anew.
QByteArray ohne_Verweise(const QByteArray& ort) {
  const std::unique_ptr<char, void (*)(void*)> wahrer(::realpath(ort.constData(), nullptr), &::free);
  return wahrer ? QByteArray(wahrer.get()) : ort;
}

/// For a folder that takes no second file: the file is emptied and written in place.
void schreibe_an_Ort(const QByteArray& ort, const QByteArray& bytes) {
  systemfehler::Deskriptor datei(
      systemfehler::pruefe(::open(ort.constData(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NONBLOCK)));
  schreiben::schreibe_alle(datei.wert(), bytes);
  datei.schliesse();
}

/// What a file has that this user makes.
struct stat einer_neuen() {
  struct stat info {};
  const mode_t maske = ::umask(0);
  ::umask(maske);
  info.st_mode = 0666 & ~maske;
  info.st_uid = static_cast<uid_t>(-1);
  info.st_gid = static_cast<gid_t>(-1);
  return info;
}

}  // namespace

namespace dateien {

void MkDir(const QString& pfad) {
  if (ist_nur_Freigabe(pfad)) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  if (hat_verbotene_Zeichen(pfad)) throw Laufzeitfehler(fehlernummer::UngueltigerDateiname);
  if (::mkdir(ort_von(pfad).constData(), 0777) == 0) return;
  if (errno == EEXIST || errno == EACCES || errno == EPERM || errno == EROFS)
    throw Laufzeitfehler(fehlernummer::PfadZugriff);
  if (errno == ENOENT) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  systemfehler::wirf(errno);
}

QStringList Dir(const QString& pfad) {
  const qsizetype trenner = std::max(pfad.lastIndexOf(u'\\'), pfad.lastIndexOf(u'/'));
  const QString muster = pfad.mid(trenner + 1);
  const QString ordner = trenner < 0 ? u"."_s : pfad.left(trenner + 1);
  const stand::Stand s = stand::von(ordner);
  if (!s.ist_Ordner()) return {};
  QStringList namen = verzeichnis::liste(s.ort, verzeichnis::Art::Dateien);
  if (muster == "*.*"_L1) return namen;
  const QString gross = text::UCase(muster);
  namen.removeIf([&](const QString& name) { return !passt(text::UCase(name), gross); });
  return namen;
}

std::int64_t FileLen(const QString& pfad) {
  const stand::Stand s = stand_von(pfad);
  return s.ist_Ordner() ? 0 : s.info.st_size;
}

bool ist_Ordner(const QString& pfad) {
  return stand_von(pfad).ist_Ordner();
}

QByteArray lies_alles(const QString& pfad) {
  return lies_Anfang(pfad, std::numeric_limits<qsizetype>::max());
}

QByteArray lies_Anfang(const QString& pfad, qsizetype hoechstens) {
  Binaerdatei datei;
  datei.oeffne_lesend(pfad);
  QByteArray inhalt(std::min<qsizetype>(datei.laenge(), hoechstens), Qt::Uninitialized);
  const auto gelesen =
      datei.lies(0, std::as_writable_bytes(std::span(inhalt.data(), static_cast<std::size_t>(inhalt.size()))));
  inhalt.truncate(static_cast<qsizetype>(gelesen));
  return inhalt;
}

void schreibe_alles(const QString& pfad, const QByteArray& bytes) {
  const QByteArray ort = ohne_Verweise(ort_von(pfad));
  struct stat info {};
  const bool vorhanden = ::stat(ort.constData(), &info) == 0;
  if (vorhanden && (!S_ISREG(info.st_mode) || systemfehler::schreibgeschuetzt(info.st_mode)))
    throw Laufzeitfehler(fehlernummer::PfadZugriff);
  std::optional<schreiben::Nebendatei> neu;
  try {
    neu.emplace(ort);
  } catch (const Laufzeitfehler& fehler) {
    if (!vorhanden || fehler.Nummer() != fehlernummer::ZugriffVerweigert) throw;
    return schreibe_an_Ort(ort, bytes);
  }
  neu->schreibe(bytes);
  neu->uebernimm(vorhanden ? info : einer_neuen(), false);
  neu->vollende(true);
}

void schreibe_neu(const QString& pfad, const QByteArray& bytes, const QString& vorbild) {
  const struct stat muster = vorbild.isEmpty() ? einer_neuen() : stand_von(vorbild).info;
  schreiben::Nebendatei neu(ort_von(pfad));
  neu.schreibe(bytes);
  neu.uebernimm(muster, !vorbild.isEmpty());
  neu.vollende(false);
}

Kennung kennung(const QString& pfad) {
  return fundstelle(pfad).kennung;
}

Fundstelle fundstelle(const QString& pfad) {
  stand::Stand s = stand_von(pfad);
  const Kennung kennung = stand::kennung(s.info);
  return {std::move(s.ort), kennung};
}

Kennung kennung_an(const QByteArray& ort) {
  struct stat info {};
  systemfehler::pruefe(::stat(ort.constData(), &info));
  return stand::kennung(info);
}

}  // namespace dateien
