#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <optional>

#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/bild/Bildspeicher.h"
#include "platform/gdiplus/miniatur/Miniaturablage.h"

/// What is known of picture files over the end of the program: the way from the pictures to the desktop's cache and
/// back. Every function may be called from any thread, raises nothing and does nothing where that cache is off.
namespace dauerspeicher {

using Schluessel = Bildspeicher::Schluessel;

/// What an earlier showing found out about that state of a file; its content is not touched.
std::optional<Miniaturablage::Auskunft> auskunft(const Schluessel& schluessel);

/// Its pixels at exactly `ziel`, on black; the Bildspeicher has them from then on. Null where there is no entry to
/// scale down from.
QImage suche(const Schluessel& schluessel, const Bildkopf& kopf, QSize ziel);

/// An earlier showing could decode nothing of it.
bool gibt_nichts_her(const Schluessel& schluessel);

/// What happens with an entry for which there is no room to wait until there is time for it.
enum class Andrang { Verzichte, Schreibe_sofort };

/// Keeps an entry that would have served for `ziel`. `entpackt` is what was decoded for that, on black and before it
/// was scaled, of the content `bytes`. Written when nobody has to wait for pixels.
void behalte(const Schluessel& schluessel, const Bildkopf& kopf, const QByteArray& bytes, const QImage& entpackt,
    QSize ziel, Andrang andrang);

/// Keeps that the content of a file is no picture (`status`, a gdiplus::Status), or, with status Ok, that nothing of it
/// can be decoded.
void behalte_Fehlschlag(const Schluessel& schluessel, std::int32_t status, const Bildkopf& kopf);

/// A file is being written anew, or was: what is kept of it is not right any more. `pfad` is one of the table; called
/// on the thread of the windows.
void vergiss(const QString& pfad);

}  // namespace dauerspeicher
