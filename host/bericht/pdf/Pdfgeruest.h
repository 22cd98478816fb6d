#pragma once

#include <QByteArray>
#include <QSize>
#include <functional>

#include "host/bericht/Seitenplan.h"

/// A report's pages as a PDF file in which a mark stands in the place of each picture.
namespace pdfgeruest {

/// Which of the pictures that the file will hold stands at this place, counted from 0.
using Bildnummer = std::function<std::size_t(std::size_t bild)>;

/// The mark of the picture with that number is an image of this size in pixels, which no two share.
QSize marke(std::size_t nummer);
/// The number of the picture that an image of this size stands for.
std::size_t nummer(QSize marke);

/// The firm's mark gets the number 0; `bildnummer` gives numbers from 1 on.
QByteArray schreibe(const Seitenplan& plan, const Bildnummer& bildnummer);

}  // namespace pdfgeruest
