#include "host/fenster/dialog/Bildschirm.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Leitung = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/// A connection of our own to the X server; never null, but perhaps in error.
Leitung leitung() {
  return {xcb_connect(nullptr, nullptr), &xcb_disconnect};
}

}  // namespace

namespace bildschirm {

void pruefe() {
  const QString plattform = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (!plattform.isEmpty() && !plattform.startsWith("xcb"_L1)) return;
  const bool wayland = plattform.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
  if (wayland) return;
  const QString anzeige = qEnvironmentVariable("DISPLAY");
  if (anzeige.isEmpty())
    throw Abbruch(Ausgang::Aufruf, u"Hier ist kein Bildschirm, auf dem ein Dialog zu sehen wäre (DISPLAY fehlt)."_s);
  if (xcb_connection_has_error(leitung().get()) != 0)
    throw Abbruch(Ausgang::Aufruf, u"Der Bildschirm „%1“ antwortet nicht; kein Dialog wäre zu sehen."_s.arg(anzeige));
}

bool hat_Benutzer() {
  return QGuiApplication::platformName() != "offscreen"_L1 && !QGuiApplication::platformName().startsWith("minimal"_L1);
}

bool hat_Fenster(std::uint32_t kennung) {
  if (QGuiApplication::platformName() != "xcb"_L1) return false;
  const Leitung server = leitung();
  xcb_get_window_attributes_reply_t* antwort =
      xcb_get_window_attributes_reply(server.get(), xcb_get_window_attributes(server.get(), kennung), nullptr);
  const bool gefunden = antwort != nullptr;
  std::free(antwort);
  return gefunden;
}

}  // namespace bildschirm
