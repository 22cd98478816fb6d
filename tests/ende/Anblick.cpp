#include "tests/ende/Anblick.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QRect rechteck(const QJsonValue& wert) {
  const QJsonArray zahlen = wert.toArray();
  return {zahlen[0].toInt(), zahlen[1].toInt(), zahlen[2].toInt(), zahlen[3].toInt()};
}

Anblickzeile zeile_aus(const QJsonObject& daten) {
  Anblickzeile zeile;
  for (const auto& text : daten[u"texte"_s].toArray()) zeile.texte.append(text.toString());
  for (const auto& ort : daten[u"orte"_s].toArray()) zeile.orte.append(rechteck(ort));
  zeile.gewaehlt = daten[u"gewaehlt"_s].toBool();
  return zeile;
}

Element element_aus(const QJsonObject& daten) {
  Element e;
  e.name = daten[u"name"_s].toString();
  e.text = daten[u"text"_s].toString();
  e.ort = rechteck(daten[u"ort"_s]);
  e.sichtbar = daten[u"sichtbar"_s].toBool();
  e.frei = daten[u"frei"_s].toBool();
  e.fokus = daten[u"fokus"_s].toBool();
  e.treffbar = daten[u"treffbar"_s].toBool();
  e.an = daten[u"an"_s].toBool();
  for (const auto& zeile : daten[u"zeilen"_s].toArray()) e.zeilen.append(zeile_aus(zeile.toObject()));
  e.flaeche = rechteck(daten[u"flaeche"_s]);
  return e;
}

template <class Bedingung>
const Element& suche(const QList<Element>& elemente, Bedingung&& bedingung) {
  static const Element Keines;
  const auto gefunden = std::find_if(elemente.begin(), elemente.end(), bedingung);
  return gefunden == elemente.end() ? Keines : *gefunden;
}

}  // namespace

QStringList Element::zeilentexte() const {
  QStringList liste;
  for (const Anblickzeile& zeile : zeilen) liste.append(zeile.texte.join(u" | "_s));
  return liste;
}

Anblick Anblick::lies(const QByteArray& zeile) {
  const QJsonObject daten = QJsonDocument::fromJson(zeile).object();
  Anblick anblick;
  anblick.name = daten[u"name"_s].toString();
  anblick.titel = daten[u"titel"_s].toString();
  anblick.kennung = daten[u"kennung"_s].toString().toULong();
  anblick.ort = rechteck(daten[u"ort"_s]);
  anblick.modal = daten[u"modal"_s].toBool();
  anblick.aktiv = daten[u"aktiv"_s].toBool();
  anblick.sanduhr = daten[u"sanduhr"_s].toBool();
  for (const auto& element : daten[u"elemente"_s].toArray()) anblick.elemente.append(element_aus(element.toObject()));
  return anblick;
}

const Element& Anblick::element(const QString& gesucht) const {
  // What was taken out of a window lives on unseen until its event loop ends.
  const Element& sichtbares = suche(elemente, [&](const Element& e) { return e.name == gesucht && e.sichtbar; });
  if (sichtbares.sichtbar) return sichtbares;
  return suche(elemente, [&](const Element& e) { return e.name == gesucht; });
}

const Element& Anblick::knopf(const QString& text) const {
  return suche(elemente, [&](const Element& e) { return e.sichtbar && QString(e.text).remove(u'&') == text; });
}

const Element& Anblick::fokus() const {
  return suche(elemente, [](const Element& e) { return e.fokus; });
}

const Anblickzeile* Anblick::zeile(const QString& liste, const QString& text) const {
  const QList<Anblickzeile>& zeilen = element(liste).zeilen;
  const auto gefunden =
      std::find_if(zeilen.rbegin(), zeilen.rend(), [&](const Anblickzeile& z) { return z.texte.value(0) == text; });
  return gefunden == zeilen.rend() ? nullptr : &*gefunden;
}

int Anblick::anzahl_sichtbarer(const QString& anfang) const {
  return static_cast<int>(std::count_if(
      elemente.begin(), elemente.end(), [&](const Element& e) { return e.sichtbar && e.name.startsWith(anfang); }));
}
