// Linked beside a program's own main: once its list of records has been painted with rows, writes the most memory that
// the process has had so far (kilobytes, as text with a line end) to file descriptor 3 and ends the process.
#include <QTreeView>

#include "bench/Malwache.h"
#include "bench/Messung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray hoechster_Speicher() {
  return QByteArray::number(qRound64(messung::groesster_Speicher() * 1024)) + '\n';
}

bool ist_Liste_mit_Zeilen(QObject& empfaenger) {
  const auto* baum = qobject_cast<QTreeView*>(empfaenger.parent());
  return baum && baum->objectName() == "tree_Vorgaenge"_L1 && baum->model()->rowCount() > 0;
}

void setze_Wache() {
  new Malwache(ist_Liste_mit_Zeilen, hoechster_Speicher);
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(setze_Wache)
