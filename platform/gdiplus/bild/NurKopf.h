#pragma once

#include <QtGlobal>

#include "platform/basic/kvo_export.h"

namespace bildlader {

/// While one of these lives, picture files opened on its thread are read no further than their header. The status is
/// the same as ever. The picture object then stands for the file's path: whenever pixels are asked for that the cache
/// does not have, the file is read and let go of again. So a hundred pictures of which five are painted cost a hundred
/// headers and five files, and none of them stays in memory.
///
/// The price: such a picture needs its file. A file that changed meanwhile shows its new content in the size asked for;
/// one that is gone, or no picture any more, shows the largest pixels that the cache still has of it, otherwise black.
/// So it is for those who show pictures that lie where they lie, never for those who load a picture and then remove its
/// file. Nests; belongs to the thread that made it.
class NurKopf {
 public:
  KVO_EXPORT NurKopf() noexcept;
  KVO_EXPORT ~NurKopf();
  Q_DISABLE_COPY_MOVE(NurKopf)

  /// One lives on this thread.
  static bool gilt() noexcept;
};

}  // namespace bildlader
