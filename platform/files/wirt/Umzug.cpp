#include "platform/files/wirt/Umzug.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <span>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Beiname.h"
#include "platform/files/Binaerdatei.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Stand.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Umbenennen.h"

using namespace Qt::Literals::StringLiterals;

namespace umzug {
namespace {

/// Which mount and which file system a folder stands on. A file system within another has the number of that mount but
/// a device of its own.
bool auf_einer_Einhaengung(const QByteArray& a, const QByteArray& b) {
  struct statx links {};
  struct statx rechts {};
  constexpr unsigned Gefragt = STATX_BASIC_STATS | STATX_MNT_ID;
  if (::statx(AT_FDCWD, a.constData(), 0, Gefragt, &links) != 0) return false;
  if (::statx(AT_FDCWD, b.constData(), 0, Gefragt, &rechts) != 0) return false;
  return links.stx_mnt_id == rechts.stx_mnt_id && links.stx_dev_major == rechts.stx_dev_major &&
      links.stx_dev_minor == rechts.stx_dev_minor;
}

/// Only the attempt tells: beside a share rights look good, and some mounts even show a folder that no server has.
bool nimmt_auf(const QByteArray& ordner) {
  const QByteArray probe = ordner + '/' + beiname::bilde("probe", beiname::Stufe::Entsteht);
  return ::mkdir(probe.constData(), 0777) == 0 && ::rmdir(probe.constData()) == 0;
}

bool gleicher_Inhalt(const QString& a, const QString& b) {
  Binaerdatei links;
  Binaerdatei rechts;
  links.oeffne_lesend(a);
  rechts.oeffne_lesend(b);
  if (links.laenge() != rechts.laenge()) return false;
  constexpr std::size_t Stueck = 1U << 16U;
  std::array<std::byte, Stueck> von_links{};
  std::array<std::byte, Stueck> von_rechts{};
  for (std::int64_t stelle = 0; stelle < links.laenge();) {
    const std::size_t anzahl = links.lies(stelle, von_links);
    if (anzahl == 0 || rechts.lies(stelle, von_rechts) != anzahl) return false;
    if (!std::equal(von_links.begin(), von_links.begin() + static_cast<std::ptrdiff_t>(anzahl), von_rechts.begin()))
      return false;
    stelle += static_cast<std::int64_t>(anzahl);
  }
  return true;
}

std::int64_t nanosekunden(const struct statx_timestamp& zeit) {
  constexpr std::int64_t Sekunde = 1'000'000'000;
  return zeit.tv_sec * Sekunde + zeit.tv_nsec;
}

}  // namespace

std::optional<QString> neben(const QString& ordner, const QString& endung) {
  const Pfadkarte& karte = Pfadkarte::aktuell();
  const QByteArray ort = karte.maschinenpfad(ordner);
  if (ort.isEmpty() || ort.endsWith('/')) return std::nullopt;
  const QByteArray daneben = ort + endung.toUtf8();
  QString pfad = karte.tabellenpfad(QString::fromUtf8(daneben));
  // A name that is no UTF-8, or a drive C: that is mapped to some other place.
  if (karte.genauer_Pfad(pfad) != daneben) return std::nullopt;
  return pfad;
}

bool geht_durch_Umbenennen(const QString& von, const QString& nach) {
  return fehler::still_enden([&] {
    const QByteArray quelle = Pfadkarte::aktuell().maschinenpfad(von);
    const stand::Stand ziel = stand::von(nach);
    if (ziel.ist_Datei()) return false;
    if (ziel.vorhanden()) return nimmt_auf(ziel.ort) && auf_einer_Einhaengung(quelle, ziel.ort);
    if (::mkdir(ziel.ort.constData(), 0777) != 0) return false;
    const bool beides = nimmt_auf(ziel.ort) && auf_einer_Einhaengung(quelle, ziel.ort);
    ::rmdir(ziel.ort.constData());
    return beides;
  });
}

void lege_an(const QString& ordner) {
  const stand::Stand da = stand::von(ordner);
  if (da.ist_Ordner()) return;
  const qsizetype trenner = ordner.lastIndexOf(u'\\');
  if (trenner > 0) lege_an(ordner.left(trenner));
  if (::mkdir(Pfadkarte::aktuell().maschinenpfad_neu(ordner).constData(), 0777) != 0 && errno != EEXIST)
    systemfehler::wirf(errno);
}

void verschiebe(const QString& quelle, const QString& ziel) {
  const stand::Stand da = stand::von(quelle);
  if (!da.ist_Datei()) throw Laufzeitfehler(fehlernummer::DateiNichtGefunden);
  if (umbenennen::benenne_um(da.ort, Pfadkarte::aktuell().maschinenpfad_neu(ziel))) return;
  const FileSystemObject dateien;
  dateien.CopyFile(quelle, ziel, false);
  if (!gleicher_Inhalt(quelle, ziel)) {
    dateien.DeleteFile(ziel, true);
    throw Laufzeitfehler(fehlernummer::EinAusgabeFehler);
  }
  dateien.DeleteFile(quelle, true);
}

std::int64_t gekommen_ns(const QString& pfad) {
  const QByteArray ort = Pfadkarte::aktuell().maschinenpfad(pfad);
  struct statx info {};
  systemfehler::pruefe(::statx(AT_FDCWD, ort.constData(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &info));
  const std::int64_t geaendert = nanosekunden(info.stx_ctime);
  if ((info.stx_mask & STATX_BTIME) == 0) return geaendert;
  const std::int64_t gemacht = nanosekunden(info.stx_btime);
  // A folder's entry changes with everything that comes into it or goes.
  return S_ISDIR(info.stx_mode) ? gemacht : std::max(gemacht, geaendert);
}

std::int64_t jetzt_ns(const QString& ordner) {
  using namespace std::chrono;
  std::int64_t jetzt = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
  fehler::still_enden([&] {
    const QString probe = dateien::verborgener_Name(ordner + u"\\uhr"_s);
    dateien::schreibe_neu(probe, {});
    jetzt = gekommen_ns(probe);
    FileSystemObject().DeleteFile(probe, true);
  });
  return jetzt;
}

}  // namespace umzug
