#include "host/fenster/bericht/Berichtsfragen.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::Literals::StringLiterals;

QString berichtsfragen::ziel(QWidget* ueber, const QString& vorschlag) {
  // The ending comes before the question whether a file is to be replaced.
  QFileDialog fenster(ueber, u"Bericht speichern"_s, QFileInfo(vorschlag).path(), u"PDF (*.pdf)"_s);
  fenster.setObjectName(u"Berichtsziel"_s);
  fenster.setAcceptMode(QFileDialog::AcceptSave);
  fenster.setDefaultSuffix(u"pdf"_s);
  fenster.selectFile(QFileInfo(vorschlag).fileName());
  if (fenster.exec() != QDialog::Accepted) return {};
  return fenster.selectedFiles().value(0);
}

QString berichtsfragen::zeichen(QWidget* ueber, const QString& bisher) {
  return QFileDialog::getOpenFileName(ueber, u"Zeichen des Briefkopfs"_s, bisher,
      u"Bilder (*.png *.jpg *.jpeg *.svg *.bmp *.gif *.tif *.tiff *.webp);;Alle Dateien (*)"_s);
}

bool berichtsfragen::drucker(QWidget* ueber, QPrinter& drucker, int seiten) {
  QPrintDialog fenster(&drucker, ueber);
  fenster.setWindowTitle(u"Bericht drucken"_s);
  fenster.setOption(QAbstractPrintDialog::PrintPageRange);
  fenster.setOption(QAbstractPrintDialog::PrintCurrentPage);
  fenster.setOption(QAbstractPrintDialog::PrintSelection, false);
  fenster.setMinMax(1, seiten);
  return fenster.exec() == QDialog::Accepted;
}
