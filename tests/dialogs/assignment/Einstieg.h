#pragma once

#include <QApplication>
#include <QTimer>
#include <utility>

#include "dialogs/assignment/clsDialoge.h"
#include "tests/dialogs/assignment/Dialogtest.h"

/// The assignment dialog as a host opens it: through the entry point, which makes and destroys the form itself.
class Einstiegtest : public Dialogtest {
 protected:
  /// The assignment dialog that shows, or none.
  static frm_BildZuordnung* offene_Form() {
    return dynamic_cast<frm_BildZuordnung*>(QApplication::activeModalWidget());
  }
  /// The dialogs that exist, shown or not.
  static int Formen() {
    int anzahl = 0;
    for (QWidget* fenster : QApplication::topLevelWidgets())
      if (dynamic_cast<frm_BildZuordnung*>(fenster)) ++anzahl;
    return anzahl;
  }

  /// Opens the dialog over what is read; `waehrend` runs once it is up. A dialog that it leaves open is hidden.
  bool oeffne(const std::function<void(frm_BildZuordnung&)>& waehrend) {
    lies();
    return rufe(waehrend, [this] {
      return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(appobj, QStringLiteral("P:"), QStringLiteral("Belege\\1"), store,
          typ1, {}, QStringLiteral("Rechnung 1"), nur_Anzeige, nur_Anhang);
    });
  }

  /// The same around a call of the test's own.
  bool rufe(const std::function<void(frm_BildZuordnung&)>& waehrend, const std::function<bool()>& aufruf) {
    QTimer takt;
    bool gelaufen = false;
    QObject::connect(&takt, &QTimer::timeout, qApp, [&] {
      frm_BildZuordnung* const form = offene_Form();
      // Not in the middle of the first layout, which lets events in.
      if (!form || fenster.pumpt || std::exchange(gelaufen, true)) return;
      takt.stop();
      waehrend(*form);
      if (form->isVisible()) form->Hide();
    });
    takt.start(0);
    const bool ergebnis = aufruf();
    EXPECT_TRUE(gelaufen || !erwartet_Fenster) << "the dialog never showed";
    return ergebnis;
  }

  std::shared_ptr<Anwendungsobjekt> appobj;
  bool erwartet_Fenster = true;
};
