#pragma once

#include <QRectF>
#include <vector>

#include "host/bericht/Bericht.h"
#include "host/bericht/Seitenplan.h"

/// What stands on each page of a report beside its pictures, and the places that are left for them.
namespace seitenplan {

/// A page with its head, and what is left of it.
struct Leerseite {
  Seite seite;
  QRectF flaeche;
};

/// The first page has the firm's whole head, each other one a line.
Leerseite mit_Kopf(const Bericht& bericht, QSizeF zeichen, bool quer, bool erste);
/// Date and "Seite n von m".
void setze_Fuss(Seite& seite, const QString& datum, std::size_t nummer, std::size_t von);
/// The places of so many pictures in an area, row by row.
std::vector<QRectF> plaetze(const QRectF& flaeche, int je_Seite);

}  // namespace seitenplan
