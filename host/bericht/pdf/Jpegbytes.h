#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>
#include <optional>

/// A JPEG file's bytes as a PDF file can take them (ITU T.81; PDF Reference 1.4, 3.3.7 "DCTDecode Filter"). Every byte
/// is distrusted.
namespace jpegbytes {

struct Kopf {
  QSize groesse;
  /// 1 for grey, 3 for colours.
  int farben = 0;
};

/// None where a PDF file can't take the bytes as they are: no JPEG, coded arithmetically or without loss, more than 8
/// bits, four colours, or colours that only the names of their components tell.
std::optional<Kopf> lies_Kopf(QByteArrayView bytes);

/// What shows the picture and nothing else: no Exif, no comments, nothing behind its end.
QByteArray ohne_Beiwerk(QByteArrayView bytes);

}  // namespace jpegbytes
