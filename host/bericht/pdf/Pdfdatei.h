#pragma once

#include <QByteArray>
#include <QIODevice>
#include <functional>
#include <vector>

#include "host/bericht/pdf/Bildkodierung.h"
#include "host/bericht/pdf/Pdfangaben.h"

/// Puts a report's pictures into the places that its pages keep for them.
namespace pdfdatei {

/// Takes bytes of a picture's stream.
using Nehmer = std::function<void(const unsigned char* bytes, std::size_t laenge)>;

/// A picture as the file holds it; its bytes are asked for once, when their turn comes, so that one at a time is in
/// memory. JPEG data goes as it is; the pixels of a form without loss come row by row, three bytes each.
struct Bildstrom {
  bildkodierung::Form form;
  std::function<void(const Nehmer& nehmer)> liefere;
};

/// Writes the whole file. What `liefere` throws flies on. A failure of the device ends with Abbruch, Ausgang::Datei.
void schreibe(
    QIODevice& ziel, const QByteArray& geruest, const Pdfangaben& angaben, const std::vector<Bildstrom>& bilder);

}  // namespace pdfdatei
