// Where the report's window puts it: a PDF file, the printer, a mail.
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPrinter>
#include <QPushButton>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTest>

#include "host/bericht/Seitenplaner.h"
#include "host/fenster/bericht/Berichtsdruck.h"
#include "host/fenster/bericht/Berichtspost.h"
#include "tests/host/bericht/Berichtsbauer.h"
#include "tests/host/fenster/bericht/Berichtsaufbau.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class Berichtsausgabe : public Berichtsaufbau {
 protected:
  QString ziel() const { return ordner_.pfad(u"Bericht.pdf"_s); }
  /// A printer that writes into that file.
  static Berichtsfragen auf_Drucker(const QString& datei, const std::function<void(QPrinter&)>& dazu = {}) {
    Berichtsfragen fragen;
    fragen.drucker = [=](QWidget*, QPrinter& drucker, int) {
      drucker.setOutputFormat(QPrinter::PdfFormat);
      drucker.setOutputFileName(datei);
      if (dazu) dazu(drucker);
      return true;
    };
    return fragen;
  }
  /// Where the pictures' colour stands on a page of 413 by 585 pixels.
  QRect rotes_auf_Seite(int seite) const {
    ausgabe(u"pdftoppm"_s,
        {u"-r"_s, u"50"_s, u"-f"_s, QString::number(seite), u"-singlefile"_s, u"-png"_s, ziel(),
            temp_.pfad(u"seite"_s)});
    const QImage bild(temp_.pfad(u"seite.png"_s));
    QRect gebiet;
    for (int y = 0; y < bild.height(); ++y)
      for (int x = 0; x < bild.width(); ++x)
        if (const QColor farbe = bild.pixelColor(x, y); farbe.red() > 150 && farbe.green() < 90)
          gebiet |= QRect(x, y, 1, 1);
    return gebiet;
  }
  QStringList dateien() const { return QDir(ordner_.pfad()).entryList(QDir::Files); }

  Testordner temp_;
};

}  // namespace

TEST_F(Berichtsausgabe, TheSavedFileHoldsThePagesOfThePreview) {
  nimm_viele(5);
  oeffne(nach(ziel()));
  bool gesperrt = false;
  bei_Ausgabe([&] {
    gesperrt = !kind(u"Berichtsauswahl"_s).isEnabled() && !kind(u"cmd_Schliessen"_s).isEnabled() &&
        !kind(u"cmd_Drucken"_s).isEnabled();
  });
  druecke(u"cmd_Speichern"_s);
  EXPECT_TRUE(gesperrt);
  EXPECT_EQ(status(), u"Gespeichert: "_s + ziel());
  EXPECT_EQ(fenster_->ergebnis(), status());
  EXPECT_EQ(seitenzahl(ziel()), ansicht().seiten());
  const QString worte = ausgabe(u"pdftotext"_s, {u"-layout"_s, ziel(), u"-"_s});
  for (const QString& text : texte()) EXPECT_TRUE(worte.contains(text)) << text.toStdString();
  EXPECT_FALSE(kind(u"bar_Fortschritt"_s).isVisible());
  EXPECT_TRUE(kind(u"Berichtsauswahl"_s).isEnabled());
  EXPECT_EQ(fenster_->focusWidget(), &kind(u"cmd_Speichern"_s));
}

TEST_F(Berichtsausgabe, WhoeverGivesUpTheQuestionForTheFileHasSavedNothing) {
  nimm_viele(2);
  oeffne(nach({}));
  druecke(u"cmd_Speichern"_s);
  EXPECT_EQ(status(), QString());
  EXPECT_EQ(fenster_->ergebnis(), QString());
}

TEST_F(Berichtsausgabe, StoppedByButtonOrEscapeTheOldFileStaysAndSoDoesTheWindow) {
  nimm_viele(40);
  ordner_.schreibe(u"Bericht.pdf"_s, "alt");
  oeffne(nach(ziel()));
  const QList<std::function<void()>> wege{
      [this] { druecke(u"cmd_Abbrechen"_s); }, [this] { taste(Qt::Key_Escape); }, [this] { fenster_->close(); }};
  for (const auto& weg : wege) {
    bei_Ausgabe(weg);
    druecke(u"cmd_Speichern"_s);
    EXPECT_EQ(status(), u"Abgebrochen; es ist nichts gespeichert."_s);
    EXPECT_EQ(ordner_.lies(u"Bericht.pdf"_s), "alt");
    EXPECT_EQ(dateien(), QStringList{u"Bericht.pdf"_s});
    EXPECT_TRUE(fenster_->isVisible());
    EXPECT_EQ(fenster_->ergebnis(), QString());
  }
  druecke(u"cmd_Speichern"_s);
  EXPECT_EQ(status(), u"Gespeichert: "_s + ziel());
  EXPECT_EQ(seitenzahl(ziel()), 20);
}

TEST_F(Berichtsausgabe, ATargetThatCantBeWrittenIsToldInWords) {
  nimm_viele(1);
  const QString hier = ordner_.pfad(u"fehlt/Bericht.pdf"_s);
  oeffne(nach(hier));
  const QString worte = u"Der Bericht „%1“ ist nicht zu schreiben: Den Ordner gibt es nicht."_s.arg(hier);
  meldungen_.erwarte({worte, u"Bericht"_s, Symbol::Kritisch, Knoepfe::OK});
  druecke(u"cmd_Speichern"_s);
  EXPECT_EQ(status(), worte);
  EXPECT_TRUE(kind(u"cmd_Speichern"_s).isEnabled());
}

TEST_F(Berichtsausgabe, MissingPicturesAreToldAfterSaving) {
  nimm_viele(1);
  nimm(u"kessel"_s, {}, {});
  oeffne(nach(ziel()));
  meldungen_.erwarte({u"Diese Bilder fehlen im Bericht:\r\n\r\nkessel.jpg: Die Datei fehlt."_s, u"Bericht"_s,
      Symbol::Ausrufezeichen, Knoepfe::OK});
  druecke(u"cmd_Speichern"_s);
  EXPECT_EQ(status(), u"Gespeichert: "_s + ziel());
}

TEST_F(Berichtsausgabe, TheSuggestedFileIsNamedAfterTheRecordAndLiesAmongTheDocuments) {
  nimm_viele(1);
  const auto zurueck = qScopeGuard([heim = qgetenv("HOME")] { qputenv("HOME", heim); });
  qputenv("HOME", QFile::encodeName(ordner_.pfad()));
  QString vorschlag;
  Berichtsfragen fragen;
  fragen.ziel = [&](QWidget*, const QString& vorgeschlagen) {
    vorschlag = vorgeschlagen;
    return QString();
  };
  oeffne(fragen);
  druecke(u"cmd_Speichern"_s);
  EXPECT_EQ(vorschlag, ordner_.pfad(u"Bildbericht AB 24-1001.pdf"_s)) << "there is no folder for documents";
  vorgang_.nummer = u"AB 24/1001 \"x\""_s;
  ASSERT_TRUE(QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
  oeffne(fragen);
  druecke(u"cmd_Speichern"_s);
  EXPECT_EQ(vorschlag, ordner_.pfad(u"Documents/Bildbericht AB 24_1001 _x_.pdf"_s)) << "no file takes all signs";
}

// ── Mail ────────────────────────────────────────────────────────────────────────────────────────────────────────────

namespace {

class Berichtsmail : public Berichtsausgabe {
 protected:
  void SetUp() override {
    Berichtsausgabe::SetUp();
    nimm_viele(3);
    qputenv("TMPDIR", QFile::encodeName(temp_.pfad()));
  }
  void TearDown() override {
    qputenv("PATH", suchpfad_);
    if (tempordner_.isNull())
      qunsetenv("TMPDIR");
    else
      qputenv("TMPDIR", tempordner_);
    Berichtsausgabe::TearDown();
  }
  /// A mail program that notes how it was called.
  void stelle_Mailprogramm() {
    const QString programm = ordner_.schreibe(u"bin/xdg-email"_s,
        "#!/bin/sh\nfor wort in \"$@\"; do printf '%s\\n' \"$wort\"; done > '" +
            QFile::encodeName(ordner_.pfad(u"neu"_s)) + "'\nmv '" + QFile::encodeName(ordner_.pfad(u"neu"_s)) + "' '" +
            QFile::encodeName(ordner_.pfad(u"aufruf"_s)) + "'\n");
    QFile::setPermissions(programm, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", QFile::encodeName(ordner_.pfad(u"bin"_s)) + ':' + suchpfad_);
  }
  QStringList tempordner() const { return QDir(temp_.pfad()).entryList({u"bildbericht-*"_s}, QDir::Dirs); }

  const QByteArray suchpfad_ = qgetenv("PATH");
  const QByteArray tempordner_ = qgetenv("TMPDIR");
};

}  // namespace

TEST_F(Berichtsmail, TheMailProgramGetsSubjectAndFile) {
  stelle_Mailprogramm();
  oeffne();
  druecke(u"cmd_Senden"_s);
  EXPECT_EQ(status(), u"Der Bericht ist an das Mailprogramm übergeben."_s);
  ASSERT_TRUE(QTest::qWaitFor([this] { return ordner_.vorhanden(u"aufruf"_s); }));
  const QStringList worte = QString::fromUtf8(ordner_.lies(u"aufruf"_s)).split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(worte.size(), 4);
  EXPECT_EQ(worte.mid(0, 3),
      (QStringList{u"--subject"_s, u"Bildbericht: Beleg AB 24-1001 – Bäckerei Huber, Freiburg"_s, u"--attach"_s}));
  EXPECT_EQ(worte[3].section(u'/', -1), u"Bildbericht AB 24-1001.pdf"_s);
  EXPECT_EQ(seitenzahl(worte[3]), 2);
  ASSERT_EQ(tempordner().size(), 1);
  const QFileInfo eigener(temp_.pfad(tempordner().first()));
  EXPECT_FALSE(eigener.permission(QFile::ReadGroup) || eigener.permission(QFile::ReadOther));
}

TEST_F(Berichtsmail, WithoutSuchAProgramTheButtonIsOffAndSaysWhy) {
  qputenv("PATH", QFile::encodeName(ordner_.pfad(u"leer"_s)));
  oeffne();
  EXPECT_FALSE(kind(u"cmd_Senden"_s).isEnabled());
  EXPECT_EQ(kind(u"cmd_Senden"_s).toolTip(), u"Auf diesem Rechner fehlt das Programm xdg-email (Paket xdg-utils)"_s);
  stelle_Mailprogramm();
  oeffne();
  EXPECT_TRUE(kind(u"cmd_Senden"_s).isEnabled());
}

TEST_F(Berichtsmail, StoppedItLeavesNothingBehindAndCallsNobody) {
  stelle_Mailprogramm();
  nimm(u"noch"_s);
  oeffne();
  bei_Ausgabe([this] { taste(Qt::Key_Escape); });
  druecke(u"cmd_Senden"_s);
  EXPECT_EQ(status(), u"Abgebrochen; es ist nichts verschickt."_s);
  EXPECT_EQ(tempordner(), QStringList());
  EXPECT_FALSE(ordner_.vorhanden(u"aufruf"_s));
}

TEST_F(Berichtsmail, AProgramThatDoesNotStartIsTold) {
  ordner_.schreibe(u"bin/xdg-email"_s, "#!/gibt/es/nicht\n");
  QFile::setPermissions(ordner_.pfad(u"bin/xdg-email"_s), QFile::ReadOwner | QFile::ExeOwner);
  qputenv("PATH", QFile::encodeName(ordner_.pfad(u"bin"_s)) + ':' + suchpfad_);
  oeffne();
  meldungen_.erwarte({u"Das Mailprogramm lässt sich nicht öffnen."_s, u"Bericht"_s, Symbol::Kritisch, Knoepfe::OK});
  druecke(u"cmd_Senden"_s);
  EXPECT_EQ(tempordner(), QStringList());
}

// ── Printing ────────────────────────────────────────────────────────────────────────────────────────────────────────

TEST_F(Berichtsausgabe, ThePrinterGetsThePagesWithTheirTextsALandscapeOneTurned) {
  nimm(u"quer"_s, u"quer auf der ganzen Seite"_s, foto({800, 300}), u"0011"_s);
  nimm_viele(3);
  oeffne(auf_Drucker(ziel()));
  ASSERT_TRUE(ansicht().plan().front().quer);
  druecke(u"cmd_Drucken"_s);
  EXPECT_EQ(status(), u"3 Seiten sind gedruckt."_s);
  EXPECT_EQ(seitenzahl(ziel()), 3);
  const QString worte = ausgabe(u"pdftotext"_s, {ziel(), u"-"_s});
  for (const QString& wort : {u"quer auf der ganzen Seite"_s, u"Text 3"_s, u"Seite 3 von 3"_s})
    EXPECT_TRUE(worte.contains(wort)) << worte.toStdString();
  const QString angaben = ausgabe(u"pdfinfo"_s, {u"-l"_s, u"3"_s, ziel()});
  EXPECT_EQ(angaben.count(u"(A4)"_s), 3) << "the paper stays upright: " << angaben.toStdString();
  EXPECT_EQ(dateien(), QStringList{u"Bericht.pdf"_s});
  const QRect rot = rotes_auf_Seite(1);
  EXPECT_GT(rot.height(), 2 * rot.width()) << "the broad picture stands on end";
  EXPECT_TRUE(QRect(10, 10, 391, 565).contains(rot)) << rot.left() << ' ' << rot.top();
}

TEST_F(Berichtsausgabe, RangeAndOrderAndCopiesAreAsThePrinterIsTold) {
  QPrinter drucker;
  drucker.setOutputFormat(QPrinter::PdfFormat);
  const auto folge = [&](int aktuelle = 1) {
    QStringList seiten;
    for (const std::size_t seite : berichtsdruck::folge(drucker, 5, aktuelle))
      seiten.append(QString::number(seite + 1));
    return seiten.join(u' ');
  };
  EXPECT_EQ(folge(), u"1 2 3 4 5"_s);
  drucker.setPageOrder(QPrinter::LastPageFirst);
  EXPECT_EQ(folge(), u"5 4 3 2 1"_s);
  drucker.setPrintRange(QPrinter::PageRange);
  drucker.setFromTo(2, 9);
  EXPECT_EQ(folge(), u"5 4 3 2"_s);
  drucker.setPageOrder(QPrinter::FirstPageFirst);
  drucker.setFromTo(2, 3);
  drucker.setCopyCount(2);
  EXPECT_EQ(folge(), u"2 3 2 3"_s);
  drucker.setCollateCopies(false);
  EXPECT_EQ(folge(), u"2 2 3 3"_s);
  drucker.setPrintRange(QPrinter::CurrentPage);
  EXPECT_EQ(folge(4), u"4 4"_s);
}

TEST_F(Berichtsausgabe, APictureThatVanishedBeforePrintingIsTold) {
  nimm_viele(3);
  oeffne(auf_Drucker(ziel()));
  ASSERT_TRUE(QFile::remove(ablage_.pfad(u"Belege/1/bild002.jpg"_s)));
  meldungen_.erwarte(
      {u"Diese Bilder fehlen im Bericht:\r\n\r\nbild002.jpg: Die Datei war beim Drucken nicht mehr zu lesen."_s,
          u"Bericht"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  druecke(u"cmd_Drucken"_s);
  EXPECT_EQ(status(), u"2 Seiten sind gedruckt."_s);
}

TEST_F(Berichtsausgabe, SmallerPaperMakesThePageSmallerAndCutsNothing) {
  nimm_viele(2);
  oeffne(auf_Drucker(ziel(), [](QPrinter& drucker) { drucker.setPageSize(QPageSize(QPageSize::A5)); }));
  druecke(u"cmd_Drucken"_s);
  EXPECT_TRUE(ausgabe(u"pdftotext"_s, {ziel(), u"-"_s}).contains(u"Seite 1 von 1"_s));
  EXPECT_TRUE(ausgabe(u"pdfinfo"_s, {ziel()}).contains(u"(A5)"_s));
}

TEST_F(Berichtsausgabe, PrintingThatIsStoppedLeavesTheOldFile) {
  nimm_viele(40);
  ordner_.schreibe(u"Bericht.pdf"_s, "alt");
  oeffne(auf_Drucker(ziel()));
  bei_Ausgabe([this] { druecke(u"cmd_Abbrechen"_s); });
  druecke(u"cmd_Drucken"_s);
  EXPECT_EQ(status(), u"Abgebrochen; es ist nichts gedruckt."_s);
  EXPECT_EQ(ordner_.lies(u"Bericht.pdf"_s), "alt");
  EXPECT_EQ(dateien(), QStringList{u"Bericht.pdf"_s});
}

TEST_F(Berichtsausgabe, AFileThatThePrinterCantWriteIsTold) {
  nimm_viele(1);
  const QString hier = ordner_.pfad(u"fehlt/Bericht.pdf"_s);
  oeffne(auf_Drucker(hier));
  meldungen_.erwarte(
      {u"Die Datei „%1“ ist nicht zu schreiben."_s.arg(hier), u"Bericht"_s, Symbol::Kritisch, Knoepfe::OK});
  druecke(u"cmd_Drucken"_s);
}

TEST_F(Berichtsausgabe, PrintedPicturesHaveThreeHundredDotsAtMost) {
  nimm(u"gross"_s, u"groß"_s, foto({4000, 3000}));
  oeffne(auf_Drucker(ziel()));
  druecke(u"cmd_Drucken"_s);
  const QStringList zeile =
      ausgabe(u"pdfimages"_s, {u"-list"_s, ziel()}).split(u'\n').value(2).split(u' ', Qt::SkipEmptyParts);
  ASSERT_GE(zeile.size(), 14);
  EXPECT_NEAR(zeile[12].toInt(), 300, 6);
}
