#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPdfWriter>

#include "platform/files/Pfadkarte.h"
#include "store/clsBildZuordnungen.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

int drucke_Bilder(clsBildZuordnungen& bilder, const QString& wurzel, QPagedPaintDevice& drucker);

namespace {

QString lies(const QString& name) {
  QFile datei(QStringLiteral(KVO_QUELLORDNER) + u'/' + name);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly)) << name.toStdString();
  return QString::fromUtf8(datei.readAll());
}

TEST(Druckbeispiel, PrintsTheMarkedPicturesOnASheetEach) {
  const Testordner ordner;
  Pfadkarte::aktuell().setze(u"P:"_s, ordner.pfad());
  clsBildZuordnungen bilder;
  bilder.FKT_Neu();
  for (const auto& [name, groesse] : {std::pair(u"quer"_s, QSize(400, 100)), std::pair(u"hoch"_s, QSize(100, 900)),
           std::pair(u"ungedruckt"_s, QSize(10, 10)), std::pair(u"fehlt"_s, QSize())}) {
    if (!groesse.isEmpty()) {
      QImage pixel(groesse, QImage::Format_RGB32);
      pixel.fill(Qt::red);
      QBuffer puffer;
      pixel.save(&puffer, "png");
      ordner.schreibe(u"A/"_s + name + u".png"_s, puffer.data());
    }
    bilder.FKT_NeuesBild(u"AB"_s, u"1"_s, {}, {}, name, u"png"_s, u"BEL"_s, {});
    bilder.Bild_Pfad(u"A"_s);
    bilder.Bild_Drucken(name != u"ungedruckt");
  }
  QBuffer pdf;
  pdf.open(QIODevice::WriteOnly);
  {
    QPdfWriter drucker(&pdf);
    drucker.setResolution(72);
    EXPECT_EQ(drucke_Bilder(bilder, u"P:"_s, drucker), 2);
  }
  EXPECT_TRUE(pdf.data().contains("/Count 2")) << pdf.data().left(400).toStdString();
}

TEST(Druckbeispiel, TheGuideShowsItAsItIsCompiled) {
  const QString beispiel = lies(u"docs/beispiele/bilder_drucken.cpp"_s);
  EXPECT_LT(beispiel.count(u'\n'), 40);
  EXPECT_TRUE(lies(u"docs/EINBETTEN.md"_s).contains(u"\n```cpp\n"_s + beispiel + u"```\n"_s))
      << "docs/EINBETTEN.md shows another text than docs/beispiele/bilder_drucken.cpp";
}

}  // namespace
