#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <memory>

#include "platform/files/Dateien.h"
#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/jpeg/Blockdrehung.h"

/// A picture file's whole content, to be written anew.
class Bildquelle {
 public:
  /// Reads a file; the result is a gdiplus::Status, and `quelle` is set with 0 alone.
  static std::int32_t oeffne(const QString& pfad, std::shared_ptr<const Bildquelle>& quelle);

  Bildquelle(QByteArray bytes, const Bildkopf& kopf, const dateien::Kennung& kennung)
      : bytes_(std::move(bytes)), kopf_(kopf), kennung_(kennung) {}

  const Bildkopf& kopf() const noexcept { return kopf_; }
  /// The path leads to the file that was read, whatever its name. Never raises.
  bool ist_Datei(const QString& pfad) const noexcept;
  /// The picture turned, as a JPEG stream. The result is a gdiplus::Status; `strom` is changed with 0 alone.
  std::int32_t drehe(const Drehung& drehung, QByteArray& strom) const;

 private:
  QByteArray bytes_;
  Bildkopf kopf_;
  dateien::Kennung kennung_;
};
