#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <memory>

#include "platform/gdiplus/Bild.h"
#include "store/clsBildZuordnungen.h"

/// Loads small previews through the component.
class Vorschaulader {
 public:
  /// The picture, or none where it is missing or unreadable; it stands alone. Nobody is told.
  std::shared_ptr<const Bild> oeffne(const QString& ordner, const QString& datei);
  /// The picture at most that large in pixels, in its own proportions and never enlarged; null when it can't be read.
  /// Tells the user nothing: a preview is nothing that he asked for.
  QImage lade(const QString& ordner, const QString& datei, QSize hoechstens);
  /// The size of what `lade` gives of a picture of that size.
  static QSize ziel(QSize groesse, QSize hoechstens);

 private:
  clsBildZuordnungen store_;
};
