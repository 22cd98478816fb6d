#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QProcess>
#include <cstdlib>

#include "host/bericht/Berichtsdatei.h"
#include "host/bericht/Bildladung.h"
#include "host/bericht/Seitenmaler.h"
#include "platform/files/Pfadkarte.h"
#include "tests/host/bericht/Berichtsbauer.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace berichtsbauer;

namespace {

constexpr int Dichte_der_Seiten = 50;
/// Letters may be drawn a little otherwise; a picture or a line of text in another place is far above this. Of 255.
constexpr double Toleranz = 1;
/// The preview's pictures come without the loss of a JPEG, and its letters from another painter.
constexpr double Toleranz_der_Vorschau = 3;

double unterschied(const QImage& farbiges, const QImage& anderes_farbiges) {
  const QImage eines = farbiges.convertToFormat(QImage::Format_Grayscale8);
  const QImage anderes = anderes_farbiges.convertToFormat(QImage::Format_Grayscale8);
  if (eines.size() != anderes.size()) return 255;
  double summe = 0;
  for (int y = 0; y < eines.height(); ++y)
    for (int x = 0; x < eines.width(); ++x) summe += std::abs(qGray(eines.pixel(x, y)) - qGray(anderes.pixel(x, y)));
  return summe / eines.width() / eines.height();
}

class Seitenbild : public ::testing::Test {
 protected:
  Seitenbild() { Pfadkarte::aktuell().setze(u"P:"_s, ordner_.pfad()); }

  Berichtsbild foto(const QString& name, QSize groesse, const QString& text = {}) {
    QImage pixel(groesse, QImage::Format_RGB32);
    QLinearGradient verlauf(0, 0, groesse.width(), groesse.height());
    verlauf.setColorAt(0, Qt::white);
    verlauf.setColorAt(1, Qt::darkBlue);
    QPainter(&pixel).fillRect(pixel.rect(), verlauf);
    QBuffer puffer;
    pixel.save(&puffer, "png");
    ordner_.schreibe(name, puffer.data());
    Berichtsbild eines = bild(text, groesse);
    eines.ordner = u"P:"_s;
    eines.datei = name;
    return eines;
  }

  static Berichtsbild fehlendes(const QString& name) {
    Berichtsbild eines = bild(u"War da"_s, {});
    eines.datei = name;
    eines.grund = u"Die Datei fehlt."_s;
    return eines;
  }

  /// The pages of the written file as another program paints them.
  QList<QImage> gemalte(const Bericht& einer, int je_Seite) {
    const QString ziel = ordner_.pfad(u"bericht.pdf"_s);
    berichtsdatei::schreibe(ziel, einer, {.je_Seite = je_Seite});
    const QStringList angaben{u"-r"_s, QString::number(Dichte_der_Seiten), u"-png"_s, ziel, ordner_.pfad(u"seite"_s)};
    EXPECT_EQ(QProcess::execute(u"pdftoppm"_s, angaben), 0) << "package poppler-utils is missing";
    QList<QImage> alle;
    const QDir ordner(ordner_.pfad());
    for (const QString& name : ordner.entryList({u"seite-*.png"_s}, QDir::Files, QDir::Name)) {
      alle.append(QImage(ordner.filePath(name)));
      QFile::remove(ordner.filePath(name));
    }
    return alle;
  }

  /// The same pages as the preview paints them.
  static QList<QImage> vorschau(const Bericht& einer, int je_Seite) {
    QList<QImage> alle;
    Bildladung ladung;
    for (const seitenplan::Seite& seite : seitenplan::plane(einer, je_Seite)) {
      QImage blatt(QSizeF(seite.groesse() * (Dichte_der_Seiten / 1440.0)).toSize(), QImage::Format_RGB32);
      blatt.fill(Qt::white);
      QPainter maler(&blatt);
      maler.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
      maler.scale(Dichte_der_Seiten / 1440.0, Dichte_der_Seiten / 1440.0);
      seitenmaler::male(
          maler, seite,
          [&](QPainter& m, const QRectF& ort, std::size_t i) {
        m.drawImage(ort, ladung.pixel(einer.bilder[i], seitenmaler::pixel(ort.size(), Dichte_der_Seiten)));
          },
          {});
      maler.end();
      alle.append(blatt);
    }
    return alle;
  }

  /// Compares with the reference pages of that name; KVO_SEITEN_NEU=1 writes them anew, to be looked at.
  void pruefe(const QString& name, const Bericht& einer, int je_Seite = 2) {
    const QList<QImage> seiten = gemalte(einer, je_Seite);
    const QList<QImage> eigene = vorschau(einer, je_Seite);
    ASSERT_EQ(seiten.size(), eigene.size());
    for (qsizetype i = 0; i < seiten.size(); ++i) {
      const QString muster =
          QStringLiteral(KVO_QUELLORDNER) + u"/tests/host/bericht/seiten/%1-%2.png"_s.arg(name).arg(i + 1);
      if (qEnvironmentVariableIsSet("KVO_SEITEN_NEU")) {
        ASSERT_TRUE(seiten[i].convertToFormat(QImage::Format_Grayscale8).save(muster));
      }
      EXPECT_LE(unterschied(seiten[i], QImage(muster)), Toleranz) << name.toStdString() << " page " << i + 1;
      const QImage kleiner = eigene[i].copy(seiten[i].rect());
      EXPECT_LE(unterschied(seiten[i], kleiner), Toleranz_der_Vorschau)
          << name.toStdString() << ", preview of page " << i + 1;
    }
  }

  Testordner ordner_;
};

TEST_F(Seitenbild, TwoOnAPageBelowTheHead) {
  Bericht einer = bericht({foto(u"a.png"_s, {800, 600}, u"Alter Kessel vor dem Ausbau"_s),
      foto(u"b.png"_s, {600, 800},
          u"Steht aufrecht, mit einem Text, der länger ist als eine Zeile und deshalb unter "
          "sich selbst weitergeht, ohne die Nummer zu berühren."_s),
      foto(u"c.png"_s, {60, 40}, u"Klein"_s)});
  einer.kopf.zeilen = {u"Müller & Söhne GmbH"_s, u"Hauptstraße 1"_s, u"79098 Freiburg"_s};
  pruefe(u"zwei"_s, einer);
}

TEST_F(Seitenbild, WholePagesMissingOnesAndAttachments) {
  Bericht einer = bericht({foto(u"a.png"_s, {1600, 1200}, u"Ganz"_s), fehlendes(u"weg.jpg"_s),
      foto(u"p.png"_s, {1500, 150}, u"Panorama"_s), foto(u"d.png"_s, {600, 800}, u"Anlage"_s)});
  einer.bilder[0].ganze_Seite = true;
  einer.bilder[3].anhang = true;
  pruefe(u"marken"_s, einer);
}

TEST_F(Seitenbild, FourAndSixOnAPage) {
  std::vector<Berichtsbild> alle;
  alle.reserve(7);
  for (int i = 0; i < 7; ++i)
    alle.push_back(foto(u"f%1.png"_s.arg(i), i % 2 == 0 ? QSize(800, 600) : QSize(600, 800), u"Foto"_s));
  pruefe(u"vier"_s, bericht(alle), 4);
  pruefe(u"sechs"_s, bericht(alle), 6);
}

TEST_F(Seitenbild, APictureInAnotherPlaceIsSeen) {
  const QList<QImage> zwei = vorschau(bericht({foto(u"a.png"_s, {800, 600}), foto(u"b.png"_s, {80, 60})}), 2);
  const QList<QImage> getauscht = vorschau(bericht({foto(u"b.png"_s, {80, 60}), foto(u"a.png"_s, {800, 600})}), 2);
  EXPECT_GT(unterschied(zwei[0], getauscht[0]), 5 * Toleranz_der_Vorschau);
  const QList<QImage> anderer_Text = vorschau(bericht({foto(u"a.png"_s, {800, 600}, u"Ein ganz anderer Text"_s)}), 2);
  const QList<QImage> ohne_Text = vorschau(bericht({foto(u"a.png"_s, {800, 600})}), 2);
  EXPECT_GT(unterschied(anderer_Text[0], ohne_Text[0]), 0);
}

}  // namespace
