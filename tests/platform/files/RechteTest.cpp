// Rights, groups and access lists of new files and of files whose content changes.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QFile>
#include <functional>
#include <vector>

#include "platform/files/Dateien.h"
#include "platform/files/Ersatzdatei.h"
#include "platform/files/FileSystemObject.h"
#include "tests/support/Bildwurzel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr gid_t Firma = 4321;
constexpr uid_t Kollegin = 1234;

/// An access list as the file system keeps it (acl(5)): the owner, one user, the group, the mask, the others.
QByteArray liste(uid_t nutzer, unsigned rechte_des_Nutzers, unsigned gruppe) {
  QByteArray bytes("\x02\0\0\0", 4);
  const auto nimm = [&](unsigned art, unsigned rechte, unsigned wer) {
    for (const auto& [wert, laenge] : {std::pair{art, 2}, std::pair{rechte, 2}, std::pair{wer, 4}})
      for (int i = 0; i < laenge; ++i) bytes.append(static_cast<char>(wert >> (8 * i)));
  };
  constexpr unsigned Keiner = 0xFFFFFFFF;
  nimm(0x01, 6, Keiner);
  nimm(0x02, rechte_des_Nutzers, nutzer);
  nimm(0x04, gruppe, Keiner);
  nimm(0x10, 7, Keiner);
  nimm(0x20, 0, Keiner);
  return bytes;
}

class Rechte : public ::testing::Test {
 protected:
  Rechte() : maske_(::umask(027)) { wurzel.schreibe(u"a.jpg"_s, "neu"); }
  ~Rechte() override { ::umask(maske_); }

  QByteArray ort(const QString& name) const { return QFile::encodeName(wurzel.pfad(name)); }
  struct stat stand(const QString& name) const {
    struct stat info {};
    EXPECT_EQ(::stat(ort(name).constData(), &info), 0);
    return info;
  }
  unsigned rechte(const QString& name) const { return stand(name).st_mode & 07777; }
  bool setze_Liste(const QString& name, const char* art, const QByteArray& liste) const {
    return ::setxattr(ort(name).constData(), art, liste.constData(), static_cast<std::size_t>(liste.size()), 0) == 0;
  }
  QByteArray liste_von(const QString& name) const {
    QByteArray bytes(1000, '\0');
    const ssize_t n = ::getxattr(ort(name).constData(), "system.posix_acl_access", bytes.data(), 1000);
    return bytes.left(std::max<ssize_t>(n, 0));
  }

  /// Each way to a new file o/b.jpg.
  const std::vector<std::function<void()>> neue_Dateien{
      [] { FileSystemObject().CopyFile(u"P:\\a.jpg"_s, u"P:\\o\\b.jpg"_s, false); },
      [] { FileSystemObject().CopyFile(u"P:\\a.jpg"_s, u"P:\\o\\b.jpg"_s, true); },
      [] { dateien::schreibe_neu(u"P:\\o\\b.jpg"_s, "neu", u"P:\\a.jpg"_s); },
      [] { dateien::schreibe_alles(u"P:\\o\\b.jpg"_s, "neu"); },
  };
  /// Each way to a new content of the file b.jpg.
  const std::vector<std::function<void()>> neue_Inhalte{
      [] { FileSystemObject().CopyFile(u"P:\\a.jpg"_s, u"P:\\b.jpg"_s, true); },
      [] { dateien::schreibe_alles(u"P:\\b.jpg"_s, "neu"); },
      [] {
    Ersatzdatei neue(u"P:\\b.jpg"_s);
    neue.schreibe("neu");
    neue.tausche();
      },
      };
  Bildwurzel wurzel;

 private:
  mode_t maske_;
};

TEST_F(Rechte, ANewFileHasWhatItsFolderGivesAndNothingOfItsSource) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root gives a folder to a group";
  ASSERT_EQ(::chmod(ort(u"a.jpg"_s).constData(), 0600), 0);
  wurzel.schreibe(u"o/x"_s, "1");
  ASSERT_EQ(::chown(ort(u"o"_s).constData(), 0, Firma), 0);
  ASSERT_EQ(::chmod(ort(u"o"_s).constData(), 02775), 0);
  for (const auto& mache : neue_Dateien) {
    mache();
    EXPECT_EQ(wurzel.lies(u"o/b.jpg"_s), "neu");
    EXPECT_EQ(rechte(u"o/b.jpg"_s), 0640U) << "as the umask lets";
    EXPECT_EQ(stand(u"o/b.jpg"_s).st_gid, Firma);
    QFile::remove(wurzel.pfad(u"o/b.jpg"_s));
  }
}

TEST_F(Rechte, AReadOnlySourceGivesAFileThatCanBeWritten) {
  ASSERT_EQ(::chmod(ort(u"a.jpg"_s).constData(), 0444), 0);
  wurzel.schreibe(u"o/x"_s, "1");
  neue_Dateien.front()();
  EXPECT_EQ(rechte(u"o/b.jpg"_s), 0640U);
}

TEST_F(Rechte, AFoldersDefaultAccessListCountsForNewFiles) {
  wurzel.schreibe(u"o/x"_s, "1");
  if (!setze_Liste(u"o"_s, "system.posix_acl_default", liste(Kollegin, 6, 6)))
    GTEST_SKIP() << "this file system holds no access lists";
  for (const auto& mache : neue_Dateien) {
    mache();
    EXPECT_EQ(rechte(u"o/b.jpg"_s) & 0777, 0660U) << "the list counts, not the umask";
    EXPECT_TRUE(liste_von(u"o/b.jpg"_s).contains(QByteArray("\xD2\x04\0\0", 4)));
    QFile::remove(wurzel.pfad(u"o/b.jpg"_s));
  }
}

TEST_F(Rechte, ANewContentKeepsOwnerGroupRightsAndAttributes) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root gives files away";
  const QByteArray zugriff = liste(Kollegin, 4, 4);
  for (const auto& mache : neue_Inhalte) {
    wurzel.schreibe(u"b.jpg"_s, "alt");
    ASSERT_EQ(::chown(ort(u"b.jpg"_s).constData(), Kollegin, Firma), 0);
    ASSERT_EQ(::chmod(ort(u"b.jpg"_s).constData(), 0604), 0);
    if (::setxattr(ort(u"b.jpg"_s).constData(), "user.eins", "1", 1, 0) != 0)
      GTEST_SKIP() << "this file system holds no extended attributes";
    mache();
    EXPECT_EQ(wurzel.lies(u"b.jpg"_s), "neu");
    EXPECT_EQ(rechte(u"b.jpg"_s), 0604U);
    EXPECT_EQ(stand(u"b.jpg"_s).st_uid, Kollegin);
    EXPECT_EQ(stand(u"b.jpg"_s).st_gid, Firma);
    EXPECT_EQ(::getxattr(ort(u"b.jpg"_s).constData(), "user.eins", nullptr, 0), 1);
    ASSERT_TRUE(setze_Liste(u"b.jpg"_s, "system.posix_acl_access", zugriff));
    const unsigned mit_Liste = rechte(u"b.jpg"_s);
    mache();
    EXPECT_EQ(liste_von(u"b.jpg"_s), zugriff);
    EXPECT_EQ(rechte(u"b.jpg"_s), mit_Liste);
    QFile::remove(wurzel.pfad(u"b.jpg"_s));
  }
}

TEST_F(Rechte, AFileWithoutAnAccessListDoesNotGetTheFoldersByANewContent) {
  wurzel.schreibe(u"b.jpg"_s, "alt");
  ASSERT_EQ(::chmod(ort(u"b.jpg"_s).constData(), 0600), 0);
  if (!setze_Liste(QString(), "system.posix_acl_default", liste(Kollegin, 6, 6)))
    GTEST_SKIP() << "this file system holds no access lists";
  for (const auto& mache : neue_Inhalte) {
    mache();
    EXPECT_EQ(liste_von(u"b.jpg"_s), QByteArray());
    EXPECT_EQ(rechte(u"b.jpg"_s), 0600U);
  }
}

}  // namespace
