#pragma once

#include <QSizeF>
#include <QString>
#include <memory>

#include "platform/gdiplus/Bild.h"

/// Units of a picture box's scale.
enum class ScaleMode { Twips = 1, Pixel = 3 };

/// An auto-sizing picture box without a window: it takes the size of the picture that it is given and keeps its last
/// size when it is emptied.
class PictureBox {
 public:
  std::shared_ptr<const Bild> Picture() const { return bild_; }
  void Picture(std::shared_ptr<const Bild> bild);
  ScaleMode Scale() const noexcept { return einheit_; }
  void Scale(ScaleMode einheit) noexcept { einheit_ = einheit; }
  /// Inner size in the unit in force: pixels, or twips (15 to a pixel).
  double ScaleWidth() const noexcept;
  double ScaleHeight() const noexcept;

 private:
  std::shared_ptr<const Bild> bild_;
  ScaleMode einheit_ = ScaleMode::Pixel;
  QSize pixel_{0, 0};
};

/// The picture loading form. It is never shown: it loads a picture and tells its size.
class frmPic {
 public:
  PictureBox picPicture;
  /// Size of the picture loaded last, in the unit of picPicture at that time.
  double picBreite = 0;
  double PicHoehe = 0;

  /// Loads the file into picPicture, through GDI+ or, where no session starts, through the plain loader. False when the
  /// file is missing or the plain loader fails; the two sizes then stay. A file that GDI+ refuses has been told by its
  /// message: the box is then empty, its size the last one, and the result True.
  bool FKT_LoadPicture(const QString& Pname);

  /// The one instance of this thread, made when it is first asked for.
  static frmPic& Instanz();
  /// Unloads and releases the instance; harmless when there is none.
  static void Entladen() noexcept;
};
