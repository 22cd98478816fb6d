#pragma once

#include <QPixmap>
#include <QString>
#include <optional>

#include "platform/basic/Farben.h"

/// Where a column puts its text.
enum class Ausrichtung { Links, Rechts, Zentriert };

/// How a column of a TDBGrid looks and what the user can do in it.
struct Gitterspalte {
  QString Caption = {};
  /// Twips; negative raises 380.
  double Width = 1500;
  bool Visible = true;
  /// The user can't edit the column. Code can.
  bool Locked = false;
  Ausrichtung Alignment = Ausrichtung::Links;
  Ausrichtung HeadAlignment = Ausrichtung::Links;
  /// Without a colour set the system's: a field's for the cells, a button's face for the heading.
  std::optional<Farbe> BackColor = std::nullopt;
  std::optional<Farbe> HeadBackColor = std::nullopt;
  /// The column shows Booleans as check boxes, which one click or the space key turns over.
  bool CheckBox = false;
  /// Each cell has a button at its right, with this picture.
  bool Button = false;
  QPixmap ButtonPicture = {};
};
