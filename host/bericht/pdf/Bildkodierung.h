#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <optional>

#include "host/bericht/Bericht.h"
#include "host/bericht/Berichtswahl.h"
#include "host/bericht/Bildladung.h"

/// In which form a report's picture goes into a file.
namespace bildkodierung {

enum class Weg {
  Neu,          ///< coded as a JPEG of quality 90, at the size that it has on the page
  Eigene,       ///< the file's own JPEG data
  Verlustfrei,  ///< pixels, 8 bits of red, green and blue each
};

struct Form {
  Weg weg = Weg::Neu;
  QSize groesse;
  int farben = 3;
};

/// `noetig` is the size that the page needs at the chosen density.
Form form_von(const Berichtsbild& bild, QSize noetig, const Berichtswahl& wahl);

/// JPEG data of a picture that does not go as pixels; none when it can't be read any more.
std::optional<QByteArray> jpeg(
    const Berichtsbild& bild, const Form& form, const Berichtswahl& wahl, Bildladung& ladung);
/// Its pixels in the form's size; null when it can't be read any more.
QImage pixel(const Berichtsbild& bild, const Form& form, Bildladung& ladung);
/// Keeps the place of a picture that went missing while the file was written.
QImage ersatz(const Form& form);
/// JPEG data of quality 90.
QByteArray kodiere(const QImage& pixel);

}  // namespace bildkodierung
