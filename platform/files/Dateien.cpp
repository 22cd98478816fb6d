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
#include "platform/files/Beiname.h"
#include "platform/files/Binaerdatei.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Reste.h"
#include "platform/files/Schreiben.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Umbenennen.h"
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
  // A share that breaks off in the middle must not pass for a shorter file.
  if (gelesen < static_cast<std::size_t>(inhalt.size())) throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
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
  neu->vollende(true);
}

void schreibe_neu(const QString& pfad, const QByteArray& bytes, const QString& vorbild) {
  schreiben::Nebendatei neu(ort_von(pfad));
  neu.schreibe(bytes);
  if (!vorbild.isEmpty()) neu.setze_Zeit(stand_von(vorbild).info);
  neu.vollende(false);
}

QString verborgener_Name(const QString& pfad) {
  const qsizetype name = std::max(pfad.lastIndexOf(u'\\'), pfad.lastIndexOf(u'/')) + 1;
  reste::raeume_gelegentlich(umbenennen::ordner_von(ort_von(pfad)));
  return pfad.left(name) + QString::fromUtf8(beiname::bilde(pfad.mid(name).toUtf8(), beiname::Stufe::Entsteht));
}

void raeume_Reste(const QString& ordner) {
  reste::raeume(ort_von(ordner));
}

bool fehlt_gewiss(const QString& pfad) {
  const stand::Stand s = stand::von(pfad);
  return s.ist_Ordner() || (!s.vorhanden() && !systemfehler::ist_Ausfall(s.fehler));
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
