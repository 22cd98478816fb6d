#include "tests/host/fenster/bericht/Berichtsaufbau.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include "tests/support/Bilddatei.h"
#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;

void Berichtsaufbau::SetUp() {
  Wirt::SetUp();
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, ordner_.pfad(u"einstellungen"_s));
  sql(u"DELETE FROM Bild_Zuordnungen"_s);
  QDir(ablage_.pfad()).mkpath(u"Belege/1"_s);
  optionen_ = optionen();
  optionen_.bilder = ablage_.pfad();
  vorgang_ = vorgang::aus_Schluesseln(u"BEL"_s, u"AB"_s, u"24-1001"_s);
  vorgang_.betreff = u"Bäckerei Huber, Freiburg"_s;
}

void Berichtsaufbau::TearDown() {
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QDir::homePath() + u"/.config"_s);
}

QByteArray Berichtsaufbau::foto(QSize groesse) {
  return bilddatei(groesse, QColor(200, 40, 40));
}

void Berichtsaufbau::nimm(const QString& name, const QString& text, const QByteArray& bytes, const QString& druck) {
  if (!bytes.isEmpty()) ablage_.schreibe(u"Belege/1/%1.jpg"_s.arg(name), bytes);
  sql(u"INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Beschreibung, "
      u"Druckkennzeichen, SortIndex) VALUES ('AB','24-1001','-','-','%1','jpg','BEL','-','Belege\\1','%2','%3',%4)"_s
          .arg(name, text, druck)
          .arg(zeilen_++));
}

void Berichtsaufbau::nimm_viele(int anzahl) {
  for (int i = 1; i <= anzahl; ++i) nimm(u"bild%1"_s.arg(i, 3, 10, QChar(u'0')), u"Text %1"_s.arg(i));
}

void Berichtsaufbau::oeffne(Berichtsfragen fragen) {
  platz_ = std::make_unique<Arbeitsplatz>(optionen_);
  platz_->oeffne();
  fenster_ = std::make_unique<Berichtsfenster>(*platz_, vorgang_, std::move(fragen), nullptr);
  QTimer takt;
  if (beim_Lesen_) {
    fenster_->geduld(0);
    QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
      if (fenster_->isActiveWindow() && fenster_->arbeitet() && beim_Lesen_) std::exchange(beim_Lesen_, {})();
    });
    takt.start(0);
  }
  fenster_->show();
  fenster_->activateWindow();
  if (beim_Lesen_)
    EXPECT_TRUE(QTest::qWaitFor([this] { return !beim_Lesen_ && !fenster_->arbeitet(); }, 60'000));
  else
    ASSERT_TRUE(QTest::qWaitForWindowActive(fenster_.get()));
  if (fenster_->isVisible()) warte();
}

void Berichtsaufbau::warte() const {
  EXPECT_TRUE(QTest::qWaitFor(
      [this] {
    return !fenster_->arbeitet() && (ansicht().seiten() > 0 || !hinweis().isEmpty()) && !ansicht().laedt();
      },
      60'000));
}

QString Berichtsaufbau::stand() const {
  return kind<QLabel>(u"lbl_Seite"_s).text();
}
QString Berichtsaufbau::hinweis() const {
  const auto& label = kind<QLabel>(u"lbl_Hinweis"_s);
  return label.isHidden() ? QString() : label.text();
}
QString Berichtsaufbau::status() const {
  return kind<QLabel>(u"lbl_Status"_s).text();
}

void Berichtsaufbau::taste(Qt::Key eine, Qt::KeyboardModifiers dazu) const {
  eingaben::taste(*fenster_, eine, dazu);
}

void Berichtsaufbau::waehle(const QString& feld, const QString& eintrag) const {
  auto& auswahl = kind<QComboBox>(feld);
  auswahl.setFocus();
  taste(Qt::Key_Home);
  for (int i = 0; i < auswahl.count() && auswahl.currentText() != eintrag; ++i) taste(Qt::Key_Down);
  EXPECT_EQ(auswahl.currentText(), eintrag);
  warte();
}

void Berichtsaufbau::kreuze(const QString& haken) const {
  eingaben::klicke(kind(haken), QPoint(8, kind(haken).height() / 2));
  warte();
}

void Berichtsaufbau::druecke(const QString& knopf) const {
  eingaben::klicke(kind(knopf));
}

QStringList Berichtsaufbau::texte() const {
  QStringList alle;
  for (const seitenplan::Seite& seite : ansicht().plan())
    for (const seitenplan::Textzeile& zeile : seite.texte) alle.append(zeile.text);
  return alle;
}

Berichtsfragen Berichtsaufbau::nach(const QString& ziel) const {
  Berichtsfragen fragen;
  fragen.ziel = [ziel](QWidget*, const QString&) { return ziel; };
  fragen.zeichen = [](QWidget*, const QString&) { return QString(); };
  fragen.drucker = [](QWidget*, QPrinter&, int) { return false; };
  return fragen;
}

void Berichtsaufbau::bei_Ausgabe(std::function<void()> tat) const {
  auto* takt = new QTimer(fenster_.get());
  QObject::connect(takt, &QTimer::timeout, takt, [this, takt, tat = std::move(tat)] {
    if (!kind<QPushButton>(u"cmd_Abbrechen"_s).isEnabled()) return;
    takt->stop();
    tat();
  });
  takt->start(0);
}

QString Berichtsaufbau::ausgabe(const QString& programm, const QStringList& argumente) {
  QProcess prozess;
  prozess.start(programm, argumente);
  EXPECT_TRUE(prozess.waitForStarted()) << programm.toStdString() << " is missing: package poppler-utils";
  EXPECT_TRUE(prozess.waitForFinished(60'000));
  EXPECT_EQ(prozess.exitCode(), 0) << prozess.readAllStandardError().toStdString();
  return QString::fromUtf8(prozess.readAllStandardOutput());
}

int Berichtsaufbau::seitenzahl(const QString& pdf) {
  static const QRegularExpression Seiten(u"^Pages:\\s+(\\d+)$"_s, QRegularExpression::MultilineOption);
  return Seiten.match(ausgabe(u"pdfinfo"_s, {pdf})).captured(1).toInt();
}
