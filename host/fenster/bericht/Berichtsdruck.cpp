#include "host/fenster/bericht/Berichtsdruck.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryFile>
#include <algorithm>
#include <cstdio>

#include "host/bericht/Bildladung.h"
#include "host/bericht/Firmenzeichen.h"
#include "host/bericht/Seitenmaler.h"
#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace berichtsdruck {
namespace {

constexpr double Twips_je_Zoll = 1440;
/// Finer than paper shows.
constexpr double Groesste_Dichte = 300;

Abbruch nimmt_nicht(const QPrinter& drucker) {
  return {Ausgang::Datei, u"Der Drucker „%1“ nimmt den Bericht nicht an."_s.arg(drucker.printerName())};
}
Abbruch nicht_zu_schreiben(const QString& datei) {
  return {Ausgang::Datei, u"Die Datei „%1“ ist nicht zu schreiben."_s.arg(datei)};
}

/// Puts a page on the paper: turned where that lies the other way, in its middle, never enlarged.
void richte_aus(QPainter& maler, const QPrinter& drucker, const seitenplan::Seite& seite) {
  const QSizeF papier = drucker.pageLayout().fullRectPixels(drucker.resolution()).size();
  const bool gedreht = seite.quer != (papier.width() > papier.height());
  const double je_Twip = drucker.resolution() / Twips_je_Zoll;
  QSizeF blatt = seite.groesse() * je_Twip;
  if (gedreht) blatt.transpose();
  const double mass = std::min({1.0, papier.width() / blatt.width(), papier.height() / blatt.height()});
  blatt *= mass;
  maler.resetTransform();
  maler.translate((papier.width() - blatt.width()) / 2, (papier.height() - blatt.height()) / 2);
  if (gedreht) {
    maler.translate(blatt.width(), 0);
    maler.rotate(90);
  }
  maler.scale(je_Twip * mass, je_Twip * mass);
}

/// What is asked for the pictures of the pages, until the user stops it.
class Drucklauf {
 public:
  Drucklauf(QPrinter& drucker, const Bericht& bericht, const Fortgang& fortgang)
      : bericht_(bericht), fortgang_(fortgang), dichte_(std::min<double>(drucker.resolution(), Groesste_Dichte)) {}

  /// False once the user has stopped it.
  bool weiter(std::size_t getan, std::size_t von) {
    getan_ = getan;
    von_ = von;
    return frage();
  }
  void male(QPainter& maler, const seitenplan::Seite& seite) {
    const auto bild = [this](QPainter& m, const QRectF& ort, std::size_t nummer) {
      frage();
      male_Bild(m, ort, bericht_.bilder.at(nummer));
    };
    const auto zeichen = [this](QPainter& m, const QRectF& ort) {
      m.drawImage(ort, firmenzeichen::pixel(bericht_.kopf.zeichen, seitenmaler::pixel(ort.size(), dichte_)));
    };
    seitenmaler::male(maler, seite, bild, zeichen);
  }
  const QStringList& verlorene() const noexcept { return verlorene_; }

 private:
  bool frage() {
    angehalten_ = angehalten_ || (fortgang_ && !fortgang_(getan_, von_));
    return !angehalten_;
  }
  void male_Bild(QPainter& maler, const QRectF& ort, const Berichtsbild& bild) {
    const QImage pixel = ladung_.pixel(bild, seitenmaler::pixel(ort.size(), dichte_));
    if (!pixel.isNull()) return maler.drawImage(ort, pixel);
    maler.setBrush(Qt::NoBrush);
    maler.setPen(Qt::gray);
    maler.drawRect(ort);
    const QString grund = u"%1: Die Datei war beim Drucken nicht mehr zu lesen."_s.arg(bild.datei);
    if (!verlorene_.contains(grund)) verlorene_.append(grund);
  }

  const Bericht& bericht_;
  const Fortgang& fortgang_;
  const double dichte_;
  Bildladung ladung_;
  std::size_t getan_ = 0;
  std::size_t von_ = 0;
  bool angehalten_ = false;
  QStringList verlorene_;
};

Ergebnis male_Seiten(QPrinter& drucker, const Bericht& bericht, const Seitenplan& plan,
    const std::vector<std::size_t>& seiten, const Fortgang& fortgang) {
  drucker.setFullPage(true);
  Drucklauf lauf(drucker, bericht, fortgang);
  QPainter maler;
  std::size_t getan = 0;
  for (; getan < seiten.size() && lauf.weiter(getan, seiten.size()); ++getan) {
    if (getan == 0 ? !maler.begin(&drucker) : !drucker.newPage()) throw nimmt_nicht(drucker);
    maler.setRenderHint(QPainter::SmoothPixmapTransform);
    richte_aus(maler, drucker, plan.at(seiten[getan]));
    lauf.male(maler, plan.at(seiten[getan]));
  }
  if (getan > 0 && (!maler.end() || drucker.printerState() == QPrinter::Error)) throw nimmt_nicht(drucker);
  return {getan, lauf.verlorene()};
}

/// A full disk is no failure to the printer.
bool ist_ganz(const QString& pfad) {
  QFile datei(pfad);
  constexpr qint64 Schluss = 16;
  return datei.open(QIODevice::ReadOnly) && datei.seek(std::max<qint64>(0, datei.size() - Schluss)) &&
      datei.readAll().trimmed().endsWith("%%EOF");
}

}  // namespace

std::vector<std::size_t> folge(const QPrinter& drucker, std::size_t seiten, int aktuelle) {
  std::size_t von = 1;
  std::size_t bis = seiten;
  if (drucker.printRange() == QPrinter::CurrentPage) von = bis = static_cast<std::size_t>(std::max(1, aktuelle));
  if (drucker.printRange() == QPrinter::PageRange && drucker.fromPage() > 0) {
    von = static_cast<std::size_t>(drucker.fromPage());
    bis = std::min(seiten, static_cast<std::size_t>(std::max(drucker.fromPage(), drucker.toPage())));
  }
  std::vector<std::size_t> einmal;
  for (std::size_t seite = von; seite <= bis; ++seite) einmal.push_back(seite - 1);
  if (drucker.pageOrder() == QPrinter::LastPageFirst) std::reverse(einmal.begin(), einmal.end());
  // What the printer can't do itself is done here.
  const int mal = drucker.supportsMultipleCopies() ? 1 : drucker.copyCount();
  std::vector<std::size_t> alle;
  if (drucker.collateCopies()) {
    for (int i = 0; i < mal; ++i) alle.insert(alle.end(), einmal.begin(), einmal.end());
    return alle;
  }
  for (const std::size_t seite : einmal) alle.insert(alle.end(), static_cast<std::size_t>(mal), seite);
  return alle;
}

Ergebnis drucke(QPrinter& drucker, const Bericht& bericht, const Seitenplan& plan,
    const std::vector<std::size_t>& seiten, const Fortgang& fortgang) {
  const QString ziel = drucker.outputFileName();
  if (ziel.isEmpty()) return male_Seiten(drucker, bericht, plan, seiten, fortgang);
  // The printer empties its file before it has anything to write.
  QTemporaryFile daneben(QFileInfo(ziel).path() + u"/bildbericht-XXXXXX.pdf"_s);
  if (!daneben.open()) throw nicht_zu_schreiben(ziel);
  drucker.setOutputFileName(daneben.fileName());
  const Ergebnis ergebnis = male_Seiten(drucker, bericht, plan, seiten, fortgang);
  if (ergebnis.seiten < seiten.size()) return {};
  const bool ersetzt = ist_ganz(daneben.fileName()) &&
      std::rename(QFile::encodeName(daneben.fileName()).constData(), QFile::encodeName(ziel).constData()) == 0;
  if (!ersetzt) throw nicht_zu_schreiben(ziel);
  return ergebnis;
}

}  // namespace berichtsdruck
