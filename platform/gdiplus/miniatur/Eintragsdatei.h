#pragma once

#include <QByteArray>
#include <cstdint>

#include "platform/files/Systemfehler.h"

namespace miniatur {

/// An entry's file that is read. Only a regular file of this user, of a size that an entry can have, is opened; never a
/// link, and never anything that would wait.
class Eintragsdatei {
 public:
  /// 1024 x 1024 pixels, uncompressed, and texts are less than half of that.
  static constexpr std::int64_t Groesste = std::int64_t{8} * 1024 * 1024;

  explicit Eintragsdatei(const QByteArray& pfad);

  bool ist_offen() const noexcept { return laenge_ > 0; }
  std::int64_t laenge() const noexcept { return laenge_; }
  /// At most that many bytes from the start; fewer where there are no more.
  QByteArray lies(std::int64_t anzahl) const;

 private:
  systemfehler::Deskriptor deskriptor_;
  std::int64_t laenge_ = 0;
};

/// A new entry: written under another name beside, so that nobody ever sees a part of it. 0600. What was not given its
/// name is gone at the end of this object's life.
class Neuer_Eintrag {
 public:
  /// Folders that are missing are made, 0700.
  Neuer_Eintrag(const QByteArray& ordner, const QByteArray& name, const QByteArray& bytes);
  ~Neuer_Eintrag();
  Q_DISABLE_COPY_MOVE(Neuer_Eintrag)

  /// Takes the place of what has the name now.
  bool benenne();

 private:
  QByteArray ziel_;
  QByteArray vorlaeufig_;  ///< empty where there is no file of that name
  bool geschrieben_ = false;
};

}  // namespace miniatur
