// What an X server and its window manager see of a dialog without a main window.
#include <QTest>
#include <functional>

#include "tests/ende/Xsitzung.h"
#include "tests/host/dialog/Dialogtest.h"

// The last, because their macros have names that others use.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Geduld = 60'000;

/// What a question to the server of a window that is gone gives is nothing.
int uebergehe(Display* /*anzeige*/, XErrorEvent* /*fehler*/) {
  return 0;
}

}  // namespace

class Dialogfenster : public Dialogtest {
 protected:
  void SetUp() override {
    if (const QString grund = x_.beginne(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
    Dialogtest::SetUp();
    anzeige_ = XOpenDisplay(x_.bildschirm().toLatin1().constData());
    ASSERT_TRUE(anzeige_);
    XSetErrorHandler(&uebergehe);
  }
  void TearDown() override {
    if (prozess_) {
      prozess_->kill();
      prozess_->waitForFinished();
    }
    if (anzeige_) XCloseDisplay(anzeige_);
  }

  /// Values of a window's property, which are 32-bit numbers.
  QList<unsigned long> werte(Window fenster, const char* name) const {
    Atom art = None;
    int format = 0;
    unsigned long anzahl = 0;
    unsigned long rest = 0;
    unsigned char* daten = nullptr;
    QList<unsigned long> liste;
    if (XGetWindowProperty(anzeige_, fenster, XInternAtom(anzeige_, name, False), 0, 64, False, AnyPropertyType, &art,
            &format, &anzahl, &rest, &daten) != Success)
      return liste;
    for (unsigned long i = 0; format == 32 && i < anzahl; ++i) liste.append(reinterpret_cast<unsigned long*>(daten)[i]);
    if (daten) XFree(daten);
    return liste;
  }
  QString titel(Window fenster) const {
    Atom art = None;
    int format = 0;
    unsigned long anzahl = 0;
    unsigned long rest = 0;
    unsigned char* daten = nullptr;
    if (XGetWindowProperty(anzeige_, fenster, XInternAtom(anzeige_, "_NET_WM_NAME", False), 0, 256, False,
            AnyPropertyType, &art, &format, &anzahl, &rest, &daten) != Success ||
        !daten)
      return {};
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(daten));
    XFree(daten);
    return text;
  }
  /// What the window manager manages, from the bottom to the top.
  QList<Window> stapel() const { return werte(DefaultRootWindow(anzeige_), "_NET_CLIENT_LIST_STACKING"); }
  Window mit_Titel(const QString& teil) const {
    for (const Window fenster : stapel())
      if (titel(fenster).contains(teil)) return fenster;
    return None;
  }
  bool ist_Dialog(Window fenster) const {
    return werte(fenster, "_NET_WM_WINDOW_TYPE").contains(XInternAtom(anzeige_, "_NET_WM_WINDOW_TYPE_DIALOG", False));
  }
  static bool warte(const std::function<bool()>& bedingung) { return QTest::qWaitFor(bedingung, Geduld); }

  /// The caller's window.
  Window mache_Fenster() {
    const Window neues = XCreateSimpleWindow(anzeige_, DefaultRootWindow(anzeige_), 100, 100, 700, 500, 0, 0, 0xffffff);
    XStoreName(anzeige_, neues, "Rufer");
    // A manager that has just begun passes over a window that shows before it looks.
    EXPECT_TRUE(warte([&] {
      XUnmapWindow(anzeige_, neues);
      XMapWindow(anzeige_, neues);
      XSync(anzeige_, False);
      return QTest::qWaitFor([&] { return stapel().contains(neues); }, 1000);
    }));
    return neues;
  }
  void starte(const QStringList& dazu, const QString& fuehrung) {
    prozess_ = std::make_unique<QProcess>();
    QProcessEnvironment umgebung = this->umgebung();
    umgebung.remove(u"QT_QPA_PLATFORM"_s);
    umgebung.insert(u"DISPLAY"_s, x_.bildschirm());
    umgebung.insert(u"KVO_FUEHRUNG"_s, fuehrung);
    prozess_->setProcessEnvironment(umgebung);
    prozess_->start(
        QStringLiteral(DIALOG_PROGRAMM), QStringList{u"dialog"_s, u"zuordnung"_s, u"--json"_s} + beleg() + dazu);
    prozess_->closeWriteChannel();
  }
  Dialogende schliesse_mit_Escape(Window fenster) {
    EXPECT_TRUE(warte([&] { return x_.hat_Tasten(fenster); }));
    x_.taste(u"Escape"_s);
    return beende(*prozess_);
  }

  Xsitzung x_;
  Display* anzeige_ = nullptr;
  std::unique_ptr<QProcess> prozess_;
};

TEST_F(Dialogfenster, AloneItIsAWindowOfTheTaskBarUnderItsTitle) {
  starte({u"--titel"_s, u"Beleg AB 24-1001"_s}, {});
  Window dialog = None;
  ASSERT_TRUE(warte([&] { return (dialog = mit_Titel(u"Beleg AB 24-1001"_s)) != None; }));
  EXPECT_EQ(titel(dialog), u"Beleg AB 24-1001 – Bildzuordnung"_s);
  EXPECT_TRUE(werte(dialog, "WM_TRANSIENT_FOR").isEmpty());
  EXPECT_FALSE(ist_Dialog(dialog));
  EXPECT_FALSE(werte(dialog, "_NET_WM_STATE").contains(XInternAtom(anzeige_, "_NET_WM_STATE_SKIP_TASKBAR", False)));
  EXPECT_EQ(stapel().size(), 1) << "no main window";
  const Dialogende ende = schliesse_mit_Escape(dialog);
  EXPECT_EQ(ende.code, 0);
  EXPECT_EQ(ende.fehlerausgabe, QString());
  EXPECT_FALSE(ende.json()[u"gespeichert"_s].toBool(true));
}

TEST_F(Dialogfenster, AboveTheCallersWindowItStaysAbove) {
  const Window rufer = mache_Fenster();
  starte({u"--ueber"_s, QString::number(rufer), u"--titel"_s, u"Beleg AB 24-1001"_s}, {});
  Window dialog = None;
  ASSERT_TRUE(warte([&] { return (dialog = mit_Titel(u"Beleg AB 24-1001"_s)) != None; }));
  EXPECT_EQ(werte(dialog, "WM_TRANSIENT_FOR"), QList<unsigned long>{rufer});
  EXPECT_TRUE(ist_Dialog(dialog));
  XRaiseWindow(anzeige_, rufer);
  XSync(anzeige_, False);
  EXPECT_TRUE(warte([&] { return stapel().size() == 2 && stapel().last() == dialog; }));
  // The caller may end first.
  XDestroyWindow(anzeige_, rufer);
  XSync(anzeige_, False);
  EXPECT_TRUE(warte([&] { return stapel() == QList<Window>{dialog}; }));
  const Dialogende ende = schliesse_mit_Escape(dialog);
  EXPECT_EQ(ende.code, 0);
  EXPECT_EQ(ende.fehlerausgabe, QString());
}

TEST_F(Dialogfenster, TheNumberOfAControlMeansTheWindowAroundIt) {
  const Window rufer = mache_Fenster();
  const Window feld = XCreateSimpleWindow(anzeige_, rufer, 10, 10, 100, 50, 0, 0, 0);
  const Window knopf = XCreateSimpleWindow(anzeige_, feld, 5, 5, 20, 20, 0, 0, 0);
  XMapSubwindows(anzeige_, rufer);
  XSync(anzeige_, False);
  starte({u"--ueber"_s, QString::number(knopf), u"--titel"_s, u"Beleg AB 24-1001"_s}, {});
  Window dialog = None;
  ASSERT_TRUE(warte([&] { return (dialog = mit_Titel(u"Beleg AB 24-1001"_s)) != None; }));
  EXPECT_EQ(werte(dialog, "WM_TRANSIENT_FOR"), QList<unsigned long>{rufer});
}

TEST_F(Dialogfenster, AWindowThatIsGoneIsToldAndTheDialogOpensAllTheSame) {
  const Window rufer = mache_Fenster();
  XDestroyWindow(anzeige_, rufer);
  XSync(anzeige_, False);
  starte({u"--ueber"_s, u"0x"_s + QString::number(rufer, 16), u"--titel"_s, u"Beleg AB 24-1001"_s}, {});
  Window dialog = None;
  ASSERT_TRUE(warte([&] { return (dialog = mit_Titel(u"Beleg AB 24-1001"_s)) != None; }));
  EXPECT_TRUE(werte(dialog, "WM_TRANSIENT_FOR").isEmpty());
  const Dialogende ende = schliesse_mit_Escape(dialog);
  EXPECT_EQ(ende.code, 0);
  EXPECT_EQ(ende.fehlerausgabe,
      u"bildzuordnung: Das Fenster 0x%1 gibt es nicht; der Dialog öffnet sich für sich.\n"_s.arg(rufer, 0, 16));
}

TEST_F(Dialogfenster, ABoxBeforeTheDialogStandsAboveTheCallerAndOneInItAboveTheDialog) {
  const Window rufer = mache_Fenster();
  starte({u"--ueber"_s, QString::number(rufer), u"--bilder=/gibt/es/nicht"_s}, {});
  Window meldung = None;
  ASSERT_TRUE(warte([&] { return stapel().size() == 2 && (meldung = mit_Titel(u"Bildzuordnung"_s)) != None; }));
  EXPECT_EQ(werte(meldung, "WM_TRANSIENT_FOR"), QList<unsigned long>{rufer});
  const Dialogende ohne = schliesse_mit_Escape(meldung);
  EXPECT_EQ(ohne.code, 4);
  EXPECT_TRUE(ohne.json()[u"text"_s].toString().contains(u"/gibt/es/nicht"_s));
  starte({u"--ueber"_s, QString::number(rufer), u"--titel"_s, u"Beleg AB 24-1001"_s},
      u"fenster frm_BildZuordnung|klicke SSC_BilderLaden"_s);
  ASSERT_TRUE(warte([&] { return stapel().size() == 3; }));
  const Window dialog = mit_Titel(u"Beleg AB 24-1001"_s);
  const Window suche = stapel().last();
  EXPECT_NE(suche, dialog);
  EXPECT_EQ(werte(suche, "WM_TRANSIENT_FOR"), QList<unsigned long>{dialog});
}
