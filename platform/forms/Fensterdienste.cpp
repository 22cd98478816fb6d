#include "platform/forms/Fensterdienste.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

QMessageBox::Icon qt_Symbol(Symbol symbol) {
  switch (symbol) {
    case Symbol::Information:
      return QMessageBox::Information;
    case Symbol::Frage:
      return QMessageBox::Question;
    case Symbol::Ausrufezeichen:
      return QMessageBox::Warning;
    case Symbol::Kritisch:
      return QMessageBox::Critical;
    case Symbol::Keins:
      break;
  }
  return QMessageBox::NoIcon;
}

class QtMeldungsfenster final : public Meldungsfenster {
 public:
  Antwort zeige(const Meldung& meldung) override {
    QMessageBox fenster(QApplication::activeWindow());
    fenster.setObjectName(u"Meldung"_s);
    fenster.setWindowTitle(meldung.Titel.isEmpty() ? QApplication::applicationDisplayName() : meldung.Titel);
    fenster.setText(meldung.Text);
    fenster.setTextFormat(Qt::PlainText);
    fenster.setIcon(qt_Symbol(meldung.Bild));
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

}  // namespace

namespace fensterdienste {

void richte_ein() {
  setze(std::make_shared<QtMeldungsfenster>());
  setze(std::make_shared<QtMauszeiger>());
  setze(std::make_shared<QtEreignispumpe>());
}

}  // namespace fensterdienste
