#pragma once

#include <QString>
#include <cstdint>

#include "platform/basic/kvo_export.h"

/// A new name for a file that something follows by a step of its own: a row, a picture's text. In between the file has
/// both names where its file system gives a file two, so that a program that ends there leaves nothing pointing to a
/// file that is not to be found. On paths of the table; failure numbers as in FileSystemObject.
class KVO_EXPORT Namenswechsel {
 public:
  /// Gives the file its new name beside the old one. Does nothing where that can't be, for whatever reason: the methods
  /// tell it.
  Namenswechsel(QString alt, QString neu);

  const QString& alter() const noexcept { return alt_; }
  const QString& neuer() const noexcept { return neu_; }
  bool hat_beide() const noexcept { return namen_ == Namen::Beide; }

  /// The file has the new name from now on, in folders that know one name only no longer the old one. Raises as
  /// FileSystemObject::MoveFile.
  void benenne();
  /// Everything follows: the file has the new name alone. Raises as MoveFile or DeleteFile.
  void vollende();
  /// Nothing follows: the file has the old name alone. Raises as MoveFile or DeleteFile.
  void nimm_zurueck();

 private:
  enum class Namen : std::uint8_t { Alter, Beide, Neuer };

  /// Takes one of both names away, unless the other one is another file's by now: somebody else was here.
  void behalte(Namen welchen);

  QString alt_;
  QString neu_;
  Namen namen_ = Namen::Alter;
};
