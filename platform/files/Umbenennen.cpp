#include "platform/files/Umbenennen.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QString>
#include <cerrno>
#include <cstdio>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"
#include "platform/files/Beiname.h"
#include "platform/files/Systemfehler.h"
#include "platform/files/Verzeichnis.h"

namespace umbenennen {
namespace {

/// The file system does not know the call. EPERM may mean the right as well: then the next way fails too.
bool kennt_es_nicht(int fehler) noexcept {
  return fehler == EINVAL || fehler == ENOSYS || fehler == EOPNOTSUPP || fehler == EPERM;
}

bool ist_Ordner(const QByteArray& ort) {
  struct stat info {};
  return ::lstat(ort.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// Undoes the step before, then raises why the last one failed.
[[noreturn]] void nimm_zurueck(int grund, const QByteArray& ort) {
  ::unlink(ort.constData());
  wirf_fuer_Ziel(grund);
}

/// Unless somebody has written into it meanwhile.
void loese_Platzhalter(const QByteArray& ort) {
  struct stat info {};
  if (::lstat(ort.constData(), &info) == 0 && info.st_size == 0) ::unlink(ort.constData());
}

/// In a folder with the sticky bit everybody takes away only what is his own: another's file would keep both names.
bool laesst_los(const QByteArray& ort) {
  struct stat ordner {};
  struct stat info {};
  if (::stat(ordner_von(ort).constData(), &ordner) != 0 || (ordner.st_mode & S_ISVTX) == 0) return true;
  const uid_t wir = ::geteuid();
  return wir == 0 || wir == ordner.st_uid || (::lstat(ort.constData(), &info) == 0 && wir == info.st_uid);
}

enum class Stand { Getan, AnderesDateisystem, Verweigert };

/// Both names for a moment, never none. A link is never made over an existing name.
Stand ueber_zweiten_Namen(const QByteArray& quelle, const QByteArray& ziel) {
  if (!laesst_los(quelle)) return Stand::Verweigert;
  if (::link(quelle.constData(), ziel.constData()) != 0) {
    if (errno == EXDEV) return Stand::AnderesDateisystem;
    if (kennt_es_nicht(errno) || errno == EMLINK || errno == EACCES) return Stand::Verweigert;
    wirf_fuer_Ziel(errno);
  }
  if (::unlink(quelle.constData()) != 0 && errno != ENOENT) nimm_zurueck(errno, ziel);
  return Stand::Getan;
}

/// An empty file takes the name, or fails where there is one; then the rename replaces nothing but that. What is
/// announced beside it says that it may go if this process ends in between.
void ueber_Platzhalter(const QByteArray& quelle, const QByteArray& ziel) {
  const QByteArray ankuendigung = ordner_von(ziel) + '/' + beiname::bilde(name_von(ziel), beiname::Stufe::Platzhalter);
  for (const QByteArray& ort : {ankuendigung, ziel}) {
    const systemfehler::Deskriptor leer(::open(ort.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (leer.wert() < 0) nimm_zurueck(errno, ankuendigung);
  }
  if (::rename(quelle.constData(), ziel.constData()) != 0) {
    const int grund = errno;
    loese_Platzhalter(ziel);
    nimm_zurueck(grund, ankuendigung);
  }
  ::unlink(ankuendigung.constData());
}

/// The system never renames a folder onto a file, nor onto a folder with anything in it.
void ordner_nach(const QByteArray& quelle, const QByteArray& ziel) {
  struct stat info {};
  if (::lstat(ziel.constData(), &info) == 0) throw Laufzeitfehler(fehlernummer::DateiVorhanden);
  if (::rename(quelle.constData(), ziel.constData()) != 0) wirf_fuer_Ziel(errno);
}

bool steht_so_da(const QByteArray& ort) {
  bool da = false;
  const QByteArray name = name_von(ort);
  verzeichnis::gehe_durch(
      ordner_von(ort), [&](int, const dirent& e) { da = da || name == static_cast<const char*>(e.d_name); });
  return da;
}

/// Never from one spelling to the other: to the system both are one file, so that it does nothing, or makes room for
/// the new name by deleting the only file there is.
void schreibe_anders(const QByteArray& quelle, const QByteArray& ziel) {
  const QByteArray dazwischen = fertig_neben(ziel);
  if (::rename(quelle.constData(), dazwischen.constData()) != 0) wirf_fuer_Ziel(errno);
  if (::rename(dazwischen.constData(), ziel.constData()) == 0) return;
  const int grund = errno;
  ::rename(dazwischen.constData(), quelle.constData());
  wirf_fuer_Ziel(grund);
}

/// False where the target is on another file system.
bool benenne(const QByteArray& quelle, const QByteArray& ziel) {
  if (::renameat2(AT_FDCWD, quelle.constData(), AT_FDCWD, ziel.constData(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EXDEV) return false;
  if (errno == EEXIST && ist_andere_Schreibung(quelle, ziel)) return schreibe_anders(quelle, ziel), true;
  if (!kennt_es_nicht(errno)) wirf_fuer_Ziel(errno);
  if (ist_Ordner(quelle)) return ordner_nach(quelle, ziel), true;
  const Stand stand = ueber_zweiten_Namen(quelle, ziel);
  if (stand == Stand::Verweigert) ueber_Platzhalter(quelle, ziel);
  return stand != Stand::AnderesDateisystem;
}

}  // namespace

QByteArray ordner_von(const QByteArray& pfad) {
  const qsizetype ende = pfad.lastIndexOf('/');
  return ende <= 0 ? QByteArray("/") : pfad.left(ende);
}

QByteArray name_von(const QByteArray& pfad) {
  return pfad.mid(pfad.lastIndexOf('/') + 1);
}

QByteArray fertig_neben(const QByteArray& ziel) {
  return ordner_von(ziel) + '/' + beiname::bilde(name_von(ziel), beiname::Stufe::Fertig);
}

void wirf_fuer_Ziel(int fehler) {
  if (fehler == ENOENT) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  systemfehler::wirf(fehler);
}

bool benenne_um(const QByteArray& quelle, const QByteArray& ziel) {
  if (!benenne(quelle, ziel)) return false;
  const QByteArray von = ordner_von(quelle);
  const QByteArray nach = ordner_von(ziel);
  sichere_Ordner(nach);
  if (von != nach) sichere_Ordner(von);
  return true;
}

void ersetze(const QByteArray& quelle, const QByteArray& ziel) {
  if (::rename(quelle.constData(), ziel.constData()) != 0) {
    if (errno != EEXIST && errno != EOPNOTSUPP) wirf_fuer_Ziel(errno);
    // A file system that renames to free names only.
    const QByteArray bisheriges = fertig_neben(ziel);
    if (::rename(ziel.constData(), bisheriges.constData()) != 0) wirf_fuer_Ziel(errno);
    if (::rename(quelle.constData(), ziel.constData()) != 0) {
      const int grund = errno;
      ::rename(bisheriges.constData(), ziel.constData());
      wirf_fuer_Ziel(grund);
    }
    ::unlink(bisheriges.constData());
  }
  sichere_Ordner(ordner_von(ziel));
}

bool ist_andere_Schreibung(const QByteArray& quelle, const QByteArray& ziel) {
  const auto gross = [](const QByteArray& ort) { return text::UCase(QString::fromUtf8(name_von(ort))); };
  return quelle != ziel && ordner_von(quelle) == ordner_von(ziel) && gross(quelle) == gross(ziel) &&
      !steht_so_da(ziel) && steht_so_da(quelle);
}

void sichere_Ordner(const QByteArray& ordner) noexcept {
  const systemfehler::Deskriptor offen(::open(ordner.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // Many shares refuse it; and a server that is gone by now can't be told from here.
  if (offen.wert() >= 0) static_cast<void>(::fsync(offen.wert()));
}

}  // namespace umbenennen
