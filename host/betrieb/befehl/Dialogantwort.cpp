#include "host/betrieb/befehl/Dialogantwort.h"

#include <QJsonArray>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

using Verbleib = Zuordnungsweg::Verbleib;

Ausgang ausgang_von(const Zuordnungsweg::Ergebnis& ergebnis) {
  if (ergebnis.vollstaendig() && (ergebnis.geprueft || ergebnis.geschrieben() == 0)) return Ausgang::Erledigt;
  if (ergebnis.geschrieben() > 0 || ergebnis.bilder.empty()) return Ausgang::Teilweise;
  const auto hat = [&](Verbleib verbleib) {
    return std::any_of(ergebnis.bilder.begin(), ergebnis.bilder.end(),
        [&](const Zuordnungsweg::Bild& bild) { return bild.verbleib == verbleib; });
  };
  if (hat(Verbleib::Nicht_geschrieben) || hat(Verbleib::Ungewiss)) return Ausgang::Datenbank;
  return hat(Verbleib::Nicht_kopiert) ? Ausgang::Datei : Ausgang::Teilweise;
}

}  // namespace

namespace dialogantwort {

QString wort(Verbleib verbleib) {
  switch (verbleib) {
    case Verbleib::Neu:
      return u"neu"_s;
    case Verbleib::Geaendert:
      return u"geaendert"_s;
    case Verbleib::Entfernt:
      return u"entfernt"_s;
    case Verbleib::Nachgefuehrt:
      return u"nachgefuehrt"_s;
    case Verbleib::Unveraendert:
      return u"unveraendert"_s;
    case Verbleib::Nicht_geschrieben:
      return u"nicht_geschrieben"_s;
    case Verbleib::Nicht_kopiert:
      return u"nicht_kopiert"_s;
    case Verbleib::Nicht_gespeichert:
      return u"nicht_gespeichert"_s;
    case Verbleib::Ungewiss:
      break;
  }
  return u"ungewiss"_s;
}

Dialogantwort aus_Weg(const Zuordnungsweg::Ergebnis& ergebnis) {
  QJsonArray bilder;
  for (const Zuordnungsweg::Bild& bild : ergebnis.bilder)
    bilder.append(
        QJsonObject{{u"name"_s, bild.name}, {u"verbleib"_s, wort(bild.verbleib)}, {u"hinweis"_s, bild.hinweis}});
  const QJsonObject angaben{{u"nur_anzeige"_s, ergebnis.nur_Anzeige}, {u"gespeichert"_s, ergebnis.geschrieben() > 0},
      {u"vollstaendig"_s, ergebnis.geoeffnet && ergebnis.vollstaendig()},
      {u"geprueft"_s, ergebnis.geoeffnet && ergebnis.geprueft}, {u"neu"_s, ergebnis.neu},
      {u"geaendert"_s, ergebnis.geaendert}, {u"entfernt"_s, ergebnis.entfernt},
      {u"nachgefuehrt"_s, ergebnis.nachgefuehrt}, {u"nicht_geschrieben"_s, ergebnis.nicht_geschrieben},
      {u"ungewiss"_s, ergebnis.ungewiss}, {u"bilder"_s, bilder}};
  return {ausgang_von(ergebnis), ergebnis.text(), angaben, ergebnis.geoeffnet};
}

QJsonObject als_Json(const QString& dialog, const Dialogantwort& antwort) {
  QJsonObject objekt = antwort.angaben;
  objekt.insert(u"dialog"_s, dialog);
  objekt.insert(u"geoeffnet"_s, antwort.geoeffnet);
  objekt.insert(u"text"_s, antwort.text);
  return objekt;
}

}  // namespace dialogantwort
