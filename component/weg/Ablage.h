#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "store/clsBilderSpeicher.h"

/// The files of a save: what of them has to be done again, and what is there. Failures come back as German words.
namespace weg::ablage {

bool ist_da(const QString& wurzel, const clsBilderSpeicher& satz);
/// Copies a file to where a new picture's record says; replaces nothing. Why it failed, or none.
std::optional<QString> kopiere(const QString& wurzel, const QString& quelle, const clsBilderSpeicher& satz);
/// Writes the text file beside a picture. Why it failed, or none.
std::optional<QString> schreibe_Text(const QString& wurzel, const clsBilderSpeicher& satz, const QString& text);
/// What is wrong with the file of a new picture that was copied: its size is not that of its source. Empty where
/// nothing is.
QString einwand_Groesse(const QString& wurzel, const clsBilderSpeicher& satz, std::int64_t groesse);

}  // namespace weg::ablage
