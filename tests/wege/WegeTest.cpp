// Roads through the assignment dialog and the host's save, drawn and named.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/wege/BenannteWege.h"
#include "tests/wege/Fahrt.h"

using namespace Qt::Literals::StringLiterals;
using namespace schritt;

namespace {

constexpr int Laengster = 30;

Schauplatz& schauplatz() {
  static Schauplatz einer;
  return einer;
}

QString bericht(const Weg& weg, const QStringList& maengel) {
  return als_Text(weg) + u"\n  "_s + maengel.join(u"\n  "_s);
}

template <class... Werte>
auto eines(Werte... werte) {
  return rc::gen::element(werte...);
}

rc::Gen<Antwort> antworten() {
  return rc::gen::weightedElement<Antwort>({{6, Antwort::Ja}, {3, Antwort::Nein}, {1, Antwort::Abbrechen}});
}

rc::Gen<int> zeilen() {
  return rc::gen::inRange(-1, 8);
}

template <class T, class... Gens>
rc::Gen<Schritt> einen(Gens... gens) {
  return rc::gen::map(rc::gen::construct<T>(gens...), [](const T& s) { return Schritt(s); });
}

rc::Gen<Schritt> anhaengen() {
  return rc::gen::map(
      eines<Haenge_an>(Haenge_an{u"Neu"_s, {u"foto.jpg"_s}}, Haenge_an{u"Neu"_s, {u"foto.jpg"_s, u"haus.jpg"_s}},
          Haenge_an{u"Anders"_s, {u"foto.jpg"_s}}, Haenge_an{u"Neu"_s, {u"a.jpg"_s}},
          Haenge_an{u"Anders"_s, {u"Müller's ß.jpg"_s, u"foto.jpg"_s}}, Haenge_an{u"Belege/1"_s, {u"lager.jpg"_s}},
          Haenge_an{u"Belege/1"_s, {u"a.jpg"_s}}, Haenge_an{u"Anders"_s, {QString(45, u'n') + u".jpg"_s}}),
      [](const Haenge_an& s) { return Schritt(s); });
}

rc::Gen<QString> Namen() {
  return eines<QString>(
      u"x"_s, u"y"_s, u"b"_s, u"A"_s, u"foto"_s, u"z "_s, u"Haus neu"_s, u"q:r"_s, u"O'Neil"_s, u""_s, u" "_s);
}

rc::Gen<QString> texte() {
  return eines<QString>(u""_s, u"neu"_s, u"Ein 'Wort'"_s, u"größer"_s, u" Rand "_s);
}

/// Weight of a kind of step; 0 where KVO_WEGE_OHNE names it, to look past a difference that is known.
std::size_t gewicht(const char* name, std::size_t sonst) {
  static const QStringList Ohne = qEnvironmentVariable("KVO_WEGE_OHNE").split(u',');
  return Ohne.contains(QLatin1StringView(name)) ? 0 : sonst;
}

rc::Gen<Schritt> schritte() {
  using rc::gen::weightedOneOf;
  return weightedOneOf<Schritt>({{gewicht("Haenge_an", 4), anhaengen()},
      {gewicht("Ziehe", 4), einen<Ziehe>(zeilen(), rc::gen::inRange(0, 5), eines<int>(0, 0, 0, 1, 2))},
      {gewicht("Rolle", 1), einen<Rolle>(eines<int>(1, 2, -1))}, {gewicht("Waehle", 2), einen<Waehle>(zeilen())},
      {gewicht("Drehe", 2), einen<Drehe>(zeilen(), rc::gen::inRange(1, 4), antworten())},
      {gewicht("Benenne", 5), einen<Benenne>(zeilen(), Namen())},
      {gewicht("Schreibe", 4), einen<Schreibe>(zeilen(), eines<Feld>(Feld::Drucktext, Feld::Info), texte())},
      {gewicht("Schalte", 2),
          einen<Schalte>(
              zeilen(), eines<Marke>(Marke::NeueSeite, Marke::AlsAnhang, Marke::GesamteSeite, Marke::Drucken))},
      {gewicht("Merke_vor", 3), einen<Merke_vor>(zeilen())},
      {gewicht("Aktualisiere", 3), einen<Aktualisiere>(antworten())},
      {gewicht("Speichere", 3), einen<Speichere>(antworten())},
      {gewicht("Verlasse", 3),
          einen<Verlasse>(
              eines<Ausgang>(Ausgang::Zurueck, Ausgang::Escape, Ausgang::Rahmen), antworten(), antworten())},
      {gewicht("Verschwinde", 1), einen<Verschwinde>(rc::gen::inRange(0, 14))}, {gewicht("Trenne", 1), einen<Trenne>()},
      {gewicht("Kehre_zurueck", 2), einen<Kehre_zurueck>()},
      {gewicht("Stoere", 1), einen<Stoere>(rc::gen::inRange(0, 14))}, {gewicht("Belege", 1), einen<Belege>(zeilen())},
      {gewicht("Warte", 1), einen<Warte>()}});
}

rc::Gen<Weg> wege() {
  return rc::gen::construct<Weg>(
      rc::gen::inRange(0, 6), rc::gen::resize(Laengster, rc::gen::container<std::vector<Schritt>>(schritte())));
}

}  // namespace

void showValue(const Weg& weg, std::ostream& os) {
  os << weg;
}

class Wege : public ::testing::TestWithParam<BenannterWeg> {};

TEST_P(Wege, EndAsTheModelSays) {
  const Weg& weg = GetParam().weg;
  const QStringList maengel = Fahrt(schauplatz(), weg).fahre();
  EXPECT_TRUE(maengel.isEmpty()) << bericht(weg, maengel).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Benannte, Wege, ::testing::ValuesIn(benannte_Wege()),
    [](const auto& test) { return std::string(test.param.name); });

RC_GTEST_PROP(GezogeneWege, EndAsTheModelSays, ()) {
  const Weg weg = *wege();
  const QStringList maengel = Fahrt(schauplatz(), weg).fahre();
  if (!maengel.isEmpty()) RC_FAIL(bericht(weg, maengel).toStdString());
}
