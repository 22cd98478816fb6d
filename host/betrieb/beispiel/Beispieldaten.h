#pragma once

#include <QImage>
#include <QString>

/// Makes the sample data of the first run: a craft firm's records in a database of its own, a picture tree with
/// pictures that are assigned to them, and a folder of pictures that wait to be assigned. Always the same.
namespace beispieldaten {

/// A picture that tells itself apart at a glance: a colour of its own, its number across it, its subject below.
/// Needs a QGuiApplication.
QImage zeichne(int nummer, const QString& motiv, QSize groesse);

/// Fills a folder of the table's form, which must be missing or empty: "betrieb.db", "bilder" and "eingang".
/// Failures end with Abbruch or a Laufzeitfehler; what was written until then stays.
void erzeuge(const QString& ordner);

}  // namespace beispieldaten
