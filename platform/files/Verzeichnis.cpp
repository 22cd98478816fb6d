#include "platform/files/Verzeichnis.h"

#include <fcntl.h>
#include <mntent.h>
#include <poll.h>
#include <sys/stat.h>

#include <QFile>
#include <QHash>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <functional>
#include <list>
#include <memory>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"
#include "platform/files/Beiname.h"
#include "platform/files/Reste.h"
#include "platform/files/Systemfehler.h"

using namespace Qt::Literals::StringLiterals;

namespace verzeichnis {

bool gehe_durch(const QByteArray& ordner, const std::function<void(int verzeichnis, const dirent& eintrag)>& nimm) {
  const std::unique_ptr<DIR, int (*)(DIR*)> dir(::opendir(ordner.constData()), &::closedir);
  if (!dir) return false;
  errno = 0;
  while (const dirent* eintrag = ::readdir(dir.get())) {
    const QByteArrayView name(static_cast<const char*>(eintrag->d_name));
    if (name != "." && name != "..") nimm(::dirfd(dir.get()), *eintrag);
    errno = 0;
  }
  if (errno != 0) systemfehler::wirf(errno);
  return true;
}

namespace {

std::optional<QString> lesbarer_Name(const char* bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString name = decoder(QByteArrayView(bytes));
  if (decoder.hasError() || name.contains(u'\\')) return std::nullopt;
  return name;
}

bool ist_von_Art(int verzeichnis, const dirent& eintrag, Art art) {
  if (eintrag.d_type == DT_DIR) return art == Art::Ordner;
  if (eintrag.d_type == DT_REG) return art == Art::Dateien;
  if (eintrag.d_type != DT_UNKNOWN && eintrag.d_type != DT_LNK) return false;
  struct stat info {};
  const int flags = art == Art::Ordner ? AT_SYMLINK_NOFOLLOW : 0;
  if (::fstatat(verzeichnis, eintrag.d_name, &info, flags) != 0) return false;
  return art == Art::Ordner ? S_ISDIR(info.st_mode) : S_ISREG(info.st_mode);
}

/// The names of one folder by their upper-case form, and the state of the folder they were read in.
struct Namensliste {
  QByteArray ordner;
  struct timespec geaendert {};
  dev_t geraet = 0;
  ino_t inode = 0;
  QHash<QString, QByteArray> namen;
};

/// A change within the clock's grain of a listing would go unseen, so a folder must have rested for a while.
bool in_Ruhe(const struct timespec& geaendert) {
  const auto jetzt = std::chrono::system_clock::now().time_since_epoch();
  const auto dann = std::chrono::seconds(geaendert.tv_sec) + std::chrono::nanoseconds(geaendert.tv_nsec);
  return jetzt - dann > std::chrono::seconds(2);
}

bool gleicher_Stand(const Namensliste& liste, const struct stat& info) {
  return liste.geraet == info.st_dev && liste.inode == info.st_ino && liste.geaendert.tv_sec == info.st_mtim.tv_sec &&
      liste.geaendert.tv_nsec == info.st_mtim.tv_nsec;
}

/// The lists of the folders asked for last, the latest first: the levels of one path, and of the paths beside it.
using Namenslisten = std::list<Namensliste>;
constexpr std::size_t Hoechstens_Listen = 8;

std::optional<Namensliste> lies_Namen(const QByteArray& ordner, const struct stat& info) {
  Namensliste neu{ordner, info.st_mtim, info.st_dev, info.st_ino, {}};
  // A folder that may be searched but not listed knows exact names only.
  if (!gehe_durch(ordner, [&](int, const dirent& eintrag) {
        const auto lesbar = lesbarer_Name(eintrag.d_name);
        if (lesbar) neu.namen.insert(text::UCase(*lesbar), QByteArray(static_cast<const char*>(eintrag.d_name)));
      }))
    return std::nullopt;
  return neu;
}

/// Puts the folder's list in front, read anew unless it is known in this state. False where it can't be listed.
bool hole_nach_vorn(Namenslisten& listen, const QByteArray& ordner, const struct stat& info) {
  const auto bekannt = std::find_if(listen.begin(), listen.end(), [&](const auto& l) { return l.ordner == ordner; });
  if (bekannt != listen.end() && gleicher_Stand(*bekannt, info)) {
    listen.splice(listen.begin(), listen, bekannt);
    return true;
  }
  if (bekannt != listen.end()) listen.erase(bekannt);
  auto neu = lies_Namen(ordner, info);
  if (!neu) return false;
  listen.push_front(*std::move(neu));
  if (listen.size() > Hoechstens_Listen) listen.pop_back();
  return true;
}

[[noreturn]] void wirf_nicht_lesbar() {
  throw Laufzeitfehler(errno == EACCES ? fehlernummer::ZugriffVerweigert : fehlernummer::PfadNichtGefunden);
}

}  // namespace

QStringList liste(const QByteArray& ordner, Art art) {
  QStringList namen;
  bool mit_Platzhalter = false;
  const auto lies = [&] {
    return gehe_durch(ordner, [&](int verzeichnis, const dirent& eintrag) {
      const char* const bytes = static_cast<const char*>(eintrag.d_name);
      if (const auto beiname = beiname::lies(bytes)) {
        mit_Platzhalter = mit_Platzhalter ||
            (beiname->stufe == beiname::Stufe::Platzhalter && beiname::ist_verlassen(*beiname, verzeichnis, bytes));
        return;
      }
      if (!ist_von_Art(verzeichnis, eintrag, art)) return;
      if (auto name = lesbarer_Name(bytes)) namen.append(*std::move(name));
    });
  };
  if (!lies()) wirf_nicht_lesbar();
  if (mit_Platzhalter) {
    // An empty file of nobody's must not pass for a picture.
    reste::raeume(ordner);
    namen.clear();
    lies();
  }
  std::sort(namen.begin(), namen.end(), [](const QString& a, const QString& b) {
    const int ordnung = a.compare(b, Qt::CaseInsensitive);
    return ordnung != 0 ? ordnung < 0 : a < b;
  });
  return namen;
}

std::int64_t anzahl(const QByteArray& ordner) {
  std::int64_t anzahl = 0;
  const bool offen = gehe_durch(ordner, [&](int verzeichnis, const dirent& eintrag) {
    const char* const name = static_cast<const char*>(eintrag.d_name);
    const auto beiname = beiname::lies(name);
    if (!beiname || !beiname::ist_verlassen(*beiname, verzeichnis, name)) ++anzahl;
  });
  if (!offen) wirf_nicht_lesbar();
  return anzahl;
}

std::optional<QByteArray> suche_ohne_Schreibung(const QByteArray& ordner, const QString& name) {
  thread_local Namenslisten listen;
  struct stat info {};
  if (::stat(ordner.constData(), &info) != 0 || !S_ISDIR(info.st_mode)) return std::nullopt;
  if (!hole_nach_vorn(listen, ordner, info)) return std::nullopt;
  const QByteArray treffer = listen.front().namen.value(text::UCase(name));
  if (!in_Ruhe(listen.front().geaendert)) listen.pop_front();
  if (treffer.isEmpty()) return std::nullopt;
  return treffer;
}

namespace {

QString freigabe_von(const QString& quelle, const QString& art) {
  QString freigabe = quelle;
  freigabe.replace(u'/', u'\\');
  if (art.startsWith("nfs"_L1))
    freigabe = "\\\\"_L1 + freigabe.replace(u":\\"_s, u"\\"_s);
  else if (art != "cifs"_L1 && art != "smb3"_L1 && art != "smbfs"_L1)
    return {};
  while (freigabe.endsWith(u'\\')) freigabe.chop(1);
  return freigabe;
}

}  // namespace

QList<Einhaengung> einhaengungen(const QString& tabelle) {
  QList<Einhaengung> alle;
  const std::unique_ptr<FILE, int (*)(FILE*)> datei(
      ::setmntent(QFile::encodeName(tabelle).constData(), "r"), &::endmntent);
  if (!datei) return alle;
  struct mntent eintrag {};
  std::array<char, 4096> puffer{};
  while (::getmntent_r(datei.get(), &eintrag, puffer.data(), static_cast<int>(puffer.size()))) {
    const QString quelle = QFile::decodeName(eintrag.mnt_fsname);
    const QString art = QString::fromLatin1(eintrag.mnt_type);
    alle.append({quelle, QFile::decodeName(eintrag.mnt_dir), art, freigabe_von(quelle, art)});
  }
  return alle;
}

namespace {

/// The machine's mounts, read again only after a change: the kernel tells one on the opened table as urgent data
/// (proc(5), "mounts"). Where the table can't be opened it is asked for each time.
class Maschineneinhaengungen {
 public:
  const QList<Einhaengung>& liste() {
    if (datei_.wert() < 0 || geaendert()) liste_ = einhaengungen();
    return liste_;
  }

 private:
  bool geaendert() {
    struct pollfd frage {
      datei_.wert(), POLLPRI, 0
    };
    const bool erstes_Mal = !std::exchange(gelesen_, true);
    return ::poll(&frage, 1, 0) != 0 || erstes_Mal;
  }

  const systemfehler::Deskriptor datei_{::open("/proc/self/mounts", O_RDONLY | O_CLOEXEC)};
  bool gelesen_ = false;
  QList<Einhaengung> liste_;
};

}  // namespace

std::optional<QString> einhaengepunkt(const QString& freigabe) {
  thread_local Maschineneinhaengungen einhaengungen;
  for (const Einhaengung& e : einhaengungen.liste())
    if (!e.freigabe.isEmpty() && e.freigabe.compare(freigabe, Qt::CaseInsensitive) == 0) return e.ordner;
  return std::nullopt;
}

}  // namespace verzeichnis
