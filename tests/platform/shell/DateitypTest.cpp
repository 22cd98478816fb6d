#include <gtest/gtest.h>

#include <QStringList>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/shell/Dateityp.h"
#include "tests/support/Umgebung.h"

using namespace shell;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int32_t NachEndung = SHGFI_ICON | SHGFI_USEFILEATTRIBUTES;

std::shared_ptr<const Bild> icon(const QString& name, std::int32_t flags = NachEndung) {
  return SHGetFileInfo(name, FILE_ATTRIBUTE_NORMAL, flags);
}

class IconDoppel final : public DateitypIcons {
 public:
  QImage icon(const QString& endung, int seite) override {
    gefragt.append(endung + u':' + QString::number(seite));
    if (endung == u"kaputt"_s) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf);
    QImage bild(seite, seite, QImage::Format_ARGB32);
    bild.fill(Qt::transparent);
    return endung == u"ohne"_s ? QImage() : bild;
  }
  QStringList gefragt;
};

TEST(Dateityp, AnIconIs32PixelsLargeTheSmallOne16) {
  EXPECT_EQ(icon(u".pdf"_s)->groesse(), QSize(32, 32));
  EXPECT_EQ(icon(u".pdf"_s, NachEndung | SHGFI_SMALLICON)->groesse(), QSize(16, 16));
}

TEST(Dateityp, EveryExtensionHasItsOwnSheet) {
  EXPECT_NE(icon(u".pdf"_s)->bild(), icon(u".doc"_s)->bild());
  EXPECT_EQ(icon(u".pdf"_s)->bild(), icon(u".PDF"_s)->bild());
  EXPECT_EQ(icon(u"."_s)->groesse(), QSize(32, 32));
  EXPECT_EQ(icon(u".überlang und seltsam"_s)->groesse(), QSize(32, 32));
}

TEST(Dateityp, WithoutTheQuestionForTheIconThereIsNone) {
  EXPECT_EQ(icon(u".pdf"_s, SHGFI_USEFILEATTRIBUTES), nullptr);
}

TEST(Dateityp, WithoutTheAttributesTheFileMustExist) {
  const Testordner ordner;
  EXPECT_EQ(icon(ordner.pfad(u"fehlt.txt"_s), SHGFI_ICON), nullptr);
  EXPECT_NE(icon(ordner.schreibe(u"da.txt"_s, "x"), SHGFI_ICON), nullptr);
}

TEST(Dateityp, AnotherServiceReplacesTheDrawnIcons) {
  const auto doppel = std::make_shared<IconDoppel>();
  const auto vorher = setze(doppel);
  EXPECT_EQ(icon(u".tar.gz"_s)->bild().pixel(3, 3), qRgb(0, 0, 0)) << "transparency comes out black";
  EXPECT_EQ(doppel->gefragt, QStringList{u"gz:32"_s});
  EXPECT_EQ(icon(u".ohne"_s), nullptr);
  EXPECT_EQ(icon(u".kaputt"_s), nullptr);
  EXPECT_EQ(setze(vorher), doppel);
}

TEST(Dateityp, NoServiceRestoresTheDefault) {
  setze(std::make_shared<IconDoppel>());
  setze(std::shared_ptr<DateitypIcons>());
  EXPECT_NE(icon(u".ohne"_s), nullptr);
}

}  // namespace
