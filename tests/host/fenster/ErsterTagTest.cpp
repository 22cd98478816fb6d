// A firm's first day, in a real X window where there is one: an empty database, its records from a list, found by
// typing, photographs dropped on one, the dialog with a text, saved. Then the state of table and picture tree.
#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QUrl>

#include "host/betrieb/Datenbank.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Vorgangsansicht.h"
#include "platform/adodb/Connection.h"
#include "tests/support/Doppel.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Handyfoto.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

constexpr auto Liste =
    "Typ1;Key1;Key2;Key3;Kundennummer;Kundenname;Ort;Text\r\n"
    "BEL;AB;26-1001;;10;Bäckerei Huber;Freiburg;Kessel\r\n"
    "BEL;RE;26-1002;;11;Familie Öztürk;Kirchzarten;\r\n"
    "Wartung;7;;;10;;;Jährlich\r\n";

/// Does something in the modal window of that name as soon as it is there and `bereit`.
class Darin {
 public:
  Darin(const QString& name, const std::function<bool(QWidget&)>& bereit, const std::function<void(QWidget&)>& tun) {
    QObject::connect(&takt_, &QTimer::timeout, &takt_, [=, this] {
      QWidget* vorn = QApplication::activeModalWidget();
      if (!vorn || vorn->objectName() != name || !vorn->isVisible() || !bereit(*vorn)) return;
      takt_.stop();
      getan = true;
      tun(*vorn);
    });
    takt_.start(10);
  }
  bool getan = false;

 private:
  QTimer takt_;
};

class ErsterTag : public ::testing::Test {
 protected:
  QString daten() const { return ordner_.pfad(u"daten"_s); }
  template <class Widget>
  Widget& kind(const QString& name) {
    auto* gefunden = fenster_->findChild<Widget*>(name);
    if (!gefunden) throw std::runtime_error(name.toStdString());
    return *gefunden;
  }
  void warte() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return fenster_->ruht(); }, 30'000));
  }
  QStringList zeilen(const QString& abfrage) const {
    adodb::Connection eine;
    eine.Open(verbindung_zur_Datei(daten() + u"/betrieb.db"_s));
    QStringList alle;
    for (const auto satz = eine.Execute(abfrage); !satz->Eof(); satz->MoveNext()) {
      QStringList werte;
      for (int i = 0; i < satz->Spalten().size(); ++i) werte.append(satz->Text(i));
      alle.append(werte.join(u'|'));
    }
    return alle;
  }
  void wirf_auf_ersten_Vorgang(const QStringList& dateien) {
    QMimeData angebot;
    QList<QUrl> urls;
    for (const QString& datei : dateien) urls.append(QUrl::fromLocalFile(datei));
    angebot.setUrls(urls);
    auto& baum = kind<QTreeView>(u"tree_Vorgaenge"_s);
    const QPoint ort = baum.visualRect(baum.model()->index(0, 0, baum.model()->index(0, 0))).center();
    QDragEnterEvent hinein(ort, Qt::CopyAction, &angebot, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(baum.viewport(), &hinein);
    QDragMoveEvent darueber(ort, Qt::CopyAction, &angebot, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(baum.viewport(), &darueber);
    ASSERT_TRUE(darueber.isAccepted());
    QDropEvent ab(ort, Qt::CopyAction, &angebot, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(baum.viewport(), &ab);
  }

  Testordner ordner_;
  MeldungsDoppel meldungen_;
  CoreDoppel berichte_;
  std::unique_ptr<Hauptfenster> fenster_;
};

}  // namespace

TEST_F(ErsterTag, FromAnEmptyDatabaseToSavedPictures) {
  Wirtsoptionen optionen;
  optionen.datenordner = daten();
  optionen.anfang = Anfangsbestand::Leer;
  fenster_ = std::make_unique<Hauptfenster>(optionen, Zuordnungsdialog());
  fenster_->beginne();
  fenster_->show();
  // Without a window manager nobody else makes it the active one.
  ASSERT_TRUE(QTest::qWaitFor(
      [this] {
    if (!fenster_->isActiveWindow()) fenster_->activateWindow();
    return fenster_->isActiveWindow();
      },
      30'000));
  warte();
  EXPECT_EQ(fenster_->liste()->anzahl(), 0);

  const QString liste = ordner_.schreibe(u"vorgaenge.csv"_s, Liste);
  Darin einlesen(
      u"Einlesefenster"_s, [](QWidget& w) { return w.findChild<QPushButton*>(u"cmd_Einlesen"_s)->isEnabled(); },
      [](QWidget& w) { eingaben::klicke(*w.findChild<QPushButton*>(u"cmd_Einlesen"_s)); });
  fenster_->lies_Liste_ein([&](QWidget*) { return liste; });
  ASSERT_TRUE(einlesen.getan);
  warte();
  EXPECT_EQ(fenster_->liste()->anzahl(), 3);

  auto& filter = kind<QLineEdit>(u"txt_Filter"_s);
  eingaben::tippe(filter, u"HUBER kess"_s);
  warte();
  ASSERT_EQ(fenster_->liste()->anzahl(), 1);
  eingaben::taste(*fenster_, Qt::Key_Return);
  ASSERT_NE(fenster_->liste()->gewaehlt(), nullptr);
  EXPECT_EQ(fenster_->liste()->gewaehlt()->nummer, u"AB 26-1001"_s);

  // The second one lies on its side and says so.
  const QByteArray quer = handyfoto::foto({64, 48}, 6);
  wirf_auf_ersten_Vorgang({ordner_.schreibe(u"eingang/vorher.jpg"_s, handyfoto::foto({48, 32}, 1)),
      ordner_.schreibe(u"eingang/nachher.jpg"_s, quer)});
  ASSERT_TRUE(QTest::qWaitFor([&] { return fenster_->ansicht()->lst_Bilder->anzahl() == 2; }, 30'000));
  warte();

  Darin dialog(
      u"frm_BildZuordnung"_s, [](QWidget& w) { return w.isActiveWindow(); },
      [](QWidget& w) {
    auto* text = w.findChild<QWidget*>(u"txt_BildText"_s);
    eingaben::tippe(*text, u"Vorher, mit Übergabe"_s);
    eingaben::klicke(*w.findChild<QWidget*>(u"SSC_ZuordnungSpeichern"_s));
      });
  fenster_->oeffne_Dialog(false);
  ASSERT_TRUE(dialog.getan);
  warte();

  EXPECT_EQ(zeilen(u"SELECT Typ1, Key1, Key2, Key3, BildPfad, substr(Bildname, 1, 6), BildExt, Beschreibung, SortIndex "
                   "FROM Bild_Zuordnungen ORDER BY SortIndex"_s),
      (QStringList{u"BEL|AB|26-1001|-|Belege\\26-1001|vorher|jpg|Vorher, mit Übergabe|0"_s,
          u"BEL|AB|26-1001|-|Belege\\26-1001|nachhe|jpg||1"_s}));
  EXPECT_EQ(zeilen(u"SELECT Typ1, Key1, Key2, Bezeichnung FROM Bild_Vorgaenge ORDER BY Typ1, Key1"_s),
      (QStringList{u"BEL|AB|26-1001|Kessel · Bäckerei Huber, Freiburg"_s,
          u"BEL|RE|26-1002|Familie Öztürk, Kirchzarten"_s, u"Wartung|7||Jährlich · Bäckerei Huber, Freiburg"_s}));
  const QStringList dateien = QDir(daten() + u"/bilder/Belege/26-1001"_s).entryList(QDir::Files, QDir::Name);
  ASSERT_EQ(dateien.size(), 2) << dateien.join(u' ').toStdString();
  const QByteArray kopie = ordner_.lies(u"daten/bilder/Belege/26-1001/"_s + dateien.first());
  EXPECT_TRUE(handyfoto::steht_aufrecht(kopie, quer));
  EXPECT_EQ(ordner_.lies(u"eingang/nachher.jpg"_s), quer);
  fenster_.reset();
}
