// Linked beside the example's own main: does with mouse and keys what a user would, as the environment variable
// KVO_FUEHRUNG says, and ends the process where something is not to be seen.
#include <unistd.h>

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <stdexcept>

#include "host/rundgang/Hand.h"
#include "host/rundgang/Schrittfolge.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Hand& hand() {
  static Hand eine;
  return eine;
}

template <class T = QWidget>
T& element(const QString& name) {
  QWidget* vorn = QApplication::activeModalWidget();
  T* gefunden = vorn ? vorn->findChild<T*>(name) : nullptr;
  if (!gefunden || !gefunden->isVisible()) throw std::runtime_error(name.toStdString() + " is not to be seen");
  return *gefunden;
}

std::function<bool()> offen(const QString& fenster) {
  return [fenster] {
    const QWidget* vorn = QApplication::activeModalWidget();
    return vorn && vorn->objectName() == fenster && vorn->isVisible();
  };
}

bool nichts_offen() {
  return !QApplication::activeModalWidget();
}

/// The whole list is one picture.
void waehle_Bild() {
  auto& liste = element<QListView>(u"lvwContent"_s);
  hand().klicke(*liste.viewport(), liste.visualRect(liste.model()->index(0, 0)).center());
  hand().klicke(element(u"cmd_Uebernehmen"_s));
}

void plane_Anhaengen(Schrittfolge& folge) {
  folge.plane({u"Der Dialog geht auf."_s, {}, offen(u"frm_BildZuordnung"_s), {}});
  folge.plane({u"Die Suche zeigt ein Bild."_s, [] { hand().klicke(element(u"SSC_BilderLaden"_s)); },
      [] { return element<QListView>(u"lvwContent"_s).model()->rowCount() == 1; }, {}});
  folge.plane({u"Es steht im Dialog."_s, waehle_Bild,
      [] { return element<QLineEdit>(u"txt_BildName"_s).text().startsWith("kessel"_L1); }, {}});
  folge.plane({u"Gespeichert."_s, [] { hand().klicke(element(u"SSC_ZuordnungSpeichern"_s)); }, nichts_offen, {}});
}

void plane_Zurueck(Schrittfolge& folge) {
  folge.plane({u"Der Dialog geht auf."_s, {}, offen(u"frm_BildZuordnung"_s), {}});
  folge.plane({u"Zurück."_s, [] { hand().klicke(element(u"cmd_Abbruch"_s)); }, nichts_offen, {}});
}

void plane_Meldung(Schrittfolge& folge) {
  folge.plane({u"Eine Meldung."_s, {}, [] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); },
      [] {
    const auto* meldung = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    Schrittfolge::sage(u"Meldung: "_s + meldung->text());
               }});
  folge.plane({u"Gelesen."_s, [] { hand().taste(Qt::Key_Return); }, nichts_offen, {}});
}

/// Begun by the first event loop: by then the program has its services in force.
void beginne() {
  static Schrittfolge folge(30'000);
  const QString was = qEnvironmentVariable("KVO_FUEHRUNG");
  if (was == "anhaengen"_L1) plane_Anhaengen(folge);
  if (was == "zurueck"_L1) plane_Zurueck(folge);
  if (was == "meldung"_L1) plane_Meldung(folge);
  folge.beginne([] {
    if (!folge.durchlaufen()) ::_exit(99);
  });
}

void fuehre() {
  QTimer::singleShot(0, &beginne);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(fuehre)
