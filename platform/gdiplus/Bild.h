#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <memory>

#include "platform/basic/kvo_export.h"

/// A picture object. It holds the file's compressed bytes (or a decoded image) and the header's size, and nothing else
/// until it is painted; nothing of the file stays open. Immutable; shared as `std::shared_ptr<const Bild>`.
class KVO_EXPORT Bild {
 public:
  virtual ~Bild();

  /// Size in pixels, from the header.
  virtual QSize groesse() const = 0;

  /// The whole picture scaled to exactly `ziel` pixels (proportions are the caller's business), or in its own size for
  /// an empty `ziel`. Transparency comes out black. A JPEG is decoded at the nearest scale its transform allows. A
  /// failure while decoding shows what was decoded until then. The size is that asked for in any case; a size nobody
  /// can hold raises 7.
  virtual QImage bild(QSize ziel = {}) const = 0;
};
