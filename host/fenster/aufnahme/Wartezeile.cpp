#include "host/fenster/aufnahme/Wartezeile.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

Wartezeile::Wartezeile()
    : cmd_Annehmen(new QPushButton), cmd_Verwerfen(new QPushButton(u"Verwerfen"_s)), lbl_Wartende(new QLabel) {
  setObjectName(u"Wartezeile"_s);
  setFrameShape(QFrame::StyledPanel);
  lbl_Wartende->setObjectName(u"lbl_Wartende"_s);
  lbl_Wartende->setTextFormat(Qt::PlainText);
  // A long name must not widen the window.
  lbl_Wartende->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  cmd_Annehmen->setObjectName(u"cmd_Annehmen"_s);
  cmd_Verwerfen->setObjectName(u"cmd_Verwerfen"_s);
  cmd_Verwerfen->setToolTip(u"Ordnet nichts zu; die Dateien bleiben, wo sie sind"_s);
  auto* lage = new QHBoxLayout(this);
  lage->addWidget(lbl_Wartende, 1);
  lage->addWidget(cmd_Annehmen);
  lage->addWidget(cmd_Verwerfen);
  hide();
}

void Wartezeile::zeige(const QStringList& dateien, const QString& nummer) {
  setVisible(!dateien.isEmpty());
  if (dateien.isEmpty()) return;
  QString text = dateien.size() == 1
      ? u"„%1“ wartet auf einen Vorgang."_s.arg(QFileInfo(dateien.first()).fileName())
      : u"%1 Dateien warten auf einen Vorgang."_s.arg(QLocale(QLocale::German).toString(dateien.size()));
  if (nummer.isEmpty()) text += u" Wählen Sie ihn links."_s;
  lbl_Wartende->setText(text);
  lbl_Wartende->setToolTip(dateien.mid(0, 20).join(u'\n'));
  cmd_Annehmen->setText(nummer.isEmpty() ? u"Zuordnen"_s : u"Zu %1 zuordnen"_s.arg(nummer));
  cmd_Annehmen->setEnabled(!nummer.isEmpty());
}
