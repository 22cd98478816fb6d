#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "dialogs/search/Vorschaubild.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/shell/Dateityp.h"
#include "store/clsBildZuordnungen.h"
#include "store/mod_BilderSuchen.h"

/// Puts a file on a stage: its picture, or else the icon of its type. A picture that can't be loaded leaves what was
/// there. Raises 91 for a picture without a collection to load it.
inline void stelle_auf(Bildfeld& buehne, const std::shared_ptr<clsBildZuordnungen>& sammlung, const QString& datei) {
  const auto teil = [&](std::int16_t art) { return mod_BilderSuchen::Fkt_SplitFileName(datei, art); };
  const QString endung = teil(3);
  if (!vorschaubild::ist_Bildtyp(endung))
    return buehne.Picture(mod_BilderSuchen::Fkt_DateiTypIcon(endung, shell::SHGFI_ICON));
  if (!sammlung) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  if (sammlung->FKT_LoadPicture(teil(2) + u'.' + endung, teil(1), false))
    buehne.Picture(sammlung->AktLoadPicture_Picture);
}
