#include "platform/forms/Fensterdienste.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTranslator>
#include <utility>

#include "platform/basic/Nachschlagen.h"
#include "platform/forms/FensterCore.h"
#include "platform/forms/Fensterdienste_Ordnerwahl.h"
#include "platform/forms/Programmauswahl.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

constexpr std::pair<Symbol, QMessageBox::Icon> Qt_Symbole[] = {{Symbol::Information, QMessageBox::Information},
    {Symbol::Frage, QMessageBox::Question}, {Symbol::Ausrufezeichen, QMessageBox::Warning},
    {Symbol::Kritisch, QMessageBox::Critical}};

class QtMeldungsfenster final : public Meldungsfenster {
 public:
  Antwort zeige(const Meldung& meldung) override {
    QMessageBox fenster(QApplication::activeWindow());
    fenster.setObjectName(u"Meldung"_s);
    fenster.setWindowTitle(meldung.Titel.isEmpty() ? QApplication::applicationDisplayName() : meldung.Titel);
    fenster.setText(meldung.Text);
    fenster.setTextFormat(Qt::PlainText);
    fenster.setIcon(nachgeschlagen(Qt_Symbole, meldung.Bild, QMessageBox::NoIcon));
    if (meldung.Auswahl == Knoepfe::OK) {
      fenster.addButton(u"OK"_s, QMessageBox::AcceptRole);
      fenster.exec();
      return Antwort::OK;
    }
    const QPushButton* ja = fenster.addButton(u"Ja"_s, QMessageBox::YesRole);
    QPushButton* nein = fenster.addButton(u"Nein"_s, QMessageBox::NoRole);
    QPushButton* abbrechen = meldung.Auswahl == Knoepfe::JaNeinAbbrechen
        ? fenster.addButton(u"Abbrechen"_s, QMessageBox::RejectRole)
        : nullptr;
    // Leaving by Escape or by the frame must change nothing.
    fenster.setEscapeButton(abbrechen ? abbrechen : nein);
    fenster.exec();
    if (fenster.clickedButton() == ja) return Antwort::Ja;
    return abbrechen && fenster.clickedButton() != nein ? Antwort::Abbrechen : Antwort::Nein;
  }
};

class QtMauszeiger final : public Mauszeiger {
 public:
  Zeigerform form() const override { return form_; }
  void form(Zeigerform form) override {
    if (form == form_) return;
    form_ = form;
    if (form == Zeigerform::Sanduhr)
      QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
      QGuiApplication::restoreOverrideCursor();
  }

 private:
  Zeigerform form_ = Zeigerform::Standard;
};

class QtEreignispumpe final : public Ereignispumpe {
 public:
  void verarbeite_anstehende() override { QCoreApplication::processEvents(); }
};

/// The texts that the toolkit itself shows, as in the menu of a text field. It asks the translators when it makes them,
/// so that the application has to have this one before its first window.
void lade_Texte() {
  const QString name = u"qtbase_de"_s;
  if (qApp->findChild<QTranslator*>(name, Qt::FindDirectChildrenOnly)) return;
  auto* texte = new QTranslator(qApp);
  texte->setObjectName(name);
  if (texte->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) QCoreApplication::installTranslator(texte);
}

void registriere_Vorgaben() {
  const QString name = u"KVOCore.KVFileFunctions"_s;
  const komponenten::Fabrik vorher = komponenten::registriere(name, [] { return std::make_shared<Ordnerwahl>(); });
  if (vorher) komponenten::registriere(name, vorher);
}

}  // namespace

namespace fensterdienste {

void richte_ein() {
  setze(std::make_shared<QtMeldungsfenster>());
  setze(std::make_shared<QtMauszeiger>());
  setze(std::make_shared<QtEreignispumpe>());
  KVOCore::setze(std::make_shared<FensterCore>());
  shell::setze(std::make_shared<Programmwahl_mit_Fenster>());
  registriere_Vorgaben();
  lade_Texte();
}

}  // namespace fensterdienste
