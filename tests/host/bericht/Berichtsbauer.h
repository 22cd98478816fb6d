#pragma once

#include <QDate>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <vector>

#include "host/bericht/Bericht.h"
#include "host/bericht/Seitenplaner.h"

/// Reports of pictures that need no files.
namespace berichtsbauer {

inline constexpr QSizeF Liegend{4000, 3000};
inline constexpr QSizeF Stehend{3000, 4000};

inline Berichtsbild bild(const QString& text = QStringLiteral("Text"), QSizeF groesse = Liegend) {
  Berichtsbild eines;
  eines.ordner = QStringLiteral("P:\\Belege");
  eines.datei = QStringLiteral("foto.jpg");
  eines.drucktext = text;
  eines.groesse = groesse;
  return eines;
}

inline Bericht bericht(std::vector<Berichtsbild> bilder) {
  Bericht einer;
  einer.vorgang = QStringLiteral("Beleg AB 24-1001 – Bäckerei Huber, Freiburg");
  einer.datum = QDate(2024, 3, 5);
  einer.bilder = std::move(bilder);
  einer.ohne_Bilder = QStringLiteral("Kein Bild.");
  return einer;
}

inline Bericht bericht(std::size_t anzahl) {
  return bericht(std::vector<Berichtsbild>(anzahl, bild()));
}

/// The texts of a page in that letter, from top to bottom.
inline QStringList texte(const seitenplan::Seite& seite, Schrift schrift) {
  QStringList alle;
  for (const seitenplan::Textzeile& zeile : seite.texte)
    if (zeile.schrift == schrift) alle.append(zeile.text);
  return alle;
}

/// For each page its pictures by index: "0 1 | 2 | 3".
inline QString folge(const Seitenplan& plan) {
  QStringList seiten;
  for (const seitenplan::Seite& seite : plan) {
    QStringList bilder;
    for (const seitenplan::Bildkasten& kasten : seite.bilder) bilder.append(QString::number(kasten.bild));
    seiten.append(bilder.join(u' '));
  }
  return seiten.join(QStringLiteral(" | "));
}

}  // namespace berichtsbauer
