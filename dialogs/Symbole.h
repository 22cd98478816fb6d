#pragma once

#include <QAbstractButton>
#include <QIcon>
#include <QString>

#include "platform/forms/steuerelemente/Knoepfe.h"

/// The drawings of the dialogs' buttons.
namespace symbole {

/// The drawing of that name.
inline QIcon symbol(const QString& name) {
  return QIcon(QStringLiteral(":/kvo/icons/%1.svg").arg(name));
}

/// Puts a picture of `seite` pixels on a button, beside its caption.
inline void bebildere(QAbstractButton& knopf, const QString& name, int seite = 24) {
  knopf.setIcon(symbol(name));
  knopf.setIconSize(QSize(seite, seite));
}

/// Makes a button show only a picture; its tool tip is its name for screen readers too.
inline void bebildere(SSCommand& knopf, const QString& name, const QString& hinweis, int seite = 32) {
  bebildere(knopf, name, seite);
  knopf.ToolTipText(hinweis);
  knopf.setAccessibleName(hinweis);
}

}  // namespace symbole
