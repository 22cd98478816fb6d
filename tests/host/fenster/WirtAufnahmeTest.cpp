// Pictures that are dropped on a record or pasted, with real drag events and the keys, and the way back.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "host/fenster/aufnahme/Abwurf.h"
#include "host/fenster/aufnahme/Aufnahmefenster.h"
#include "store/Dialogspur.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Erst_speichern = u"Bitte erst speichern und dann die Datei hierher ziehen."_s;

class WirtAufnahme : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    sql(u"DELETE FROM Bild_Zuordnungen"_s);
    ablage_.schreibe(u"Belege/liesmich.txt"_s, "x");
    oeffne_Ablage();
  }
  void oeffne_Ablage() {
    Wirtsoptionen mit = optionen();
    mit.bilder = ablage_.pfad();
    oeffne(mit);
  }
  QString eingang(const QString& name, const QByteArray& bytes) const { return eingang_.schreibe(name, bytes); }
  static QByteArray bild(int nummer) { return handyfoto::jpeg(handyfoto::motiv({16 + nummer % 32, 16 + nummer / 32})); }

  static std::unique_ptr<QMimeData> mit_Dateien(const QStringList& dateien) {
    auto angebot = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString& datei : dateien) urls.append(QUrl::fromLocalFile(datei));
    angebot->setUrls(urls);
    return angebot;
  }
  static std::unique_ptr<QMimeData> mit_Adresse(const QString& adresse) {
    auto angebot = std::make_unique<QMimeData>();
    angebot->setUrls({QUrl(adresse)});
    return angebot;
  }
  static std::unique_ptr<QMimeData> mit_Zusage(const QString& format) {
    auto angebot = std::make_unique<QMimeData>();
    angebot->setData(format, "x");
    return angebot;
  }

  /// Drags over the widget to that place; true where a drop would be taken.
  bool ziehe(
      QWidget& ziel, QPoint ort, const QMimeData& angebot, Qt::DropActions erlaubte = Qt::CopyAction | Qt::MoveAction) {
    QDragEnterEvent hinein(QPoint(1, 1), erlaubte, &angebot, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&ziel, &hinein);
    if (!hinein.isAccepted()) return false;
    QDragMoveEvent weiter(ort, erlaubte, &angebot, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&ziel, &weiter);
    if (weiter.isAccepted()) {
      EXPECT_EQ(weiter.dropAction(), Qt::CopyAction);
    }
    return weiter.isAccepted();
  }
  /// Drags and lets go, and waits for what comes of it.
  bool wirf_ab(QWidget& ziel, QPoint ort, std::unique_ptr<QMimeData> angebot,
      Qt::DropActions erlaubte = Qt::CopyAction | Qt::MoveAction) {
    if (!ziehe(ziel, ort, *angebot, erlaubte)) return false;
    QDropEvent ab(ort, erlaubte, angebot.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&ziel, &ab);
    // The other program's offer is gone as soon as it has its answer.
    angebot.reset();
    QCoreApplication::processEvents();
    return ab.isAccepted();
  }
  QPoint ort_von(const QString& nummer) const { return baum()->visualRect(index(nummer)).center(); }
  bool wirf_auf(const QString& nummer, std::unique_ptr<QMimeData> angebot) {
    return wirf_ab(*baum()->viewport(), ort_von(nummer), std::move(angebot));
  }
  QListView& streifen() const { return *fenster_->ansicht()->lst_Bilder; }

  static QStringList zeilen(const QString& nummer) {
    return werte(
        u"SELECT Bildname || '.' || BildExt FROM Bild_Zuordnungen WHERE Key1 || ' ' || Key2 = '%1' ORDER BY "
        u"SortIndex"_s.arg(nummer));
  }
  QStringList dateien(const QString& ordner) const {
    return QDir(ablage_.pfad(u"Belege/"_s + ordner)).entryList(QDir::Files, QDir::Name);
  }
  bool rueckgaengig_da() const { return kind<QPushButton>(u"cmd_Rueckgaengig"_s)->isVisible(); }
  void erwarte_Box(const QString& text) {
    meldungen_.erwarte({u"Nicht zugeordnet:\r\n"_s + text, u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  }
  void fuege_ein(std::unique_ptr<QMimeData> inhalt) const {
    QApplication::clipboard()->setMimeData(inhalt.release());
    baum()->setFocus();
    QTest::keyClick(fenster_->windowHandle(), Qt::Key_V, Qt::ControlModifier);
  }

  Testordner ablage_;
  Testordner eingang_;
};

}  // namespace

TEST_F(WirtAufnahme, FilesDroppedOnARecordInTheListAreAttachedToIt) {
  klicke(u"RE 24-2003"_s);
  const QByteArray liegend = handyfoto::foto({64, 48}, 6);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, liegend), eingang(u"b.jpg"_s, bild(2))})));
  const QStringList neue = zeilen(u"AB 24-1001"_s);
  ASSERT_EQ(neue.size(), 2);
  EXPECT_EQ(dateien(u"24-1001"_s), neue);
  EXPECT_TRUE(handyfoto::steht_aufrecht(ablage_.lies(u"Belege/24-1001/"_s + neue[0]), liegend));
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u": 2 Bilder zugeordnet."_s)) << text(u"lbl_Status"_s).toStdString();
  EXPECT_TRUE(text(u"lbl_Status"_s).startsWith(u"Beleg AB 24-1001"_s));
  EXPECT_EQ(spalte(u"AB 24-1001"_s, 2), u"2"_s);
  EXPECT_EQ(text(u"lbl_Nummer"_s), u"RE 24-2003"_s) << "the choice stays";
  EXPECT_TRUE(rueckgaengig_da());
  EXPECT_TRUE(zeilen(u"RE 24-2003"_s).isEmpty());
}

TEST_F(WirtAufnahme, TheRecordUnderTheMouseIsMarkedWhileItIsDragged) {
  const auto angebot = mit_Dateien({eingang(u"a.jpg"_s, bild(1))});
  QWidget& flaeche = *baum()->viewport();
  EXPECT_TRUE(ziehe(flaeche, ort_von(u"AB 24-1001"_s), *angebot));
  auto* marke = flaeche.findChild<QWidget*>(u"Abwurfmarke"_s);
  ASSERT_NE(marke, nullptr);
  EXPECT_TRUE(marke->isVisible());
  EXPECT_TRUE(marke->geometry().contains(ort_von(u"AB 24-1001"_s)));
  EXPECT_FALSE(marke->geometry().contains(ort_von(u"RE 24-2003"_s)));
  // The head of a kind takes nothing.
  EXPECT_FALSE(ziehe(flaeche, baum()->visualRect(index(u"AB 24-1001"_s).parent()).center(), *angebot));
  EXPECT_FALSE(marke->isVisible());
  EXPECT_TRUE(ziehe(flaeche, ort_von(u"RE 24-2003"_s), *angebot));
  QDragLeaveEvent hinaus;
  QCoreApplication::sendEvent(&flaeche, &hinaus);
  EXPECT_FALSE(marke->isVisible());
  EXPECT_EQ(werte(u"SELECT count(*) FROM Bild_Zuordnungen"_s), QStringList{u"0"_s});
}

TEST_F(WirtAufnahme, FilesDroppedOnThePicturesGoToTheChosenRecord) {
  // Without a record there is nothing to drop on.
  EXPECT_FALSE(wirf_ab(*fenster_->ansicht(), {200, 200}, mit_Dateien({eingang(u"a.jpg"_s, bild(1))})));
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(wirf_ab(*fenster_->ansicht(), {200, 200}, mit_Dateien({eingang(u"a.jpg"_s, bild(1))})));
  EXPECT_TRUE(streifen().isVisible());
  EXPECT_TRUE(wirf_ab(*streifen().viewport(), {20, 20}, mit_Dateien({eingang(u"b.jpg"_s, bild(2))})));
  EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), 2);
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"2 Bilder"_s);
}

TEST_F(WirtAufnahme, WhoOnlyWantsToMoveIsRefusedSinceTheSourceStays) {
  EXPECT_FALSE(wirf_ab(
      *baum()->viewport(), ort_von(u"AB 24-1001"_s), mit_Dateien({eingang(u"a.jpg"_s, bild(1))}), Qt::MoveAction));
  EXPECT_TRUE(eingang_.vorhanden(u"a.jpg"_s));
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
}

TEST_F(WirtAufnahme, WhatIsNoPictureIsNamed) {
  const QString notiz = eingang(u"notiz.pdf"_s, "x");
  eingang(u"ordner/innen.jpg"_s, bild(1));
  const QString ordner = eingang_.pfad(u"ordner"_s);
  erwarte_Box(u"„%1“: Das ist kein Bild eines bekannten Formats.\r\n„%2“ ist ein Ordner."_s.arg(notiz, ordner));
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({notiz, eingang(u"a.jpg"_s, bild(1)), ordner})));
  EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), 1);
  EXPECT_TRUE(text(u"lbl_Status"_s).contains(u"1 Bild zugeordnet. NICHT zugeordnet: 2 – „"_s));
  EXPECT_TRUE(rueckgaengig_da());
}

TEST_F(WirtAufnahme, AddressesAreNamedAndNeverFetched) {
  const QString satz = u"„https://example.org/foto.jpg“ ist eine Adresse und wird nicht geholt. "_s + Erst_speichern;
  erwarte_Box(satz);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Adresse(u"https://example.org/foto.jpg"_s)));
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u": Nichts zugeordnet. "_s + satz)) << text(u"lbl_Status"_s).toStdString();
  EXPECT_FALSE(rueckgaengig_da());
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
}

TEST_F(WirtAufnahme, AMerePromiseHasToBeSavedFirst) {
  for (const QString& format :
      {u"application/x-moz-file-promise"_s, u"text/x-moz-message"_s, u"XdndDirectSave0"_s, u"message/rfc822"_s}) {
    erwarte_Box(u"Das andere Programm bietet noch keine Datei an. "_s + Erst_speichern);
    EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Zusage(format))) << format.toStdString();
  }
  EXPECT_FALSE(wirf_auf(u"AB 24-1001"_s, mit_Zusage(u"text/plain"_s)));
  EXPECT_FALSE(wirf_auf(u"AB 24-1001"_s, mit_Zusage(u"application/x-qabstractitemmodeldatalist"_s)));
}

TEST_F(WirtAufnahme, PictureDataThatABrowserOffersBesideItsAddressCount) {
  auto angebot = mit_Adresse(u"https://example.org/foto.jpg"_s);
  angebot->setImageData(handyfoto::motiv({40, 30}));
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, std::move(angebot)));
  const QStringList neue = zeilen(u"AB 24-1001"_s);
  ASSERT_EQ(neue.size(), 1);
  EXPECT_TRUE(neue[0].startsWith(u"Einfuegung_"_s) && neue[0].endsWith(u".jpg"_s)) << neue[0].toStdString();
  // Where a file comes too, it is the picture.
  auto beides = mit_Dateien({eingang(u"a.jpg"_s, bild(1))});
  beides->setImageData(handyfoto::motiv({40, 30}));
  EXPECT_TRUE(wirf_auf(u"RE 24-2003"_s, std::move(beides)));
  ASSERT_EQ(zeilen(u"RE 24-2003"_s).size(), 1);
  EXPECT_TRUE(zeilen(u"RE 24-2003"_s)[0].startsWith(u'a'));
}

TEST_F(WirtAufnahme, TheKeysPasteFilesAndPictures) {
  klicke(u"AB 24-1001"_s);
  fuege_ein(mit_Dateien({eingang(u"a.jpg"_s, bild(1))}));
  EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), 1);
  auto pixel = std::make_unique<QMimeData>();
  pixel->setImageData(handyfoto::motiv({40, 30}));
  fuege_ein(std::move(pixel));
  ASSERT_EQ(zeilen(u"AB 24-1001"_s).size(), 2);
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s)[1].startsWith(u"Einfuegung_"_s));
  auto worte = std::make_unique<QMimeData>();
  worte->setText(u"nur Text"_s);
  fuege_ein(std::move(worte));
  EXPECT_EQ(text(u"lbl_Status"_s), u"Einfügen: In der Zwischenablage ist weder eine Datei noch ein Bild."_s);
  EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), 2);
}

TEST_F(WirtAufnahme, InTheFilterTheKeysPasteText) {
  klicke(u"AB 24-1001"_s);
  auto* filter = kind<QLineEdit>(u"txt_Filter"_s);
  filter->setFocus();
  auto inhalt = mit_Dateien({eingang(u"a.jpg"_s, bild(1))});
  inhalt->setText(u"24-1001"_s);
  QApplication::clipboard()->setMimeData(inhalt.release());
  QTest::keyClick(fenster_->windowHandle(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
  EXPECT_EQ(filter->text(), u"24-1001"_s);
}

TEST_F(WirtAufnahme, BothMenusOfferPasting) {
  auto* einfuegen = fenster_->findChild<QAction*>(u"act_Einfuegen"_s);
  ASSERT_NE(einfuegen, nullptr);
  EXPECT_FALSE(einfuegen->isEnabled()) << "no record is chosen";
  EXPECT_TRUE(baum()->actions().contains(einfuegen));
  EXPECT_TRUE(fenster_->ansicht()->actions().contains(einfuegen));
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(einfuegen->isEnabled());
}

TEST_F(WirtAufnahme, TakingBackLeavesNothing) {
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, bild(1)), eingang(u"b.jpg"_s, bild(2))})));
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"2 Bilder"_s);
  eingaben::klicke(*kind<QPushButton>(u"cmd_Rueckgaengig"_s));
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
  EXPECT_FALSE(QDir(ablage_.pfad(u"Belege/24-1001"_s)).exists());
  EXPECT_TRUE(text(u"lbl_Status"_s).endsWith(u": Rückgängig gemacht: 2 Bilder sind nicht mehr zugeordnet."_s));
  EXPECT_EQ(text(u"lbl_Anzahl"_s), u"kein Bild"_s);
  EXPECT_FALSE(rueckgaengig_da()) << "once";
}

TEST_F(WirtAufnahme, TheKeysTakeBackToo) {
  klicke(u"AB 24-1001"_s);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, bild(1))})));
  baum()->setFocus();
  QTest::keyClick(fenster_->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
}

TEST_F(WirtAufnahme, WhatIsDoneNextEndsTheWayBack) {
  const auto nimm_auf = [&](int nummer) {
    EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, bild(nummer))})));
    EXPECT_TRUE(rueckgaengig_da());
  };
  nimm_auf(1);
  klicke(u"RE 24-2003"_s);
  EXPECT_FALSE(rueckgaengig_da()) << "another record";
  nimm_auf(2);
  fenster_->oeffne_Dialog(false);
  EXPECT_FALSE(rueckgaengig_da()) << "the dialog";
  nimm_auf(3);
  fenster_->lies_neu();
  EXPECT_FALSE(rueckgaengig_da()) << "everything read anew";
  nimm_auf(4);
  QDialog anderes(fenster_.get());
  anderes.setModal(true);
  anderes.show();
  EXPECT_FALSE(rueckgaengig_da()) << "a window over this one";
  EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), 4);
}

TEST_F(WirtAufnahme, WhatTheRecordHasIsAskedAboutOnce) {
  const QString a = eingang(u"a.jpg"_s, bild(1));
  const QString b = eingang(u"b.jpg"_s, bild(2));
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({a, b})));
  for (const Antwort antwort : {Antwort::Nein, Antwort::Ja}) {
    meldungen_.erwarte(
        {u"„%1“ hat der Vorgang schon: Der Inhalt ist derselbe.\r\n\r\nTrotzdem noch einmal zuordnen? Die "
         u"Antwort gilt für alle solchen Bilder, die jetzt dazukommen."_s.arg(a),
            u"Bildzuordnung"_s, Symbol::Frage, Knoepfe::JaNein},
        antwort);
    EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({a, b})));
    EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), antwort == Antwort::Ja ? 4 : 2);
  }
}

TEST_F(WirtAufnahme, ManyShowHowFarItIsAndEscapeStops) {
  QStringList viele;
  for (int i = 0; i < 60; ++i) viele.append(eingang(u"b%1.jpg"_s.arg(i), bild(i)));
  int hoechster = 0;
  bool gedrueckt = false;
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
    auto* vorn = QApplication::activeModalWidget();
    if (!vorn || vorn->objectName() != u"Aufnahmefenster"_s) return;
    const int wert = vorn->findChild<QProgressBar*>(u"bar_Fortschritt"_s)->value();
    hoechster = std::max(hoechster, wert);
    if (wert < 30 || gedrueckt) return;
    gedrueckt = true;
    // Nothing else can be begun meanwhile.
    EXPECT_FALSE(wirf_auf(u"RE 24-2003"_s, mit_Dateien({viele.first()})));
    fenster_->fuege_ein();
    fenster_->lies_neu();
    QTest::keyClick(vorn->windowHandle(), Qt::Key_Escape);
  });
  takt.start(0);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien(viele)));
  ASSERT_TRUE(gedrueckt);
  const auto anzahl = zeilen(u"AB 24-1001"_s).size();
  EXPECT_GE(anzahl, 30);
  EXPECT_LT(anzahl, 60);
  EXPECT_EQ(dateien(u"24-1001"_s).size(), anzahl);
  EXPECT_TRUE(text(u"lbl_Status"_s).contains(u"Angehalten: %1 von 60 Bildern zugeordnet."_s.arg(anzahl)))
      << text(u"lbl_Status"_s).toStdString();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(zeilen(u"RE 24-2003"_s).isEmpty());
  eingaben::klicke(*kind<QPushButton>(u"cmd_Rueckgaengig"_s));
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
}

TEST_F(WirtAufnahme, WhileTheDialogIsOpenNothingIsTaken) {
  klicke(u"AB 24-1001"_s);
  bool gefragt = false;
  im_Dialog_ = [&](clsBildZuordnungen&) {
    gefragt = true;
    EXPECT_FALSE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, bild(1))})));
    fuege_ein(mit_Dateien({eingang(u"a.jpg"_s, bild(1))}));
  };
  fenster_->oeffne_Dialog(false);
  EXPECT_TRUE(gefragt);
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
}

TEST_F(WirtAufnahme, WithoutThePictureRootNothingIsTaken) {
  const Testordner fort;
  Wirtsoptionen ohne = optionen();
  ohne.bilder = u"/gibt/es/nicht"_s;
  oeffne(ohne);
  erwarte_Box(u"Die Bildablage „/gibt/es/nicht“ ist nicht zu erreichen."_s);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, bild(1))})));
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
}

TEST_F(WirtAufnahme, SwitchedOffPicturesLieAsTheyCame) {
  auto* aufrecht = fenster_->findChild<QAction*>(u"act_Aufrecht"_s);
  ASSERT_NE(aufrecht, nullptr);
  EXPECT_TRUE(aufrecht->isChecked());
  aufrecht->trigger();
  const QByteArray liegend = handyfoto::foto({64, 48}, 6);
  EXPECT_TRUE(wirf_auf(u"AB 24-1001"_s, mit_Dateien({eingang(u"a.jpg"_s, liegend)})));
  const QStringList neue = zeilen(u"AB 24-1001"_s);
  ASSERT_EQ(neue.size(), 1);
  EXPECT_EQ(ablage_.lies(u"Belege/24-1001/"_s + neue[0]), liegend);
}
