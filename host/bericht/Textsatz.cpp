#include "host/bericht/Textsatz.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace textsatz {
namespace {

struct Form {
  /// In twips, 20 to a point.
  int groesse;
  bool fett;
  double zeilenhoehe;
  QRgb farbe;
};

constexpr QRgb Schwarz = 0xff000000;
constexpr QRgb Grau = 0xff5a5a5a;

/// In the order of Schrift.
constexpr std::array<Form, 8> Formen{
    {{260, true, 330, Schwarz}, {170, false, 220, Grau}, {210, true, 270, Schwarz}, {260, true, 340, Schwarz},
        {190, true, 245, Schwarz}, {190, false, 245, Schwarz}, {170, false, 220, Schwarz}, {150, false, 200, Grau}}};

const Form& form(Schrift art) {
  return Formen.at(static_cast<std::size_t>(art));
}

QString nur_Zeichen(QString text) {
  for (QChar& zeichen : text)
    if (zeichen.category() == QChar::Other_Control) zeichen = u' ';
  return text;
}

QString ohne_Ende(QString zeile) {
  while (zeile.endsWith(u' ')) zeile.chop(1);
  return zeile;
}

void brich_um(const QString& absatz, Schrift art, double breite, QStringList& zeilen) {
  QTextLayout satz(absatz, schrift(art));
  QTextOption angaben;
  angaben.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  satz.setTextOption(angaben);
  satz.beginLayout();
  for (QTextLine zeile = satz.createLine(); zeile.isValid(); zeile = satz.createLine()) {
    zeile.setLineWidth(breite);
    zeilen.append(ohne_Ende(absatz.mid(zeile.textStart(), zeile.textLength())));
  }
  satz.endLayout();
}

}  // namespace

QFont schrift(Schrift art) {
  QFont font(u"DejaVu Sans"_s);
  font.setPixelSize(form(art).groesse);
  font.setBold(form(art).fett);
  // Hinted letters would have other widths on each output.
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setStyleStrategy(QFont::PreferOutline);
  return font;
}

QColor farbe(Schrift art) {
  return QColor::fromRgb(form(art).farbe);
}

double zeilenhoehe(Schrift art) {
  return form(art).zeilenhoehe;
}

double oberlaenge(Schrift art) {
  return (form(art).zeilenhoehe - form(art).groesse) / 2 + 0.8 * form(art).groesse;
}

double breite(const QString& text, Schrift art) {
  return QFontMetricsF(schrift(art)).horizontalAdvance(text);
}

QStringList umbruch(const QString& text, Schrift art, double breite) {
  QString einheitlich = text;
  einheitlich.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
  QStringList zeilen;
  for (const QString& absatz : einheitlich.split(u'\n')) {
    if (absatz.isEmpty()) zeilen.append(QString());
    if (!absatz.isEmpty()) brich_um(nur_Zeichen(absatz), art, breite, zeilen);
  }
  while (!zeilen.isEmpty() && zeilen.last().isEmpty()) zeilen.removeLast();
  return zeilen;
}

QString gekuerzt(const QString& text, Schrift art, double breite) {
  return QFontMetricsF(schrift(art)).elidedText(nur_Zeichen(text).simplified(), Qt::ElideRight, breite);
}

}  // namespace textsatz
