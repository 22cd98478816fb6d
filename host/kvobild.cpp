// The command line: assigns picture files to business records without a window.

#include <langinfo.h>

#include <QGuiApplication>
#include <clocale>
#include <cstring>

#include "host/kvobild/Befehle.h"

namespace {

/// A bare container has the locale "C", of which Qt complains on standard error at every start.
void setze_Utf8() {
  static_cast<void>(std::setlocale(LC_ALL, ""));
  if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) qputenv("LC_ALL", "C.UTF-8");
}

/// Drawing pictures needs Qt's platform, though no window ever shows. Nobody needs what Qt then says of a missing
/// session folder.
int laufe_mit_zeichnen(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QtMessageHandler vorher = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  const QGuiApplication programm(argc, argv);
  qInstallMessageHandler(vorher);
  return static_cast<int>(befehle::laufe(QCoreApplication::arguments().mid(1)));
}

}  // namespace

int main(int argc, char** argv) {
  setze_Utf8();
  for (const char* zeichnender : {"beispieldaten", "bericht", "thumbnail"})
    if (argc > 1 && std::strcmp(argv[1], zeichnender) == 0) return laufe_mit_zeichnen(argc, argv);
  const QCoreApplication programm(argc, argv);
  return static_cast<int>(befehle::laufe(QCoreApplication::arguments().mid(1)));
}
