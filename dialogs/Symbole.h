#pragma once

#include <QIcon>
#include <QString>

#include "platform/forms/steuerelemente/Knoepfe.h"

/// The drawings of the dialogs' buttons.
namespace symbole {

/// The drawing of that name.
QIcon symbol(const QString& name);
/// Makes a button show only a picture of `seite` pixels; its tool tip is its name for screen readers too.
void bebildere(SSCommand& knopf, const QString& name, const QString& hinweis, int seite = 32);

}  // namespace symbole
