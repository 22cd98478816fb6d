#pragma once

#include <QImage>
#include <QList>
#include <QStringList>

class QMimeData;

/// What another program hands over, dragged or by the clipboard: files of this machine and picture data count, nothing
/// is fetched from anywhere.
struct Abwurf {
  /// Paths of this machine.
  QStringList dateien;
  QList<QImage> pixel;
  /// German sentences about what was offered and does not count.
  QStringList probleme;
};

namespace abwurf {

/// There may be something in it; cheap, for asking while the mouse moves.
bool kann_sein(const QMimeData& angebot);

/// Takes it out, at once: what another program offers is gone after the drop. Picture data counts where no file comes
/// with it. An address is named; so is a mere promise, as mail programs make it: it has to be saved first.
Abwurf lies(const QMimeData& angebot);

}  // namespace abwurf
