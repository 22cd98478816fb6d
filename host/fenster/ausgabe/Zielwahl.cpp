#include "host/fenster/ausgabe/Zielwahl.h"

#include <QFileDialog>

using namespace Qt::Literals::StringLiterals;

Zielwahl Zielwahl::fragende() {
  const auto ordner = [](QWidget* ueber, const QString& anfang) {
    return QFileDialog::getExistingDirectory(ueber, u"Ordner für die Bilder"_s, anfang);
  };
  const auto zip = [](QWidget* ueber, const QString& anfang) {
    // Whether it may be replaced is no question: it never is.
    return QFileDialog::getSaveFileName(ueber, u"ZIP-Datei für die Bilder"_s, anfang, u"ZIP-Dateien (*.zip)"_s, nullptr,
        QFileDialog::DontConfirmOverwrite);
  };
  return {ordner, zip};
}
