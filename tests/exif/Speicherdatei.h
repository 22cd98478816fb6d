#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <QByteArray>
#include <QString>
#include <cstdlib>

/// A file in memory that can be filled anew thousands of times without any disk.
class Speicherdatei {
 public:
  Speicherdatei() = default;
  ~Speicherdatei() { ::close(deskriptor_); }
  Speicherdatei(const Speicherdatei&) = delete;
  Speicherdatei& operator=(const Speicherdatei&) = delete;

  /// Replaces the content and gives the path under which it can be opened.
  QString fuelle(const QByteArray& bytes) const {
    if (::ftruncate(deskriptor_, 0) != 0 || ::pwrite(deskriptor_, bytes.constData(), std::size_t(bytes.size()), 0) < 0)
      std::abort();
    return QStringLiteral("/proc/self/fd/%1").arg(deskriptor_);
  }

 private:
  int deskriptor_ = ::memfd_create("exif", MFD_CLOEXEC);
};
