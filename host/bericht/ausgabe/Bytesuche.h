#pragma once

#include <QByteArrayView>
#include <cstring>

namespace bytesuche {

/// Where the bytes occur for the first time from `ab` on, or -1. The C library's search is several times as fast as the
/// toolkit's, and a picture is searched for many things.
inline qsizetype erste(QByteArrayView bytes, QByteArrayView was, qsizetype ab = 0) {
  if (ab >= bytes.size()) return -1;
  const void* ort = ::memmem(
      bytes.data() + ab, static_cast<std::size_t>(bytes.size() - ab), was.data(), static_cast<std::size_t>(was.size()));
  return ort ? static_cast<const char*>(ort) - bytes.data() : -1;
}

}  // namespace bytesuche
