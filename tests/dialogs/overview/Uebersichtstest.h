#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "dialogs/overview/Uebersichtszeile.h"
#include "platform/forms/Form.h"
#include "platform/forms/gitter/TDBGrid.h"
#include "tests/dialogs/Bildertest.h"
#include "tests/dialogs/overview/Wirtsdoppel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Fensterdoppel.h"
#include "tests/support/Pruefdatenbank.h"

/// A row of Bild_Zuordnungen as a test writes it.
struct Zuordnung {
  QString typ1 = QStringLiteral("BEL");
  QString key1 = QStringLiteral("RE");
  QString key2 = QStringLiteral("1");
  QString key3 = QStringLiteral("-");
  QString key4 = QStringLiteral("-");
  QString typ2 = QStringLiteral("-");
  QString name = QStringLiteral("a");
  QString ext = QStringLiteral("jpg");
  QString pfad = QStringLiteral("Belege\\1");
  QString beschreibung = {};
  QString druck = QStringLiteral("0001");
};

/// Both overview dialogs: a database, a picture tree and a host, all of the test's own. Boxes and reports that the test
/// did not announce fail it.
class Uebersichtstest : public Bildertest {
 protected:
  static constexpr auto Zeilen = XArrayDBObject::Dimension::Zeilen;

  Uebersichtstest();
  ~Uebersichtstest() override;

  void fuege_ein(const Zuordnung& zuordnung);
  /// "Typ1|Key1|Key2|Bildname" of all rows of the table in the order in which they came.
  QStringList gespeichert();
  /// Statements of the side of the component that begin so; the record of all is emptied.
  QStringList anweisungen(const QString& anfang);

  /// Shows a form modally; `waehrend` runs once it is up. A form that it leaves open is hidden.
  static void zeige(Form& form, const std::function<void()>& waehrend);
  /// The same around a call that makes and shows a form of that type itself.
  template <class Fenster>
  static bool rufe(const std::function<void(Fenster&)>& waehrend, const std::function<bool()>& aufruf) {
    QTimer takt;
    bool gelaufen = false;
    QObject::connect(&takt, &QTimer::timeout, qApp, [&] {
      auto* const form = dynamic_cast<Fenster*>(QApplication::activeModalWidget());
      if (!form || std::exchange(gelaufen, true)) return;
      takt.stop();
      waehrend(*form);
      if (form->isVisible()) form->Hide();
    });
    takt.start(0);
    const bool ergebnis = aufruf();
    EXPECT_TRUE(gelaufen) << "the dialog never showed";
    return ergebnis;
  }

  static void klicke(TDBGrid& gitter, int zeile, int spalte, Qt::KeyboardModifiers dazu = {});
  /// On the button that a cell has at its right.
  static void klicke_Knopf(TDBGrid& gitter, int zeile, int spalte);
  static void tippe(QWidget& fenster, const QString& text);
  static QString gezeigt(const TDBGrid& gitter, int zeile, int spalte);
  static QString auswahl(const TDBGrid& gitter);
  /// Fails unless exactly one report has come: that module, procedure and number, for the user's eyes.
  void erwarte_Bericht(const QString& modul, const QString& prozedur, std::int32_t nummer);

  CoreDoppel core;
  Pruefdatenbank db;
  MeldungsDoppel meldungen;
  Fensterdoppel fenster;
  std::shared_ptr<Wirtsdoppel> wirt = std::make_shared<Wirtsdoppel>(db);
};
