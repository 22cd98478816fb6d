// The reference host: shows a firm's business records and assigns pictures to them in the component's dialogs.

#include <langinfo.h>

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QStandardPaths>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Fassung.h"
#include "host/betrieb/Gedaechtnis.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/vorgang/Vorgangsdienst.h"
#include "host/fenster/Hauptfenster.h"
#include "host/fenster/dialog/Dialogprogramm.h"
#include "host/rundgang/Rundgang.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A bare container has the locale "C", of which Qt complains on standard error at every start.
void setze_Utf8() {
  static_cast<void>(std::setlocale(LC_ALL, ""));
  if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) qputenv("LC_ALL", "C.UTF-8");
}

/// Without a display QApplication would abort.
void waehle_Plattform() {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
      qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

/// Without a session bus Qt looks for the program that starts one, along the whole search path, in a process of its
/// own, as soon as a button gets its first text: before the window is up.
void suche_keinen_Sitzungsbus() {
  if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  const QString ordner = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (!ordner.isEmpty() && QFileInfo::exists(ordner + u"/bus"_s)) return;
  if (QStandardPaths::findExecutable(u"dbus-launch"_s).isEmpty())
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
}

/// The arguments from that one on, before there is an application to ask for them.
QStringList worte(int argc, char** argv, int ab) {
  QStringList liste;
  for (int i = ab; i < argc; ++i) liste.append(QString::fromLocal8Bit(argv[i]));
  return liste;
}

/// Who starts it from a menu does not see standard error.
Wirtsoptionen ergaenzt(const Wirtsoptionen& optionen) {
  try {
    return gedaechtnis::ergaenzt(optionen);
  } catch (const Abbruch& abbruch) {
    if (QGuiApplication::platformName() != "offscreen"_L1)
      oberflaeche::MsgBox(abbruch.text(), oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Kritisch,
          QApplication::applicationDisplayName());
    throw;
  }
}

int laufe(const Wirtsoptionen& optionen) {
  fensterdienste::richte_ein();
  ausgabe::programm(u"bildzuordnung"_s);
  if (!optionen.rundgang.isEmpty()) return Rundgang(optionen.rundgang, {}).laufe();
  Wirtsoptionen alle = ergaenzt(optionen);
  // Nobody sees a question without a display.
  if (alle.anfang == Anfangsbestand::Fragen && QGuiApplication::platformName() == "offscreen"_L1)
    alle.anfang = Anfangsbestand::Beispiele;
  // The programs that open a picture are not to inherit it.
  qunsetenv("KVOBILD_KENNWORT");
  int ausgang = 0;
  {
    Hauptfenster fenster(alle, {});
    fenster.beginne();
    fenster.show();
    // After the window: reading it loads what draws SVG.
    QTimer::singleShot(0, &fenster, [] { QApplication::setWindowIcon(QIcon(u":/bildzuordnung/bildzuordnung.svg"_s)); });
    ausgang = QApplication::exec();
  }
  // A thread that hangs in a driver would meet what the process tidies up.
  if (Vorgangsdienst::einer_zurueckgelassen()) std::_Exit(ausgang);
  return ausgang;
}

/// Nobody needs what Qt says of a session folder that a bare container does not have, or of what a window can't do
/// without a display.
QtMessageHandler bisher = nullptr;
void ohne_Belangloses(QtMsgType art, const QMessageLogContext& ort, const QString& text) {
  if (text.startsWith("QStandardPaths: XDG_RUNTIME_DIR not set"_L1)) return;
  if (text.startsWith("This plugin does not support "_L1)) return;
  bisher(art, ort, text);
}

}  // namespace

int main(int argc, char** argv) {
  setze_Utf8();
  suche_keinen_Sitzungsbus();
  bisher = qInstallMessageHandler(ohne_Belangloses);
  if (argc > 1 && std::strcmp(argv[1], "dialog") == 0) return dialogprogramm::laufe(argc, argv, worte(argc, argv, 2));
  waehle_Plattform();
  const QApplication programm(argc, argv);
  QApplication::setApplicationName(u"bildzuordnung"_s);
  // By this name a desktop finds the entry that the window belongs to, under its own window class too.
  QApplication::setDesktopFileName(u"bildzuordnung"_s);
  QApplication::setApplicationDisplayName(u"Bildzuordnung"_s);
  try {
    const Wirtsoptionen optionen = wirtsoptionen::lies(QApplication::arguments().mid(1));
    if (!optionen.hilfe && !optionen.version) return laufe(optionen);
    const QString text = optionen.hilfe ? wirtsoptionen::hilfetext() : fassung::text(u"bildzuordnung"_s) + u'\n';
    static_cast<void>(std::fputs(text.toUtf8().constData(), stdout));
    return static_cast<int>(Ausgang::Erledigt);
  } catch (const Abbruch& abbruch) {
    static_cast<void>(std::fputs((u"bildzuordnung: "_s + abbruch.text() + u'\n').toUtf8().constData(), stderr));
    return static_cast<int>(abbruch.ausgang());
  }
}
