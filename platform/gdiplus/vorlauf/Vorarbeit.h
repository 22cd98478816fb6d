#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/bild/Bildspeicher.h"

/// One file whose pixels are put into the Bildspeicher before anybody asks for them. Looks at the disk by the machine's
/// own path alone: the path map belongs to the thread of the windows.
namespace vorarbeit {

struct Auftrag {
  struct Groesse {
    QSize ziel;
    /// As the asking picture would do it: see reduktion::vorhanden.
    bool auch_aus_Groesserem = true;
  };

  QByteArray ort;
  /// Set by whoever announced it and does not want it any more.
  std::shared_ptr<const std::atomic<bool>> aufgegeben;
  /// The sizes wanted of a picture of that size; none: only the header.
  std::function<QList<Groesse>(QSize groesse)> masse;
  /// The state that the picture object stands for; none: whatever is there.
  std::optional<Bildspeicher::Schluessel> schluessel;
  /// The content, where the picture object holds it; then with `kopf` and `schluessel`.
  QByteArray bytes;
  Bildkopf kopf;
};

/// Has it done by the Rechenwerk. Nothing comes of what the cache would not keep, of files that somebody is at work on,
/// and of failures: whoever asks for the picture then meets them himself.
void beginne(Auftrag auftrag);

}  // namespace vorarbeit
