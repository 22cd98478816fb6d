#include <QCoreApplication>
#include <QImage>
#include <cstdio>

#include "platform/shell/Dateityp.h"

using namespace Qt::Literals::StringLiterals;

// An icon in a program without a QGuiApplication: there is one, and the program is still alive.
int main(int argc, char** argv) {
  const QCoreApplication programm(argc, argv);
  const auto icon =
      shell::SHGetFileInfo(u".pdf"_s, shell::FILE_ATTRIBUTE_NORMAL, shell::SHGFI_ICON | shell::SHGFI_USEFILEATTRIBUTES);
  const bool gut = icon && icon->bild().size() == QSize(32, 32);
  if (!gut) std::fputs("no icon without a graphical application\n", stderr);
  return gut ? 0 : 1;
}
