#include "dialogs/Symbole.h"

using namespace Qt::Literals::StringLiterals;

QIcon symbole::symbol(const QString& name) {
  return QIcon(u":/kvo/icons/%1.svg"_s.arg(name));
}

void symbole::bebildere(SSCommand& knopf, const QString& name, const QString& hinweis, int seite) {
  knopf.setIcon(symbol(name));
  knopf.setIconSize(QSize(seite, seite));
  knopf.ToolTipText(hinweis);
  knopf.setAccessibleName(hinweis);
}
