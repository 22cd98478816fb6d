#include "tests/wege/Bestand.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString als_Text(const Bildinhalt& inhalt) {
  return u"Bild %1, %2 Viertel"_s.arg(inhalt.bild).arg(inhalt.viertel);
}
QString als_Text(const QString& text) {
  return u'"' + text + u'"';
}

template <class Wert>
void vergleiche(
    const QString& was, const QMap<QString, Wert>& soll, const QMap<QString, Wert>& ist, QStringList& maengel) {
  for (auto i = soll.begin(); i != soll.end(); ++i)
    if (!ist.contains(i.key()))
      maengel.append(was + u" fehlt: "_s + i.key() + u" = "_s + als_Text(i.value()));
    else if (!(ist[i.key()] == i.value()))
      maengel.append(was + u' ' + i.key() + u" ist "_s + als_Text(ist[i.key()]) + u" statt "_s + als_Text(i.value()));
  for (auto i = ist.begin(); i != ist.end(); ++i)
    if (!soll.contains(i.key())) maengel.append(was + u" zu viel: "_s + i.key() + u" = "_s + als_Text(i.value()));
}

}  // namespace

QStringList unterschiede(const Bestand& soll, const Bestand& ist) {
  QStringList maengel;
  for (const QString& schluessel : {u"1"_s, u"2"_s})
    if (soll.zeilen.value(schluessel) != ist.zeilen.value(schluessel))
      maengel.append(u"Tabelle von RE %1:\n    soll "_s.arg(schluessel) +
          soll.zeilen.value(schluessel).join(u"\n         "_s) + u"\n    ist  "_s +
          ist.zeilen.value(schluessel).join(u"\n         "_s));
  vergleiche(u"Bild"_s, soll.bilder, ist.bilder, maengel);
  vergleiche(u"Text"_s, soll.texte, ist.texte, maengel);
  return maengel;
}
