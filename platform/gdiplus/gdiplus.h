#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/gdiplus/Bild.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "platform/gdiplus/Kodierer.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bildkopf.h"

class Bildquelle;

/// The GDI+ operations that the system uses, with GDI+'s names and status numbers (Status.h).
namespace gdiplus {

/// Starts a session; sessions are counted. Version 1 is the only one (17 otherwise). `token` gets a number that is not
/// 0, and keeps its value on a failure.
std::int32_t GdiplusStartup(std::int32_t& token, std::int32_t version);
/// Takes one start back, whatever its token: nested users share one variable for it and end the inner token twice. One
/// end too many is status 0 and changes nothing.
std::int32_t GdiplusShutdown(std::int32_t token);

/// An opened bitmap; null when there is none.
using Bitmap = std::shared_ptr<const Bild>;

/// Opens a picture file, from signature and header alone: 18 without a session, 10 for a missing file (a folder too),
/// 12 without the right to read, 7 for a failure of the disk, 13 for content of no known picture format, 2 for a known
/// format with a broken header, 3 for a size nobody can hold (over 2 GB of 32-bit pixels, a JPEG with a side over
/// 65500, a PNG with one over 1,000,000). Known are JPEG, PNG, GIF, BMP, TIFF and ICO; a JPEG with 12 bits to a sample,
/// a lossless one, and one that tells its height only behind its first scan count as broken. The file is closed again.
std::int32_t GdipCreateBitmapFromFile(const QString& pfad, Bitmap& bitmap);
/// Turns the bitmap into a displayable one on the given background (0 is black). 18 without a session, 2 without a
/// bitmap.
std::int32_t GdipCreateHBITMAPFromBitmap(const Bitmap& bitmap, Bitmap& handle, std::int32_t hintergrund);

/// A picture file that was read to be written anew. It holds the file's bytes and knows which file they are of; nothing
/// of the file stays open.
using Image = std::shared_ptr<const Bildquelle>;

/// Reads a picture file, with the statuses of GdipCreateBitmapFromFile. A file of no known format is not read through.
std::int32_t GdipLoadImageFromFile(const QString& pfad, Image& image);
/// Format of the image, by its content; Unbekannt for none.
Bildformat format_von(const Image& image) noexcept;
/// Releases a bitmap or an image. 18 without a session, 2 without the object.
template <class Objekt>
std::int32_t GdipDisposeImage(std::shared_ptr<Objekt>& objekt) {
  if (!bildersitzung::laeuft()) return GdiplusNotInitialized;
  if (!objekt) return InvalidParameter;
  objekt.reset();
  return Ok;
}

/// Writes the image, transformed, into memory. `parameter` holds one transformation: category EncoderTransformation,
/// one value of type 4, a Drehart. A JPEG keeps all that it can keep (see jpegdrehung); pixels of another format are
/// turned and coded with the quality 75, which is GDI+'s own. 18 without a session, 2 without an image or for other
/// parameters, 13 for an encoder that is not of the list, 1 for a stream that can't be read to its end or sides that no
/// JPEG can have, 3 when memory runs out. `strom` is changed with status 0 alone.
std::int32_t GdipSaveImageToStream(
    const Image& image, QByteArray& strom, const CLSID& kodierer, const EncoderParameters& parameter);
/// The same into a file, which is complete and on the disk before it takes its name; on a failure what stood there
/// stays. Statuses of GdipSaveImageToStream, and 1 where source and target are one file, 12 without the right to write,
/// 10 for a missing folder, 7 for a full disk and other failures of it.
std::int32_t GdipSaveImageToFile(
    const Image& image, const QString& pfad, const CLSID& kodierer, const EncoderParameters& parameter);

/// The platform's plain picture loader, for programs without a GDI+ session: BMP, GIF and JPEG. Raises 53 for a missing
/// file, 481 for anything that is no such picture.
std::shared_ptr<const Bild> LoadPicture(const QString& pfad);

}  // namespace gdiplus
