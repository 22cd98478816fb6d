#include "host/bericht/Seitengeruest.h"

#include "host/bericht/Bildmass.h"
#include "host/bericht/Textsatz.h"

using namespace Qt::Literals::StringLiterals;

namespace seitenplan {
namespace {

constexpr double Rand_Seite = 20 * Millimeter;
constexpr double Rand_oben = 15 * Millimeter;
constexpr double Rand_unten = 15 * Millimeter;
constexpr double Fusshoehe = 8 * Millimeter;
constexpr double Abstand = 6 * Millimeter;
constexpr QSizeF Groesstes_Zeichen{55 * Millimeter, 22 * Millimeter};
constexpr double Linienabstand = 90;

QRectF satzspiegel(const Seite& seite) {
  return QRectF(QPointF(), seite.groesse()).adjusted(Rand_Seite, Rand_oben, -Rand_Seite, -Rand_unten);
}

/// Sets a line with its upper edge there, and gives its lower edge.
double setze_Zeile(Seite& seite, QPointF ort, const QString& text, Schrift art, double breite) {
  seite.texte.push_back({ort + QPointF(0, textsatz::oberlaenge(art)), textsatz::gekuerzt(text, art, breite), art});
  return ort.y() + textsatz::zeilenhoehe(art);
}

double setze_Linie(Seite& seite, const QRectF& spiegel, double oben) {
  const double hoehe = oben + Linienabstand;
  seite.linien.emplace_back(spiegel.left(), hoehe, spiegel.right(), hoehe);
  return hoehe + 2 * Linienabstand;
}

/// The firm's lines with its mark at the right; gives the lower edge.
double setze_Firma(Seite& seite, const QRectF& spiegel, const Bericht& bericht, QSizeF zeichen) {
  double breite = spiegel.width();
  double unten = spiegel.top();
  if (!zeichen.isEmpty()) {
    const QSizeF groesse = eingepasst(Groesstes_Zeichen, zeichen);
    seite.zeichen = QRectF(QPointF(spiegel.right() - groesse.width(), spiegel.top()), groesse);
    breite -= groesse.width() + Abstand;
    unten = seite.zeichen->bottom();
  }
  double oben = spiegel.top();
  for (qsizetype i = 0; i < bericht.kopf.zeilen.size(); ++i)
    oben = setze_Zeile(
        seite, {spiegel.left(), oben}, bericht.kopf.zeilen[i], i == 0 ? Schrift::Firma : Schrift::Anschrift, breite);
  const bool leer = bericht.kopf.zeilen.isEmpty() && zeichen.isEmpty();
  return std::max(oben, unten) + (leer ? 0 : 2 * Linienabstand);
}

double setze_ganzen_Kopf(Seite& seite, const QRectF& spiegel, const Bericht& bericht, QSizeF zeichen) {
  double oben = setze_Firma(seite, spiegel, bericht, zeichen);
  for (const QString& zeile : textsatz::umbruch(bericht.vorgang, Schrift::Vorgang, spiegel.width()).mid(0, 3))
    oben = setze_Zeile(seite, {spiegel.left(), oben}, zeile, Schrift::Vorgang, spiegel.width());
  return setze_Linie(seite, spiegel, oben);
}

double setze_kurzen_Kopf(Seite& seite, const QRectF& spiegel, const Bericht& bericht) {
  const QString firma = textsatz::gekuerzt(bericht.kopf.zeilen.value(0), Schrift::Klein, spiegel.width() / 3);
  const double rechts = textsatz::breite(firma, Schrift::Klein);
  if (!firma.isEmpty())
    setze_Zeile(seite, {spiegel.right() - rechts, spiegel.top()}, firma, Schrift::Klein, rechts + 20);
  const double unten =
      setze_Zeile(seite, spiegel.topLeft(), bericht.vorgang, Schrift::Klein, spiegel.width() - rechts - Abstand);
  return setze_Linie(seite, spiegel, unten);
}

}  // namespace

Leerseite mit_Kopf(const Bericht& bericht, QSizeF zeichen, bool quer, bool erste) {
  Leerseite leer;
  leer.seite.quer = quer;
  const QRectF spiegel = satzspiegel(leer.seite);
  const double oben = erste ? setze_ganzen_Kopf(leer.seite, spiegel, bericht, zeichen)
                            : setze_kurzen_Kopf(leer.seite, spiegel, bericht);
  leer.flaeche = spiegel;
  leer.flaeche.setTop(oben);
  leer.flaeche.setBottom(spiegel.bottom() - Fusshoehe);
  return leer;
}

void setze_Fuss(Seite& seite, const QString& datum, std::size_t nummer, std::size_t von) {
  const QRectF spiegel = satzspiegel(seite);
  const double oben = spiegel.bottom() - textsatz::zeilenhoehe(Schrift::Klein);
  const QString zaehlung = u"Seite %1 von %2"_s.arg(nummer).arg(von);
  const double breite = textsatz::breite(zaehlung, Schrift::Klein);
  setze_Zeile(seite, {spiegel.left(), oben}, datum, Schrift::Klein, spiegel.width() - breite);
  setze_Zeile(seite, {spiegel.right() - breite, oben}, zaehlung, Schrift::Klein, breite + 20);
}

std::vector<QRectF> plaetze(const QRectF& flaeche, int je_Seite) {
  const int spalten = je_Seite > 2 ? 2 : 1;
  const int zeilen = je_Seite / spalten;
  const QSizeF groesse(
      (flaeche.width() - (spalten - 1) * Abstand) / spalten, (flaeche.height() - (zeilen - 1) * Abstand) / zeilen);
  std::vector<QRectF> alle;
  for (int zeile = 0; zeile < zeilen; ++zeile)
    for (int spalte = 0; spalte < spalten; ++spalte)
      alle.emplace_back(
          flaeche.topLeft() + QPointF(spalte * (groesse.width() + Abstand), zeile * (groesse.height() + Abstand)),
          groesse);
  return alle;
}

}  // namespace seitenplan
