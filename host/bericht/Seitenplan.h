#pragma once

#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <optional>
#include <vector>

/// Kinds of letters that a report uses.
enum class Schrift { Firma, Anschrift, Vorgang, Ueberschrift, Nummer, Text, Info, Klein };

/// The pages of a report as values. All measures are twips (1/1440 inch) from the page's upper left corner.
namespace seitenplan {

/// One line of text, not to be broken any more.
struct Textzeile {
  /// Where its baseline begins.
  QPointF ort;
  QString text;
  Schrift schrift = Schrift::Text;
  friend bool operator==(const Textzeile&, const Textzeile&) = default;
};

struct Bildkasten {
  QRectF ort;
  /// Index into the report's pictures.
  std::size_t bild = 0;
  /// The picture can't be shown: an empty frame keeps its place.
  bool leer = false;
  friend bool operator==(const Bildkasten&, const Bildkasten&) = default;
};

struct Seite {
  bool quer = false;
  std::vector<Bildkasten> bilder;
  std::vector<Textzeile> texte;
  std::vector<QLineF> linien;
  /// Where the firm's mark stands.
  std::optional<QRectF> zeichen;

  QSizeF groesse() const noexcept;
  friend bool operator==(const Seite&, const Seite&) = default;
};

/// A4 upright in whole points, as PDF knows it.
inline constexpr QSizeF A4{11900, 16840};
inline constexpr double Millimeter = 1440 / 25.4;

inline QSizeF Seite::groesse() const noexcept {
  return quer ? A4.transposed() : A4;
}

}  // namespace seitenplan

using Seitenplan = std::vector<seitenplan::Seite>;
