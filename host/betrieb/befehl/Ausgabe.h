#pragma once

#include <QJsonObject>
#include <QString>

/// Results go to standard output, everything else to standard error; both in UTF-8.
namespace ausgabe {

/// The name that stands in front of messages from now on; "kvobild" until then.
void programm(const QString& name);
/// One line of a result.
void zeile(const QString& text);
/// One line of a result: an object in compact JSON.
void json(const QJsonObject& objekt);
/// A notice or a failure for the user, with the program's name in front.
void meldung(const QString& text);
/// The results reached their reader; false when standard output could not take them all.
bool abgeschlossen();

}  // namespace ausgabe
