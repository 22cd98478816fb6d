// What the call asks of the window: files that wait for a record, the search, a new record.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include "host/betrieb/Ausgang.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/SqlZerleger.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Handyfoto.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

class WirtAnfang : public WirtBilder {
 protected:
  void SetUp() override {
    WirtBilder::SetUp();
    sql(u"DELETE FROM Bild_Zuordnungen"_s);
    ablage_.schreibe(u"Belege/liesmich.txt"_s, "x");
    foto_ = eingang_.schreibe(u"foto.jpg"_s, bild(1));
  }
  static QByteArray bild(int nummer) { return handyfoto::jpeg(handyfoto::motiv({16 + nummer, 16})); }

  /// The window as the call with these words opens it.
  void oeffne_mit(const QStringList& argumente) {
    Wirtsoptionen mit = optionen();
    const Wirtsoptionen gelesen = wirtsoptionen::lies(argumente);
    mit.dateien = gelesen.dateien;
    mit.tat = gelesen.tat;
    mit.vorgang = gelesen.vorgang;
    mit.bilder = ablage_.pfad();
    oeffne(mit);
  }
  /// Opens it, and closes the window of that name that comes over it. True when one came.
  bool oeffnet(const QStringList& argumente, const QString& name) {
    bool kam = false;
    QTimer takt;
    QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
      QWidget* vorn = QApplication::activeModalWidget();
      if (!vorn || vorn->objectName() != name || !vorn->isVisible()) return;
      takt.stop();
      kam = true;
      vorn->close();
    });
    takt.start(0);
    oeffne_mit(argumente);
    static_cast<void>(QTest::qWaitFor([&] { return kam; }, 10'000));
    return kam;
  }
  static QStringList zeilen(const QString& nummer) {
    return werte(
        u"SELECT Bildname || '.' || BildExt FROM Bild_Zuordnungen WHERE Key1 || ' ' || Key2 = '%1'"_s.arg(nummer));
  }
  QPushButton& annehmen() const { return *kind<QPushButton>(u"cmd_Annehmen"_s); }

  Testordner ablage_;
  Testordner eingang_;
  QString foto_;
};

}  // namespace

TEST_F(WirtAnfang, WithoutFilesNothingWaits) {
  oeffne_mit({});
  EXPECT_FALSE(sichtbar(u"Wartezeile"_s));
  klicke(u"AB 24-1001"_s);
  EXPECT_FALSE(sichtbar(u"Wartezeile"_s));
}

TEST_F(WirtAnfang, AFileOfTheCallWaitsUntilARecordIsChosenAndGoesToIt) {
  oeffne_mit({foto_});
  EXPECT_TRUE(sichtbar(u"Wartezeile"_s));
  EXPECT_EQ(text(u"lbl_Wartende"_s), u"„foto.jpg“ wartet auf einen Vorgang. Wählen Sie ihn links."_s);
  EXPECT_FALSE(annehmen().isEnabled());
  EXPECT_EQ(werte(u"SELECT count(*) FROM Bild_Zuordnungen"_s), QStringList{u"0"_s}) << "only on demand";
  klicke(u"AB 24-1001"_s);
  EXPECT_EQ(text(u"lbl_Wartende"_s), u"„foto.jpg“ wartet auf einen Vorgang."_s);
  EXPECT_EQ(annehmen().text(), u"Zu AB 24-1001 zuordnen"_s);
  eingaben::klicke(annehmen());
  ASSERT_EQ(zeilen(u"AB 24-1001"_s).size(), 1);
  EXPECT_EQ(QDir(ablage_.pfad(u"Belege/24-1001"_s)).entryList(QDir::Files), zeilen(u"AB 24-1001"_s));
  EXPECT_TRUE(QFile::exists(foto_));
  EXPECT_FALSE(sichtbar(u"Wartezeile"_s));
  EXPECT_TRUE(sichtbar(u"cmd_Rueckgaengig"_s));
}

TEST_F(WirtAnfang, WithARecordInTheCallOneClickIsEnough) {
  oeffne_mit({u"--vorgang"_s, u"AB 24-1001"_s, foto_, eingang_.schreibe(u"zwei.jpg"_s, bild(2))});
  EXPECT_EQ(text(u"lbl_Wartende"_s), u"2 Dateien warten auf einen Vorgang."_s);
  eingaben::klicke(annehmen());
  EXPECT_EQ(zeilen(u"AB 24-1001"_s).size(), 2);
}

TEST_F(WirtAnfang, WhatCouldNotBeAttachedGoesOnWaiting) {
  const QString notiz = eingang_.schreibe(u"notiz.pdf"_s, "x");
  meldungen_.erwarte({u"Nicht zugeordnet:\r\n„%1“: Das ist kein Bild eines bekannten Formats."_s.arg(notiz),
      u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
  oeffne_mit({u"--vorgang"_s, u"AB 24-1001"_s, notiz});
  warte();
  eingaben::klicke(annehmen());
  EXPECT_TRUE(zeilen(u"AB 24-1001"_s).isEmpty());
  EXPECT_TRUE(sichtbar(u"Wartezeile"_s));
  eingaben::klicke(*kind<QPushButton>(u"cmd_Verwerfen"_s));
  EXPECT_FALSE(sichtbar(u"Wartezeile"_s));
  EXPECT_TRUE(QFile::exists(notiz));
}

TEST_F(WirtAnfang, AFailureTakesTheButtonAway) {
  oeffne_mit({u"--vorgang"_s, u"AB 24-1001"_s, foto_});
  warte();
  EXPECT_TRUE(annehmen().isEnabled());
  nimm_Tabelle_weg();
  fenster_->lies_neu();
  warte();
  gib_Tabelle_zurueck();
  EXPECT_TRUE(sichtbar(u"Wartezeile"_s));
  EXPECT_FALSE(annehmen().isEnabled());
}

TEST_F(WirtAnfang, AFileIsMeantFromWhereTheProgramWasCalled) {
  const QString vorher = QDir::currentPath();
  QDir::setCurrent(eingang_.pfad());
  EXPECT_EQ(wirtsoptionen::lies({u"foto.jpg"_s}).dateien, QStringList{foto_});
  QDir::setCurrent(vorher);
  EXPECT_THROW(wirtsoptionen::lies({u"foto.jpg"_s}), Abbruch);
}

TEST_F(WirtAnfang, TheDesktopsShortcutsOpenTheSearchAndANewRecord) {
  EXPECT_TRUE(oeffnet({u"--suchen"_s}, u"frm_BilderSuchen"_s));
  fenster_.reset();
  EXPECT_TRUE(oeffnet({u"--neuer-vorgang"_s}, u"Vorgangsfenster"_s));
  EXPECT_EQ(werte(u"SELECT count(*) FROM Vorgaenge WHERE Nr > 13"_s), QStringList{u"0"_s});
}

TEST_F(WirtAnfang, TheDesktopEntryCallsWhatTheProgramUnderstands) {
  QSettings eintrag(QStringLiteral(KVO_QUELLORDNER "/resources/desktop/bildzuordnung.desktop"), QSettings::IniFormat);
  const QMap<QString, Anfangstat> taten{{u"Desktop Entry"_s, Anfangstat::Keine},
      {u"Desktop Action suchen"_s, Anfangstat::Suchen}, {u"Desktop Action neu"_s, Anfangstat::Neuer_Vorgang}};
  QStringList gruppen = eintrag.childGroups();
  gruppen.sort();
  EXPECT_EQ(gruppen, (QStringList{u"Desktop Action neu"_s, u"Desktop Action suchen"_s, u"Desktop Entry"_s}));
  for (auto i = taten.begin(); i != taten.end(); ++i) {
    QStringList aufruf = eintrag.value(i.key() + u"/Exec"_s).toString().split(u' ');
    EXPECT_EQ(aufruf.takeFirst(), u"bildzuordnung"_s);
    aufruf.replaceInStrings(u"%F"_s, foto_);
    const Wirtsoptionen gelesen = wirtsoptionen::lies(aufruf);
    EXPECT_EQ(gelesen.tat, i.value()) << i.key().toStdString();
    EXPECT_EQ(gelesen.dateien.size(), i.value() == Anfangstat::Keine ? 1 : 0);
  }
}

TEST_F(WirtAnfang, WhereRecordsAreNotMadeHereTheShortcutSaysSo) {
  Testordner fremd;
  const QString datei = fremd.pfad(u"fremd.db"_s);
  {
    adodb::Connection verbindung;
    verbindung.Open(u"Provider=SQLite;Mode=ReadWriteCreate;Data Source="_s + datei);
    QFile skript(QStringLiteral(KVO_QUELLORDNER "/sql/sqlite/Bild_Zuordnungen.sql"));
    ASSERT_TRUE(skript.open(QIODevice::ReadOnly));
    for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf8(skript.readAll())))
      verbindung.Execute(anweisung);
  }
  Wirtsoptionen mit = optionen();
  mit.verbindung = u"Provider=SQLite;Data Source=\"%1\""_s.arg(datei);
  mit.bilder = ablage_.pfad();
  mit.tat = Anfangstat::Neuer_Vorgang;
  oeffne(mit);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
    return kind<QLabel>(u"lbl_Status"_s)->text() ==
        u"Neue Vorgänge entstehen in der Anwendung des Betriebs; hier lassen sie sich nicht anlegen."_s;
      },
      10'000))
      << text(u"lbl_Status"_s).toStdString();
}
