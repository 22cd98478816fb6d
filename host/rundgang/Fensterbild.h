#pragma once

#include <QImage>

class QWidget;

namespace fensterbild {

/// A window as it looks at this moment. A message box is shown over the window that it belongs to, where it fits there,
/// with a plain frame and its title, since the frame of a window system is in no such picture.
QImage nimm_auf(QWidget& fenster);

}  // namespace fensterbild
