#include "platform/forms/Fensterdienste_Ordnerwahl.h"

#include <QApplication>
#include <QFileDialog>
#include <QStandardPaths>
#include <QUrl>

#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The places at the dialog's side: home, and every drive and share that the map knows.
QList<QUrl> orte(const QString& zuhause) {
  QList<QUrl> alle{QUrl::fromLocalFile(zuhause)};
  const Pfadkarte& karte = Pfadkarte::aktuell();
  for (const QString& name : karte.namen()) {
    const QUrl ort = QUrl::fromLocalFile(karte.ordner(name).value_or(zuhause));
    if (!alle.contains(ort)) alle.append(ort);
  }
  return alle;
}

void beschrifte(QFileDialog& dialog) {
  dialog.setLabelText(QFileDialog::Accept, u"Auswählen"_s);
  dialog.setLabelText(QFileDialog::Reject, u"Abbrechen"_s);
  dialog.setLabelText(QFileDialog::LookIn, u"Suchen in:"_s);
  dialog.setLabelText(QFileDialog::FileName, u"Ordner:"_s);
  dialog.setLabelText(QFileDialog::FileType, u"Art:"_s);
}

}  // namespace

QString Ordnerwahl::SelectFolder(const QString& Titel) {
  const QString zuhause = QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
  QFileDialog dialog(QApplication::activeWindow(), Titel, zuhause);
  dialog.setObjectName(u"Ordnerwahl"_s);
  // The desktop's own dialog would bring labels that nobody here has a say in.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  dialog.setSidebarUrls(orte(zuhause));
  beschrifte(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return Pfadkarte::aktuell().tabellenpfad(dialog.selectedFiles().constFirst());
}
