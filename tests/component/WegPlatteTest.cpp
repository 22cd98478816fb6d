// An embedded database on a disk that is full, or that can only be read. The program puts calls of its own in front of
// the C library's, which answer so while a test wants it; no file system of its own is needed.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>

#include "tests/component/Wegtest.h"

using namespace Qt::Literals::StringLiterals;
using oberflaeche::Antwort;

namespace {

std::atomic<bool> voll{false};
std::atomic<bool> nur_lesbar{false};

int oeffne(int ordner, const char* name, int art, mode_t rechte) {
  const bool schreibend = (art & O_ACCMODE) != O_RDONLY;
  if (nur_lesbar && schreibend && QByteArrayView(name).contains(".db")) {
    errno = EROFS;
    return -1;
  }
  return static_cast<int>(::syscall(SYS_openat, ordner, name, art, rechte));
}

}  // namespace

// Visible, so that the libraries find these too. Their declarations name the parameters with reserved words.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,cert-dcl50-cpp)
#pragma GCC visibility push(default)
extern "C" {

ssize_t pwrite64(int deskriptor, const void* puffer, std::size_t anzahl, off64_t stelle) {
  if (!voll) return ::syscall(SYS_pwrite64, deskriptor, puffer, anzahl, stelle);
  errno = ENOSPC;
  return -1;
}
ssize_t pwrite(int deskriptor, const void* puffer, std::size_t anzahl, off_t stelle) {
  return pwrite64(deskriptor, puffer, anzahl, stelle);
}
int open(const char* name, int art, ...) {
  va_list weitere;
  va_start(weitere, art);
  const auto rechte = static_cast<mode_t>(va_arg(weitere, int));
  va_end(weitere);
  return oeffne(AT_FDCWD, name, art, rechte);
}
int open64(const char* name, int art, ...) {
  va_list weitere;
  va_start(weitere, art);
  const auto rechte = static_cast<mode_t>(va_arg(weitere, int));
  va_end(weitere);
  return oeffne(AT_FDCWD, name, art, rechte);
}

}  // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name,cert-dcl50-cpp)

namespace {

class WegPlatte : public Wegtest {
 protected:
  ~WegPlatte() override {
    voll = false;
    nur_lesbar = false;
  }
  /// Answers the question, whose words of the database are not this test's, and notes it.
  class Ja final : public oberflaeche::Meldungsfenster {
   public:
    explicit Ja(std::function<void()> dabei) : dabei_(std::move(dabei)) {}
    Antwort zeige(const oberflaeche::Meldung& meldung) override {
      texte.append(meldung.Text);
      dabei_();
      return texte.size() == 1 ? Antwort::Ja : Antwort::Nein;
    }
    QStringList texte;

   private:
    std::function<void()> dabei_;
  };
  QStringList gehe_mit_Frage(const Handlung& handlung, std::function<void()> dabei) {
    const auto fenster = std::make_shared<Ja>(std::move(dabei));
    const auto vorher = oberflaeche::setze(fenster);
    EXPECT_TRUE(gehe(handlung).vollstaendig());
    oberflaeche::setze(vorher);
    return fenster->texte;
  }
};

}  // namespace

TEST_F(WegPlatte, OnAFullDiskEverythingWaitsUntilThereIsRoom) {
  gespeichert(u"a"_s, 0);
  const QStringList fragen = gehe_mit_Frage(
      [&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"Bob's"_s);
    neues(bilder, u"neu"_s);
    voll = true;
      },
      [&] {
    voll = false;
    EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|T|0"_s});
  });
  ASSERT_EQ(fragen.size(), 1);
  EXPECT_TRUE(fragen[0].startsWith(u"2 von 2 Bildern"_s)) << fragen[0].toStdString();
  EXPECT_EQ(zeilen(), (QStringList{u"a|Belege\\1|Bob's|0"_s, u"neu|Belege\\1|<NULL>|1"_s}));
}

TEST_F(WegPlatte, AFileThatCanOnlyBeReadIsWrittenOverANewConnectionWhenItCanBeWritten) {
  gespeichert(u"a"_s, 0);
  const QStringList fragen = gehe_mit_Frage(
      [&](clsBildZuordnungen& bilder) {
    aendere(bilder, 0, u"Bob's"_s);
    nur_lesbar = true;
      },
      [&] { nur_lesbar = false; });
  ASSERT_EQ(fragen.size(), 1);
  EXPECT_TRUE(fragen[0].contains(u"readonly"_s)) << fragen[0].toStdString();
  EXPECT_EQ(zeilen(), QStringList{u"a|Belege\\1|Bob's|0"_s});
}
