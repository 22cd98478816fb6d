#pragma once

#include <QJsonObject>
#include <QString>

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Ausgang.h"

/// What a dialog that opened as a program of its own gives back to its caller.
struct Dialogantwort {
  Ausgang ausgang = Ausgang::Erledigt;
  /// One German line.
  QString text;
  /// What stands in the line of JSON besides "dialog", "geoeffnet" and "text".
  QJsonObject angaben;
  /// The dialog was to be seen.
  bool geoeffnet = true;
};

namespace dialogantwort {

/// How a picture fared, in the word of the line of JSON.
QString wort(Zuordnungsweg::Verbleib verbleib);
/// What the road gives: counts, pictures and what they mean for the exit code. A dialog that did not open is told
/// apart by the caller, who knows why.
Dialogantwort aus_Weg(const Zuordnungsweg::Ergebnis& ergebnis);
/// The one object for standard output.
QJsonObject als_Json(const QString& dialog, const Dialogantwort& antwort);

}  // namespace dialogantwort
