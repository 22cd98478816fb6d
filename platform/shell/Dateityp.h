#pragma once

#include <QImage>
#include <QString>
#include <cstdint>
#include <memory>

#include "platform/gdiplus/Bild.h"

/// File-type icons (learn.microsoft.com, "SHGetFileInfo").
namespace shell {

enum Iconwahl : std::int32_t { SHGFI_SMALLICON = 1, SHGFI_USEFILEATTRIBUTES = 16, SHGFI_ICON = 256 };
inline constexpr std::int32_t FILE_ATTRIBUTE_NORMAL = 128;

/// Gives the icon of a file type. A program with windows may put the desktop's icons in its place.
class DateitypIcons {
 public:
  virtual ~DateitypIcons();
  /// `endung` without a dot, perhaps empty; `seite` is 32 or 16 pixels. A null image where there is none.
  virtual QImage icon(const QString& endung, int seite) = 0;
};

/// The service in force. By default a sheet with a folded corner and the extension's letters is drawn; without a
/// QGuiApplication, which letters need, a sheet without them.
DateitypIcons& dateitypIcons();
/// Puts another service in force and hands back the one before; none puts the default back.
std::shared_ptr<DateitypIcons> setze(std::shared_ptr<DateitypIcons> dienst);

/// The icon of a file name's type as a picture object, or none: without SHGFI_ICON, when the service has none or fails,
/// or when without SHGFI_USEFILEATTRIBUTES no file of that name exists. `attribute` is FILE_ATTRIBUTE_NORMAL. The icon
/// is opaque, 32 pixels wide and high, with SHGFI_SMALLICON 16.
std::shared_ptr<const Bild> SHGetFileInfo(const QString& name, std::int32_t attribute, std::int32_t flags);

}  // namespace shell
