#include "component/weg/Meldung.h"

#include <algorithm>

#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace weg::meldung {
namespace {

/// Names that share their words.
struct Absatz {
  QString worte;
  QStringList namen;
};

class Absaetze {
 public:
  void nimm(const QString& name, const QString& worte) {
    const auto stelle = std::find_if(liste_.begin(), liste_.end(), [&](const Absatz& a) { return a.worte == worte; });
    if (stelle == liste_.end())
      liste_.push_back({worte, {name}});
    else if (!stelle->namen.contains(name))
      stelle->namen.append(name);
  }
  QString text() const {
    QStringList zeilen;
    for (const Absatz& absatz : liste_) zeilen.append(aufzaehlung(absatz.namen) + u": "_s + absatz.worte);
    return zeilen.join(u"\r\n"_s);
  }

 private:
  std::vector<Absatz> liste_;
};

}  // namespace

QString titel() {
  return u"Bildzuordnung"_s;
}

QString aufzaehlung(const QStringList& namen) {
  constexpr qsizetype Genannte = 5;
  QStringList teile;
  for (const QString& name : namen.first(std::min(namen.size(), Genannte))) teile.append(u'„' + name + u'“');
  const QString ende = namen.size() > Genannte ? u" und %1 weitere"_s.arg(namen.size() - Genannte) : QString();
  return teile.join(u", "_s) + ende;
}

QString frage(const std::vector<Posten>& posten) {
  Absaetze absaetze;
  qsizetype wartende = 0;
  qsizetype alle = 0;
  for (const Posten& eines : posten) {
    if (eines.zustand != Posten::Zustand::Hinweis || eines.wartet()) ++alle;
    if (!eines.wartet()) continue;
    ++wartende;
    absaetze.nimm(eines.name(), eines.grund.isEmpty() ? eines.textgrund : eines.grund);
  }
  return u"%1 von %2 Bildern sind nicht gespeichert:\r\n\r\n%3\r\n\r\nNoch einmal versuchen?"_s.arg(
      QString::number(wartende), QString::number(alle), absaetze.text());
}

QString abschluss(const std::vector<Posten>& posten) {
  Absaetze absaetze;
  for (const Posten& eines : posten)
    if (eines.sagen)
      for (const QString& hinweis : eines.hinweise) absaetze.nimm(eines.name(), hinweis);
  const QString text = absaetze.text();
  return text.isEmpty() ? text : u"Nicht alles ist so gespeichert, wie es im Dialog stand:\r\n\r\n"_s + text;
}

void warne(const QString& text) {
  MsgBox(text, Knoepfe::OK, Symbol::Ausrufezeichen, titel());
}

bool bejaht(const QString& frage, bool als_Warnung) {
  return MsgBox(frage, Knoepfe::JaNein, als_Warnung ? Symbol::Ausrufezeichen : Symbol::Frage, titel()) == Antwort::Ja;
}

}  // namespace weg::meldung
