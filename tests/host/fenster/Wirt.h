#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "host/fenster/Hauptfenster.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/Vorgangsliste.h"
#include "tests/support/Doppel.h"
#include "tests/support/Umgebung.h"

class QTreeView;
class QWidget;

/// A call of the dialog as the double saw it.
struct Dialogaufruf {
  QString wurzel, ordner, typ1, typ2, info, datum;
  int bilder = 0;
  bool nur_Anzeige = false, nur_Anhang = false;
  bool mit_Anwendung = false;
};

/// A firm's data folder as the first start makes it. All tests of the program share one database file, since the
/// store's writing connection stays open to the end of the process; its table is as at the start for each test.
class Wirt : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  void SetUp() override;

  static QString datenordner();
  static QString datenbank() { return datenordner() + QStringLiteral("/betrieb.db"); }
  static Wirtsoptionen optionen();

  /// Stands in for the dialog: notes the call and does what the user would have saved.
  Zuordnungsdialog dialog();
  /// Runs a statement on the database.
  static void sql(const QString& anweisung);
  /// The first column of a query.
  static QStringList werte(const QString& abfrage);
  /// Database that fails from now on, and its repair.
  static void nimm_Tabelle_weg();
  static void gib_Tabelle_zurueck();

  QList<Dialogaufruf> aufrufe_;
  std::function<void(clsBildZuordnungen&)> im_Dialog_;
  bool dialogergebnis_ = true;
  MeldungsDoppel meldungen_;
  CoreDoppel berichte_;
};

/// The same with the program's window open.
class WirtFenster : public Wirt {
 protected:
  void oeffne(const Wirtsoptionen& optionen = Wirt::optionen());
  /// Until the database has answered all questions. The functions below do that first.
  void warte() const;
  QTreeView* baum() const;
  QString text(const QString& name) const;
  bool sichtbar(const QString& name) const;
  template <class Widget>
  Widget* kind(const QString& name) const {
    auto* gefunden = fenster_->findChild<Widget*>(name);
    EXPECT_NE(gefunden, nullptr) << name.toStdString();
    return gefunden;
  }
  /// The numbers of all records that the list shows, in its order.
  QStringList gezeigte() const;
  /// The text of a column of the record with that number.
  QString spalte(const QString& nummer, int spalte) const;
  QModelIndex index(const QString& nummer) const;
  /// Clicks on the record as a user does.
  void klicke(const QString& nummer, bool doppelt = false) const;

  std::unique_ptr<Hauptfenster> fenster_;
};

/// The same with what opens over it.
class WirtBilder : public WirtFenster {
 protected:
  /// Clicks on a button of the window and runs `darin` in the window of that name that opens over it, which is closed
  /// afterwards if it is still there. True when one opened.
  bool klicke_und(const QString& knopf, const QString& name, const std::function<void(QWidget&)>& darin);
  static void druecke(QWidget& fenster, const QString& name);
  /// Chooses a picture of the record that is shown.
  void klicke_Bild(int zeile) const;
};
