#pragma once

#include <QImage>
#include <QString>
#include <memory>

#include "platform/basic/kvo_export.h"
#include "platform/gdiplus/Bild.h"

/// The small pictures of the picture list.
namespace vorschaubild {

/// The four extensions, in any case, that count as pictures.
bool ist_Bildtyp(const QString& endung);

/// A square of paper `breite` by `hoehe` twips (and 10 more), white, with the picture on it: one that is larger is
/// stretched over it without regard to its proportions, a smaller one stands in the middle in its own size. With
/// `nur_mittig` it stands in the middle in any case, as icons do. None leaves it blank. `dichte` is the pixels of the
/// screen to a logical one. What can't be decoded shows what could be.
QImage zeichne(
    const std::shared_ptr<const Bild>& bild, double breite, double hoehe, bool nur_mittig = false, double dichte = 1);

/// The size in pixels at which `zeichne` shows a picture of `groesse` pixels on such a sheet.
QSize ziel_auf_Blatt(QSize groesse, double breite, double hoehe, bool nur_mittig, double dichte);

/// The drawing that stands for a picture that can't be read (see imaging/Ersatzbild.h).
const std::shared_ptr<const Bild>& ersatzbild();

/// The sheet of a file: a picture as it is, a file of another type with its type's icon. A picture that is missing or
/// not to be read, or of which nothing can be decoded, shows `unlesbar`. `mit_Sitzung` tells that a session of the
/// picture service runs; without one the plain loader reads. Asks and tells nobody anything.
QImage zeichne_Datei(const QString& datei, double breite, double hoehe, const std::shared_ptr<const Bild>& unlesbar,
    bool mit_Sitzung, double dichte = 1);

/// As the list of the picture search draws a file, for programs without windows; brings a session of its own. Icons
/// have the letters of their type only where a QGuiApplication lives.
KVO_EXPORT QImage wie_in_der_Liste(const QString& datei, double breite, double hoehe);

}  // namespace vorschaubild
