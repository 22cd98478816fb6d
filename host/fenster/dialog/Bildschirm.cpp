#include "host/fenster/dialog/Bildschirm.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Leitung = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/// A connection of our own to the X server; never null, but perhaps in error.
Leitung leitung() {
  return {xcb_connect(nullptr, nullptr), &xcb_disconnect};
}

/// An answer of the X server, which is ours to free; none where the question was wrong.
template <class Inhalt>
std::unique_ptr<Inhalt, decltype(&std::free)> antwort(Inhalt* zeiger) {
  return {zeiger, &std::free};
}

/// The window around one, XCB_NONE around the root; none for a window that is not there.
std::optional<std::uint32_t> darueber(xcb_connection_t& server, std::uint32_t fenster) {
  const auto baum = antwort(xcb_query_tree_reply(&server, xcb_query_tree(&server, fenster), nullptr));
  return baum ? std::optional(baum->parent) : std::nullopt;
}

xcb_atom_t nummer_von(xcb_connection_t& server, std::string_view name) {
  const auto nummer = antwort(xcb_intern_atom_reply(
      &server, xcb_intern_atom(&server, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
  return nummer ? nummer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool hat_Eigenschaft(xcb_connection_t& server, std::uint32_t fenster, xcb_atom_t eigenschaft) {
  const auto wert = antwort(xcb_get_property_reply(
      &server, xcb_get_property(&server, 0, fenster, eigenschaft, XCB_GET_PROPERTY_TYPE_ANY, 0, 0), nullptr));
  return wert && wert->type != XCB_ATOM_NONE;
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

std::optional<std::uint32_t> ganzes_Fenster(std::uint32_t kennung) {
  if (QGuiApplication::platformName() != "xcb"_L1) return std::nullopt;
  const Leitung server = leitung();
  if (!darueber(*server, kennung)) return std::nullopt;
  const xcb_atom_t marke = nummer_von(*server, "WM_STATE");
  std::uint32_t fenster = kennung;
  while (fenster != XCB_NONE && !hat_Eigenschaft(*server, fenster, marke))
    fenster = darueber(*server, fenster).value_or(XCB_NONE);
  return fenster == XCB_NONE ? kennung : fenster;
}

}  // namespace bildschirm
