#include "tests/ende/Xsitzung.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QHash>
#include <QStandardPaths>
#include <QStringList>
#include <stdexcept>

// The last, because their macros have names that others use.
#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#define XK_PUBLISHING
#include <X11/keysym.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Start = 30'000;

/// No keys and no buttons inside of windows, so that each reaches the program, and in the order in which they came: a
/// manager that looks at a click first holds the mouse up, and keys overtake it. The title bar has a name and the
/// closing button at its right.
const char* const Verwaltung = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><raiseOnFocus>yes</raiseOnFocus></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <theme><name>Clearlooks</name><titleLayout>LC</titleLayout></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <mouse>
    <context name="Titlebar"><mousebind button="Left" action="DoubleClick"><action name="ToggleMaximize"/></mousebind>
    </context>
    <context name="Close"><mousebind button="Left" action="Click"><action name="Close"/></mousebind></context>
  </mouse>
</openbox_config>
)";

Display* als_Anzeige(void* zeiger) {
  return static_cast<Display*>(zeiger);
}

KeySym zeichen(QChar c) {
  static const QHash<QChar, KeySym> Eigene{{u'„', XK_doublelowquotemark}, {u'“', XK_leftdoublequotemark},
      {u'–', XK_endash}, {u'€', XK_EuroSign}, {u'…', XK_ellipsis}, {u'\n', XK_Return}};
  if (const auto gefunden = Eigene.find(c); gefunden != Eigene.end()) return *gefunden;
  return c.unicode() < 0x100 ? c.unicode() : 0x01000000UL | c.unicode();
}

/// The values of a window's property, which are 32-bit numbers.
QList<long> werte(Display* anzeige, Window fenster, const char* name) {
  const Atom eigenschaft = XInternAtom(anzeige, name, False);
  Atom art = None;
  int format = 0;
  unsigned long anzahl = 0;
  unsigned long rest = 0;
  unsigned char* daten = nullptr;
  QList<long> liste;
  if (XGetWindowProperty(anzeige, fenster, eigenschaft, 0, 16, False, AnyPropertyType, &art, &format, &anzahl, &rest,
          &daten) != Success)
    return liste;
  if (format == 32)
    for (unsigned long i = 0; i < anzahl; ++i) liste.append(reinterpret_cast<long*>(daten)[i]);
  if (daten) XFree(daten);
  return liste;
}

/// A window may go between the program's word of it and a question to the server; the answer is then none, and the
/// library's own handler would end the process.
int uebergehe(Display* /*anzeige*/, XErrorEvent* /*fehler*/) {
  return 0;
}

}  // namespace

/// Where the keyboard has a letter: the key, and what is to be held down with it.
class Xsitzung::Tastatur {
 public:
  struct Griff {
    unsigned taste = 0;
    bool umschalt = false;
    bool dritte_Ebene = false;
  };

  explicit Tastatur(Display* anzeige) : anzeige_(anzeige) {
    int erste = 0;
    int letzte = 0;
    XDisplayKeycodes(anzeige, &erste, &letzte);
    for (unsigned ebene = 0; ebene < 4; ++ebene)
      for (int taste = erste; taste <= letzte; ++taste) {
        const KeySym wert = XkbKeycodeToKeysym(anzeige, static_cast<KeyCode>(taste), 0, static_cast<int>(ebene));
        if (wert != NoSymbol && !griffe_.contains(wert))
          griffe_.insert(wert, {static_cast<unsigned>(taste), (ebene & 1U) != 0, (ebene & 2U) != 0});
      }
  }

  bool hat(KeySym wert) const { return griffe_.contains(wert); }
  void halte(KeySym wert, bool unten) const {
    XTestFakeKeyEvent(anzeige_, griffe_.value(wert).taste, unten ? True : False, CurrentTime);
  }
  void druecke(KeySym wert) const {
    if (!hat(wert)) throw std::runtime_error("the keyboard has no key for " + std::to_string(wert));
    const Griff griff = griffe_.value(wert);
    if (griff.dritte_Ebene) halte(XK_ISO_Level3_Shift, true);
    if (griff.umschalt) halte(XK_Shift_L, true);
    halte(wert, true);
    halte(wert, false);
    if (griff.umschalt) halte(XK_Shift_L, false);
    if (griff.dritte_Ebene) halte(XK_ISO_Level3_Shift, false);
    XSync(anzeige_, False);
  }

 private:
  Display* anzeige_;
  QHash<KeySym, Griff> griffe_;
};

Xsitzung::Xsitzung() = default;

Xsitzung::~Xsitzung() {
  if (anzeige_) XCloseDisplay(als_Anzeige(anzeige_));
  for (QProcess* prozess : {&verwalter_, &server_}) {
    prozess->terminate();
    prozess->waitForFinished();
  }
}

QString Xsitzung::beginne() {
  for (const QString& programm : {u"Xvfb"_s, u"openbox"_s, u"setxkbmap"_s})
    if (QStandardPaths::findExecutable(programm).isEmpty())
      return programm + u" is missing; the packages are xvfb, openbox and x11-xkb-utils"_s;
  if (const QString grund = starte_Server(); !grund.isEmpty()) return grund;
  if (const QString grund = belege_Tastatur(); !grund.isEmpty()) return grund;
  XSetErrorHandler(&uebergehe);
  Display* const anzeige = XOpenDisplay(nummer_.toLatin1().constData());
  if (!anzeige) return u"the X server does not let anybody in"_s;
  anzeige_ = anzeige;
  int zahl = 0;
  if (!XTestQueryExtension(anzeige, &zahl, &zahl, &zahl, &zahl)) return u"the X server has no XTest"_s;
  tastatur_ = std::make_unique<Tastatur>(anzeige);
  if (!tastatur_->hat(XK_udiaeresis) || !tastatur_->hat(XK_ISO_Level3_Shift)) return u"no German keyboard"_s;
  return starte_Verwalter();
}

QString Xsitzung::starte_Server() {
  // It picks a free number itself and tells it when it is ready. It must outlive the short visit of setxkbmap.
  server_.start(u"Xvfb"_s,
      {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1600x1200x24"_s, u"-noreset"_s, u"-nolisten"_s, u"tcp"_s});
  if (!server_.waitForReadyRead(Start)) return u"Xvfb does not start"_s;
  nummer_ = u':' + QString::fromLatin1(server_.readLine()).trimmed();
  return nummer_.size() > 1 ? QString() : u"Xvfb tells no number"_s;
}

QString Xsitzung::belege_Tastatur() const {
  QProcess belegung;
  belegung.start(u"setxkbmap"_s, {u"-display"_s, nummer_, u"de"_s});
  const bool gut = belegung.waitForFinished(Start) && belegung.exitCode() == 0;
  return gut ? QString() : u"setxkbmap: "_s + QString::fromUtf8(belegung.readAllStandardError());
}

QString Xsitzung::starte_Verwalter() {
  QFile datei(ordner_.filePath(u"rc.xml"_s));
  if (!datei.open(QIODevice::WriteOnly) || datei.write(Verwaltung) < 0) return u"no place for openbox' settings"_s;
  datei.close();
  QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
  umgebung.insert(u"DISPLAY"_s, nummer_);
  umgebung.insert(u"HOME"_s, ordner_.path());
  verwalter_.setProcessEnvironment(umgebung);
  verwalter_.setStandardOutputFile(QProcess::nullDevice());
  verwalter_.setStandardErrorFile(QProcess::nullDevice());
  verwalter_.start(u"openbox"_s, {u"--config-file"_s, datei.fileName(), u"--sm-disable"_s});
  Display* const anzeige = als_Anzeige(anzeige_);
  for (const QDeadlineTimer frist(Start); !frist.hasExpired();) {
    if (!werte(anzeige, DefaultRootWindow(anzeige), "_NET_SUPPORTING_WM_CHECK").isEmpty()) return {};
    if (verwalter_.waitForFinished(20)) break;
  }
  return u"openbox does not start"_s;
}

QRect Xsitzung::ort(unsigned long fenster) const {
  Display* const anzeige = als_Anzeige(anzeige_);
  XWindowAttributes merkmale;
  if (!XGetWindowAttributes(anzeige, fenster, &merkmale)) return {};
  int x = 0;
  int y = 0;
  Window kind = None;
  if (!XTranslateCoordinates(anzeige, fenster, DefaultRootWindow(anzeige), 0, 0, &x, &y, &kind)) return {};
  return {x, y, merkmale.width, merkmale.height};
}

QMargins Xsitzung::rahmen(unsigned long fenster) const {
  const QList<long> breiten = werte(als_Anzeige(anzeige_), fenster, "_NET_FRAME_EXTENTS");
  if (breiten.size() != 4) return {};
  return {static_cast<int>(breiten[0]), static_cast<int>(breiten[2]), static_cast<int>(breiten[1]),
      static_cast<int>(breiten[3])};
}

bool Xsitzung::hat_Tasten(unsigned long fenster) const {
  Display* const anzeige = als_Anzeige(anzeige_);
  Window fokus = None;
  int rueckfall = 0;
  XGetInputFocus(anzeige, &fokus, &rueckfall);
  // Qt gives the keys to a small window of its own inside.
  while (fokus != None && fokus != PointerRoot && fokus != fenster) {
    Window wurzel = None;
    Window ueber = None;
    Window* kinder = nullptr;
    unsigned anzahl = 0;
    if (!XQueryTree(anzeige, fokus, &wurzel, &ueber, &kinder, &anzahl)) return false;
    if (kinder) XFree(kinder);
    fokus = ueber == wurzel ? None : ueber;
  }
  return fokus == fenster;
}

void Xsitzung::zeige_auf(QPoint stelle) {
  XTestFakeMotionEvent(als_Anzeige(anzeige_), -1, stelle.x(), stelle.y(), CurrentTime);
  XSync(als_Anzeige(anzeige_), False);
}

void Xsitzung::druecke() {
  XTestFakeButtonEvent(als_Anzeige(anzeige_), Button1, True, CurrentTime);
  XSync(als_Anzeige(anzeige_), False);
}

void Xsitzung::lasse_los() {
  XTestFakeButtonEvent(als_Anzeige(anzeige_), Button1, False, CurrentTime);
  XSync(als_Anzeige(anzeige_), False);
}

void Xsitzung::ziehe_nach(QPoint stelle) {
  constexpr int Schritte = 12;
  Window wurzel = None;
  Window kind = None;
  int x = 0;
  int y = 0;
  int innen = 0;
  unsigned knoepfe = 0;
  XQueryPointer(als_Anzeige(anzeige_), DefaultRootWindow(als_Anzeige(anzeige_)), &wurzel, &kind, &x, &y, &innen, &innen,
      &knoepfe);
  const QPointF anfang(x, y);
  for (int i = 1; i <= Schritte; ++i) zeige_auf((anfang + (QPointF(stelle) - anfang) * i / Schritte).toPoint());
}

void Xsitzung::klicke(QPoint stelle) {
  zeige_auf(stelle);
  druecke();
  lasse_los();
}

// All at once: on a busy machine a round trip for each could make it two single clicks.
void Xsitzung::doppelklicke(QPoint stelle) {
  zeige_auf(stelle);
  for (const int unten : {True, False, True, False})
    XTestFakeButtonEvent(als_Anzeige(anzeige_), Button1, unten, CurrentTime);
  XSync(als_Anzeige(anzeige_), False);
}

void Xsitzung::klicke_dazu(QPoint stelle) {
  tastatur_->halte(XK_Control_L, true);
  klicke(stelle);
  tastatur_->halte(XK_Control_L, false);
  XSync(als_Anzeige(anzeige_), False);
}

void Xsitzung::rolle(QPoint stelle) {
  zeige_auf(stelle);
  for (const int unten : {True, False}) XTestFakeButtonEvent(als_Anzeige(anzeige_), Button5, unten, CurrentTime);
  XSync(als_Anzeige(anzeige_), False);
}

void Xsitzung::schliesse_am_Rahmen(unsigned long fenster) {
  const QMargins dazu = rahmen(fenster);
  const QRect aussen = ort(fenster).marginsAdded(dazu);
  klicke({aussen.right() - dazu.right() - dazu.top() / 2, aussen.top() + dazu.top() / 2});
}

void Xsitzung::maximiere_am_Rahmen(unsigned long fenster) {
  const QMargins dazu = rahmen(fenster);
  const QRect aussen = ort(fenster).marginsAdded(dazu);
  doppelklicke({aussen.center().x(), aussen.top() + dazu.top() / 2});
}

void Xsitzung::tippe(const QString& text) {
  for (const QChar c : text) tastatur_->druecke(zeichen(c));
}

void Xsitzung::taste(const QString& name) {
  QStringList teile = name.split(u'+');
  const KeySym wert = XStringToKeysym(teile.takeLast().toLatin1().constData());
  QList<KeySym> dazu;
  for (const QString& teil : teile) dazu.append(teil == "Alt"_L1 ? XK_Alt_L : XK_Control_L);
  for (const KeySym gehalten : dazu) tastatur_->halte(gehalten, true);
  tastatur_->druecke(wert);
  for (const KeySym gehalten : dazu) tastatur_->halte(gehalten, false);
  XSync(als_Anzeige(anzeige_), False);
}

QImage Xsitzung::aufnahme() const {
  Display* const anzeige = als_Anzeige(anzeige_);
  const int breite = DisplayWidth(anzeige, DefaultScreen(anzeige));
  const int hoehe = DisplayHeight(anzeige, DefaultScreen(anzeige));
  XImage* const bild = XGetImage(anzeige, DefaultRootWindow(anzeige), 0, 0, static_cast<unsigned>(breite),
      static_cast<unsigned>(hoehe), AllPlanes, ZPixmap);
  if (!bild) return {};
  const QImage kopie =
      QImage(reinterpret_cast<const uchar*>(bild->data), breite, hoehe, bild->bytes_per_line, QImage::Format_RGB32)
          .copy();
  XDestroyImage(bild);
  return kopie;
}
