#include "tests/host/fenster/Wirt.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "platform/adodb/Connection.h"

using namespace Qt::Literals::StringLiterals;

namespace {

std::shared_ptr<adodb::Recordset> fuehre_aus(const QString& datenbank, const QString& anweisung) {
  adodb::Connection verbindung;
  verbindung.Open(u"Provider=SQLite;Data Source="_s + datenbank);
  return verbindung.Execute(anweisung);
}

}  // namespace

QString Wirt::datenordner() {
  static const Testordner Ordner;
  return Ordner.pfad(u"daten"_s);
}

void Wirt::SetUpTestSuite() {
  const QString ordner = namen::tabellenpfad(datenordner());
  if (datenordner::eingerichtet(ordner)) return;
  datenordner::richte_ein(ordner);
  sql(u"CREATE TABLE Anfang AS SELECT * FROM Bild_Zuordnungen"_s);
}

void Wirt::SetUp() {
  sql(u"DELETE FROM Bild_Zuordnungen"_s);
  sql(u"INSERT INTO Bild_Zuordnungen SELECT * FROM Anfang"_s);
  sql(u"DELETE FROM Vorgaenge WHERE Nr > 13"_s);
}

Wirtsoptionen Wirt::optionen() {
  Wirtsoptionen optionen;
  optionen.datenordner = datenordner();
  return optionen;
}

Zuordnungsdialog Wirt::dialog() {
  return [this](const std::shared_ptr<Anwendungsobjekt>& anwendung, const QString& wurzel, const QString& ordner,
             const std::shared_ptr<clsBildZuordnungen>& bilder, const QString& typ1, const QString& typ2,
             const QString& info, bool nur_Anzeige, bool nur_Anhang) {
    aufrufe_.append({wurzel, ordner, typ1, typ2, info, bilder->cGL_jmtVerarbeitungsdatum, bilder->AnzahlPos(),
        nur_Anzeige, nur_Anhang, anwendung && anwendung->ConnectionDB() && !anwendung->ConnectStringDB().isEmpty()});
    if (im_Dialog_) im_Dialog_(*bilder);
    return dialogergebnis_;
  };
}

void Wirt::sql(const QString& anweisung) {
  fuehre_aus(datenbank(), anweisung);
}

QStringList Wirt::werte(const QString& abfrage) {
  QStringList liste;
  for (const auto satz = fuehre_aus(datenbank(), abfrage); !satz->Eof(); satz->MoveNext()) liste.append(satz->Text(0));
  return liste;
}

void Wirt::nimm_Tabelle_weg() {
  sql(u"ALTER TABLE Bild_Zuordnungen RENAME TO Weg"_s);
}

void Wirt::gib_Tabelle_zurueck() {
  sql(u"ALTER TABLE Weg RENAME TO Bild_Zuordnungen"_s);
}

void WirtFenster::oeffne(const Wirtsoptionen& optionen) {
  fenster_ = std::make_unique<Hauptfenster>(optionen, dialog());
  fenster_->beginne();
  fenster_->show();
  fenster_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(fenster_.get()));
  // On a server a login may come first, which the test answers.
  if (optionen.verbindung.isEmpty()) warte();
}

void WirtFenster::warte() const {
  EXPECT_TRUE(QTest::qWaitFor([this] { return fenster_->ruht(); }, 60'000));
}

QTreeView* WirtFenster::baum() const {
  warte();
  return kind<QTreeView>(u"tree_Vorgaenge"_s);
}

QString WirtFenster::text(const QString& name) const {
  warte();
  return kind<QLabel>(name)->text();
}

bool WirtFenster::sichtbar(const QString& name) const {
  warte();
  return kind<QWidget>(name)->isVisible();
}

QModelIndex WirtFenster::index(const QString& nummer) const {
  const QAbstractItemModel* modell = baum()->model();
  for (int art = 0; art < modell->rowCount(); ++art) {
    const QModelIndex kopf = modell->index(art, 0);
    for (int zeile = 0; zeile < modell->rowCount(kopf); ++zeile)
      if (modell->index(zeile, 0, kopf).data().toString() == nummer) return modell->index(zeile, 0, kopf);
  }
  return {};
}

QStringList WirtFenster::gezeigte() const {
  QStringList liste;
  const QAbstractItemModel* modell = baum()->model();
  for (int art = 0; art < modell->rowCount(); ++art) {
    const QModelIndex kopf = modell->index(art, 0);
    for (int zeile = 0; zeile < modell->rowCount(kopf); ++zeile)
      liste.append(modell->index(zeile, 0, kopf).data().toString());
  }
  return liste;
}

QString WirtFenster::spalte(const QString& nummer, int spalte) const {
  const QModelIndex gefunden = index(nummer);
  EXPECT_TRUE(gefunden.isValid()) << nummer.toStdString();
  return gefunden.siblingAtColumn(spalte).data().toString();
}

void WirtFenster::klicke(const QString& nummer, bool doppelt) const {
  const QPoint stelle = baum()->visualRect(index(nummer)).center();
  QTest::mouseClick(baum()->viewport(), Qt::LeftButton, {}, stelle);
  if (doppelt) QTest::mouseDClick(baum()->viewport(), Qt::LeftButton, {}, stelle);
}

bool WirtBilder::klicke_und(const QString& knopf, const QString& name, const std::function<void(QWidget&)>& darin) {
  bool offen = false;
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, &takt, [&] {
    QWidget* vorn = QApplication::activeModalWidget();
    if (!vorn || vorn->objectName() != name || !vorn->isVisible()) return;
    takt.stop();
    offen = true;
    darin(*vorn);
    if (vorn->isVisible()) vorn->close();
  });
  takt.start(0);
  QTest::mouseClick(kind<QPushButton>(knopf), Qt::LeftButton);
  return offen;
}

void WirtBilder::druecke(QWidget& fenster, const QString& name) {
  auto* knopf = fenster.findChild<QAbstractButton*>(name);
  ASSERT_NE(knopf, nullptr) << name.toStdString();
  QTest::mouseClick(knopf, Qt::LeftButton);
}

void WirtBilder::klicke_Bild(int zeile) const {
  auto* streifen = fenster_->ansicht()->lst_Bilder;
  const QModelIndex index = streifen->model()->index(zeile, 0);
  streifen->scrollTo(index);
  QTest::mouseClick(streifen->viewport(), Qt::LeftButton, {}, streifen->visualRect(index).center());
}
