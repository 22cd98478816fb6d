#include "tests/wege/Schritte.h"

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace schritt;

namespace {

QString wort(Antwort a) {
  return a == Antwort::Ja ? u"Antwort::Ja"_s : a == Antwort::Nein ? u"Antwort::Nein"_s : u"Antwort::Abbrechen"_s;
}
QString wort(Ausgang a) {
  return a == Ausgang::Zurueck ? u"Ausgang::Zurueck"_s
      : a == Ausgang::Escape   ? u"Ausgang::Escape"_s
                               : u"Ausgang::Rahmen"_s;
}
QString wort(Feld f) {
  return f == Feld::Drucktext ? u"Feld::Drucktext"_s : u"Feld::Info"_s;
}
QString wort(Marke m) {
  static const QStringList Namen{u"NeueSeite"_s, u"AlsAnhang"_s, u"GesamteSeite"_s, u"Drucken"_s};
  return u"Marke::"_s + Namen[static_cast<int>(m)];
}
QString wort(int zahl) {
  return QString::number(zahl);
}
QString wort(QString text) {
  return u"u\""_s + text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s) + u"\"_s"_s;
}
QString wort(const QStringList& texte) {
  QStringList alle;
  for (const QString& text : texte) alle.append(wort(text));
  return u'{' + alle.join(u", "_s) + u'}';
}

template <class... Teile>
QString aufruf(const char* name, const Teile&... teile) {
  return QString::fromLatin1(name) + u'{' + QStringList{wort(teile)...}.join(u", "_s) + u'}';
}

struct Drucker {
  QString operator()(const Haenge_an& s) const { return aufruf("Haenge_an", s.ordner, s.namen); }
  QString operator()(const Ziehe& s) const { return aufruf("Ziehe", s.von, s.nach, s.rollen); }
  QString operator()(const Rolle& s) const { return aufruf("Rolle", s.schritte); }
  QString operator()(const Waehle& s) const { return aufruf("Waehle", s.zeile); }
  QString operator()(const Drehe& s) const { return aufruf("Drehe", s.zeile, s.viertel, s.namen); }
  QString operator()(const Benenne& s) const { return aufruf("Benenne", s.zeile, s.name); }
  QString operator()(const Schreibe& s) const { return aufruf("Schreibe", s.zeile, s.feld, s.text); }
  QString operator()(const Schalte& s) const { return aufruf("Schalte", s.zeile, s.marke); }
  QString operator()(const Merke_vor& s) const { return aufruf("Merke_vor", s.zeile); }
  QString operator()(const Aktualisiere& s) const { return aufruf("Aktualisiere", s.namen); }
  QString operator()(const Speichere& s) const { return aufruf("Speichere", s.namen); }
  QString operator()(const Verlasse& s) const { return aufruf("Verlasse", s.wie, s.sichern, s.namen); }
  QString operator()(const Verschwinde& s) const { return aufruf("Verschwinde", s.datei); }
  QString operator()(const Trenne& /*s*/) const { return aufruf("Trenne"); }
  QString operator()(const Kehre_zurueck& /*s*/) const { return aufruf("Kehre_zurueck"); }
  QString operator()(const Stoere& s) const { return aufruf("Stoere", s.datei); }
  QString operator()(const Belege& s) const { return aufruf("Belege", s.zeile); }
  QString operator()(const Warte& /*s*/) const { return aufruf("Warte"); }
};

}  // namespace

QString als_Text(const Weg& weg) {
  QStringList schritte;
  for (const Schritt& s : weg.schritte) schritte.append(std::visit(Drucker(), s));
  return u"{%1, {"_s.arg(weg.bilder) + schritte.join(u",\n     "_s) + u"}}"_s;
}

std::ostream& operator<<(std::ostream& os, const Weg& weg) {
  return os << als_Text(weg).toStdString();
}
