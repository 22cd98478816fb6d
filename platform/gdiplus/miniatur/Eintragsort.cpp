#include "platform/gdiplus/miniatur/Eintragsort.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/gdiplus/miniatur/Klassen.h"

namespace miniatur {
namespace {

QByteArray wirklicher_Ort(const QByteArray& ort) {
  const std::unique_ptr<char, decltype(&std::free)> wirklich(::realpath(ort.constData(), nullptr), &std::free);
  return wirklich ? QByteArray(wirklich.get()) : QByteArray();
}

bool steht_unter(const QByteArray& ort, const QByteArray& ordner) {
  const QByteArray wurzel = wirklicher_Ort(ordner);
  return !wurzel.isEmpty() && ort.startsWith(wurzel + '/');
}

struct Datei_im_Ordner {
  QByteArray pfad;
  std::int64_t laenge = 0;
  std::int64_t geaendert = 0;
};

void sammle(const QByteArray& ordner, std::vector<Datei_im_Ordner>& dateien) {
  const auto schliesse = [](DIR* offener) { ::closedir(offener); };
  const std::unique_ptr<DIR, decltype(schliesse)> offen(::opendir(ordner.constData()), schliesse);
  if (!offen) return;
  // Nobody else has this stream of names.
  while (const dirent* const eintrag = ::readdir(offen.get())) {  // NOLINT(concurrency-mt-unsafe)
    const QByteArray name(&eintrag->d_name[0]);
    struct stat s {};
    if (!name.endsWith(".png") || ::fstatat(::dirfd(offen.get()), name.constData(), &s, AT_SYMLINK_NOFOLLOW) != 0)
      continue;
    if (S_ISREG(s.st_mode)) dateien.push_back({ordner + '/' + name, s.st_size, s.st_mtim.tv_sec});
  }
}

}  // namespace

QByteArray adresse(const QByteArray& ort) {
  return "file://" + ort.toPercentEncoding("!$&'()*+,/:=@");
}

QByteArray eintragsname(const QByteArray& adresse) {
  return QCryptographicHash::hash(adresse, QCryptographicHash::Md5).toHex() + ".png";
}

QByteArray cacheheim_der_Umgebung() {
  const QByteArray genannt = qgetenv("XDG_CACHE_HOME");
  if (genannt.startsWith('/')) return genannt;
  const QByteArray heim = qgetenv("HOME");
  return heim.startsWith('/') ? heim + "/.cache" : QByteArray();
}

Ordner ordner_in(const QByteArray& cacheheim) {
  const QByteArray gemeinsam = cacheheim + "/thumbnails";
  return {gemeinsam, cacheheim + "/kvobildzuordnung/thumbnails", gemeinsam + "/fail/kvobildzuordnung-1"};
}

bool liegt_darin(const Ordner& ordner, const QByteArray& ort) {
  const QByteArray wirklich = wirklicher_Ort(ort);
  return wirklich.isEmpty() || steht_unter(wirklich, ordner.gemeinsam) || steht_unter(wirklich, ordner.eigen);
}

void mache_Ordner(const QByteArray& ordner) {
  if (::mkdir(ordner.constData(), S_IRWXU) == 0 || errno != ENOENT) return;
  const qsizetype trenner = ordner.lastIndexOf('/');
  if (trenner <= 0) return;
  mache_Ordner(ordner.first(trenner));
  ::mkdir(ordner.constData(), S_IRWXU);
}

bool ist_brauchbar(const QByteArray& ordner) {
  mache_Ordner(ordner);
  struct stat s {};
  return ::stat(ordner.constData(), &s) == 0 && S_ISDIR(s.st_mode) && s.st_uid == ::geteuid() &&
      ::faccessat(AT_FDCWD, ordner.constData(), R_OK | W_OK | X_OK, AT_EACCESS) == 0;
}

void kuerze(const QByteArray& ordner, std::int64_t grenze) {
  std::vector<Datei_im_Ordner> dateien;
  for (const Klasse& k : Klassen) sammle(ordner + '/' + k.ordner, dateien);
  std::int64_t summe = 0;
  for (const Datei_im_Ordner& d : dateien) summe += d.laenge;
  if (summe <= grenze) return;
  std::ranges::sort(dateien, {}, &Datei_im_Ordner::geaendert);
  for (const Datei_im_Ordner& d : dateien) {
    if (summe <= grenze / 4 * 3) return;
    if (::unlink(d.pfad.constData()) == 0) summe -= d.laenge;
  }
}

}  // namespace miniatur
