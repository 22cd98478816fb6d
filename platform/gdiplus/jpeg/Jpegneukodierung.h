#pragma once

#include "platform/gdiplus/jpeg/Blockdrehung.h"
#include "platform/gdiplus/jpeg/Jpegkoeffizienten.h"

/// For components whose blocks can't be moved, because a partial block would come to lie at the near edge: their
/// samples are turned and coded again with the component's own table.
///
/// Nothing is rounded to 8 bits or cut to their range on the way, and nothing changes its colours or its resolution, so
/// the table's steps are the only new loss.
namespace jpegneukodierung {

/// The samples of a component keep their places when that axis of the picture is mirrored, and so do whole blocks.
/// `laenge` in pixels; a sample covers `hoechste` / `abtastung` of them.
bool bleibt_ganz(int laenge, int abtastung, int hoechste) noexcept;

/// The blocks of the turned component, quantised with `tabelle`. Running out of memory raises 7.
jpegkoeffizienten::Blockspeicher drehe(const jpegkoeffizienten::Komponente& quelle,
    const jpegkoeffizienten::Inhalt& bild, const Drehung& drehung, const jpegkoeffizienten::Quantisierung& tabelle);

}  // namespace jpegneukodierung
