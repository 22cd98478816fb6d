#include "platform/files/Beiname.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QList>
#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>

#include "platform/files/Systemfehler.h"

namespace beiname {
namespace {

constexpr char Anfang[] = ".kvo-";
/// A library may add an ending of its own to a name that it was given.
constexpr qsizetype Hoechstens = NAME_MAX - 15;
constexpr qsizetype Laengster_Platz = 24;
constexpr qsizetype Kennung = 8;
constexpr qsizetype Felder = 7;
constexpr std::time_t Tag = 24 * 60 * 60;

/// A file of the system; empty where it can't be read.
QByteArray lies_Kurzes(const QByteArray& pfad) {
  const systemfehler::Deskriptor datei(::open(pfad.constData(), O_RDONLY | O_CLOEXEC));
  std::array<char, 1024> puffer{};
  const ssize_t n = datei.wert() < 0 ? 0 : ::read(datei.wert(), puffer.data(), puffer.size());
  return {puffer.data(), std::max<ssize_t>(n, 0)};
}

QByteArray kennung_von(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(Kennung);
}

/// The machine's name and a mark that tells machines of one name apart; also containers, whose processes can't see
/// each other.
const QByteArray& platz() {
  static const QByteArray Platz = [] {
    std::array<char, HOST_NAME_MAX + 1> name{};
    ::gethostname(name.data(), name.size() - 1);
    QByteArray lesbar = QByteArray(name.data()).toLower().left(Laengster_Platz);
    std::replace_if(
        lesbar.begin(), lesbar.end(), [](char c) { return !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9'); }, '_');
    std::array<char, 64> raum{};
    const ssize_t n = ::readlink("/proc/self/ns/pid", raum.data(), raum.size());
    return lesbar + '-' +
        kennung_von(lies_Kurzes("/etc/machine-id") + name.data() + QByteArray(raum.data(), std::max<ssize_t>(n, 0)));
  }();
  return Platz;
}

/// When a process began: the machine's start and the ticks since then (proc(5), "starttime"); empty where that can't be
/// told.
QByteArray beginn_von(pid_t prozess) {
  static const QByteArray Start = kennung_von(lies_Kurzes("/proc/sys/kernel/random/boot_id"));
  constexpr qsizetype Feld_hinter_dem_Namen = 20;
  const QByteArray zeile = lies_Kurzes("/proc/" + QByteArray::number(prozess) + "/stat");
  // The program's name may hold blanks and brackets.
  const QList<QByteArray> felder = zeile.mid(zeile.lastIndexOf(')') + 1).split(' ');
  return felder.size() > Feld_hinter_dem_Namen ? Start + felder[Feld_hinter_dem_Namen] : QByteArray();
}

bool lebt(const Angaben& angaben) {
  if (::kill(angaben.prozess, 0) != 0 && errno == ESRCH) return false;
  const QByteArray beginn = beginn_von(angaben.prozess);
  return beginn.isEmpty() || beginn == angaben.beginn;
}

QByteArray gekuerzt_auf(QByteArrayView ziel, qsizetype laenge) {
  constexpr unsigned char Art = 0xC0;
  constexpr unsigned char Folgebyte = 0x80;
  while (laenge > 0 && (static_cast<unsigned char>(ziel[laenge]) & Art) == Folgebyte) --laenge;
  return ziel.first(laenge).toByteArray();
}

std::optional<Stufe> stufe_von(char zeichen) {
  for (const Stufe stufe : {Stufe::Entsteht, Stufe::Fertig, Stufe::Platzhalter})
    if (zeichen == static_cast<char>(stufe)) return stufe;
  return std::nullopt;
}

}  // namespace

QByteArray bilde(QByteArrayView ziel, Stufe stufe) {
  static std::atomic<unsigned> Nummer{0};
  const pid_t prozess = ::getpid();
  const QByteArray vorn = Anfang + platz() + '-' + QByteArray::number(prozess) + '-' + beginn_von(prozess) + '-' +
      QByteArray::number(++Nummer) + '-' + static_cast<char>(stufe);
  const qsizetype platz_fuer_Ziel = Hoechstens - vorn.size() - 2;
  if (ziel.size() <= platz_fuer_Ziel) return vorn + '-' + ziel.toByteArray();
  return vorn + "k-" + gekuerzt_auf(ziel, platz_fuer_Ziel);
}

std::optional<Angaben> lies(QByteArrayView name) {
  if (!name.startsWith(Anfang)) return std::nullopt;
  const QList<QByteArray> felder = name.sliced(sizeof Anfang - 1).toByteArray().split('-');
  if (felder.size() < Felder) return std::nullopt;
  const QByteArray& stufe = felder[Felder - 2];
  const auto gelesen = stufe_von(stufe.isEmpty() ? '\0' : stufe[0]);
  bool ist_Zahl = false;
  const int prozess = felder[2].toInt(&ist_Zahl);
  if (!gelesen || !ist_Zahl || prozess <= 0) return std::nullopt;
  return Angaben{felder[0] + '-' + felder[1] == platz(), prozess, felder[3], *gelesen, felder.mid(Felder - 1).join('-'),
      stufe.endsWith('k')};
}

bool ist_einer(QByteArrayView name) {
  return lies(name).has_value();
}

bool ist_verlassen(const Angaben& angaben, int verzeichnis, const char* name) {
  if (angaben.eigener_Platz) return !lebt(angaben);
  struct stat info {};
  if (::fstatat(verzeichnis, name, &info, AT_SYMLINK_NOFOLLOW) != 0) return false;
  // A copy bears the time stamp of its source.
  return std::max(info.st_mtim.tv_sec, info.st_ctim.tv_sec) < std::time(nullptr) - Tag;
}

}  // namespace beiname
