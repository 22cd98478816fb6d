#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/platform/gdiplus/Vorlagen.h"

using namespace gdiplus;
using namespace Qt::Literals::StringLiterals;

// Whatever is done to a picture file: it has one of the statuses, and what opens can be painted.
namespace {

const std::vector<QByteArray>& vorbilder() {
  static const std::vector<QByteArray> Alle = [] {
    const QImage bild = vorlagen::foto({48, 33});
    QImage durchsichtig = bild.convertToFormat(QImage::Format_ARGB32);
    durchsichtig.setPixel(3, 3, 0);
    return std::vector<QByteArray>{
        vorlagen::jpeg(bild),
        vorlagen::jpeg(bild, {.progressiv = true}),
        vorlagen::jpeg(bild, {.arithmetisch = true, .waagrecht = 1, .senkrecht = 4}),
        vorlagen::jpeg_Cmyk({20, 20}, 0x11223344, true),
        vorlagen::kodiert(bild, "png"),
        vorlagen::kodiert(durchsichtig, "png"),
        vorlagen::kodiert(bild, "bmp"),
        vorlagen::kodiert(bild.convertToFormat(QImage::Format_Indexed8), "bmp"),
        vorlagen::kodiert(bild, "tiff"),
        vorlagen::kodiert(bild, "ico"),
        vorlagen::gif({48, 33}, 20),
    };
  }();
  return Alle;
}

class Pruefung {
 public:
  Pruefung() { GdiplusStartup(marke_, 1); }
  ~Pruefung() { GdiplusShutdown(marke_); }

  void pruefe(const QByteArray& inhalt) const {
    Bitmap b;
    const std::int32_t status = GdipCreateBitmapFromFile(ordner_.schreibe(u"a"_s, inhalt), b);
    RC_ASSERT(status == Ok || status == InvalidParameter || status == OutOfMemory || status == UnknownImageFormat);
    RC_ASSERT((status == Ok) == (b != nullptr));
    if (!b) return;
    // A false claim of hundreds of megapixels is sound, but would only make the test slow.
    if (qint64{b->groesse().width()} * b->groesse().height() > 4'000'000) return;
    RC_ASSERT(b->bild({13, 11}).size() == QSize(13, 11));
    RC_ASSERT(b->bild().size() == b->groesse());
  }

 private:
  Testordner ordner_;
  std::int32_t marke_ = 0;
};

QByteArray vorbild() {
  return vorbilder()[*rc::gen::inRange<std::size_t>(0, vorbilder().size())];
}

RC_GTEST_PROP(Mutation, ChangedBytesNeverDoHarm, ()) {
  QByteArray inhalt = vorbild();
  const int anzahl = *rc::gen::inRange(1, 12);
  for (int i = 0; i < anzahl; ++i) {
    // Half of the changes go to the header, where they do more.
    const qsizetype bereich = *rc::gen::arbitrary<bool>() ? std::min<qsizetype>(inhalt.size(), 200) : inhalt.size();
    inhalt[*rc::gen::inRange<qsizetype>(0, bereich)] = *rc::gen::arbitrary<char>();
  }
  Pruefung().pruefe(inhalt);
}

RC_GTEST_PROP(Mutation, TruncatedFilesNeverDoHarm, ()) {
  const QByteArray inhalt = vorbild();
  Pruefung().pruefe(inhalt.first(*rc::gen::inRange<qsizetype>(0, inhalt.size())));
}

RC_GTEST_PROP(Mutation, DoubledAndRemovedPiecesNeverDoHarm, ()) {
  QByteArray inhalt = vorbild();
  const auto von = *rc::gen::inRange<qsizetype>(0, inhalt.size());
  const auto laenge = *rc::gen::inRange<qsizetype>(0, 300);
  if (*rc::gen::arbitrary<bool>())
    inhalt.remove(von, laenge);
  else
    inhalt.insert(von, inhalt.mid(*rc::gen::inRange<qsizetype>(0, inhalt.size()), laenge));
  Pruefung().pruefe(inhalt);
}

RC_GTEST_PROP(Mutation, AJpegHasExactlyTheSizeOfAnyTarget, ()) {
  const QSize ganz(*rc::gen::inRange(1, 130), *rc::gen::inRange(1, 130));
  const QSize ziel(*rc::gen::inRange(1, 300), *rc::gen::inRange(1, 300));
  const Testordner ordner;
  std::int32_t marke = 0;
  GdiplusStartup(marke, 1);
  Bitmap b;
  const QByteArray inhalt = vorlagen::jpeg(vorlagen::foto(ganz), {.progressiv = *rc::gen::arbitrary<bool>()});
  const std::int32_t status = GdipCreateBitmapFromFile(ordner.schreibe(u"a"_s, inhalt), b);
  GdiplusShutdown(marke);
  RC_ASSERT(status == Ok);
  RC_ASSERT(b->bild(ziel).size() == ziel);
}

}  // namespace
