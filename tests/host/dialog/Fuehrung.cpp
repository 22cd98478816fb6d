// Linked beside the program's own main: does with mouse and keys what a user would, as the environment variable
// KVO_FUEHRUNG says, and ends the process with 99 where something is not to be seen. Its steps are parted by "|":
//   fenster NAME        the window in front has that name
//   klicke NAME         clicks a control of the window in front
//   knopf TEXT          clicks a button by its text
//   zelle LISTE Z S     clicks a cell
//   zeilen LISTE N      the list has so many rows
//   tippe TEXT          types into what has the keys
//   taste NAME          presses a key, as "Escape"
//   text NAME=ANFANG    a field's text begins so
//   sage                tells standard error the window in front: its name, title and texts
#include <unistd.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>
#include <cstdio>
#include <functional>
#include <stdexcept>

#include "host/rundgang/Hand.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Geduld = 60'000;
constexpr int Takt = 20;

void melde(const QString& text) {
  static_cast<void>(std::fputs((text + u'\n').toUtf8().constData(), stderr));
}

QWidget& vorn() {
  QWidget* fenster = QApplication::activeModalWidget();
  if (!fenster || !fenster->isVisible()) throw std::runtime_error("no window");
  return *fenster;
}

template <class T = QWidget>
T& element(const QString& name) {
  T* gefunden = vorn().findChild<T*>(name);
  if (!gefunden || !gefunden->isVisible() || !gefunden->isEnabled()) throw std::runtime_error("not to be seen");
  return *gefunden;
}

QString text_von(const QWidget& widget) {
  if (const auto* feld = qobject_cast<const QLineEdit*>(&widget)) return feld->text();
  if (const auto* feld = qobject_cast<const QPlainTextEdit*>(&widget)) return feld->toPlainText();
  if (const auto* feld = qobject_cast<const QLabel*>(&widget)) return feld->text();
  return {};
}

void verlange(bool stimmt) {
  if (!stimmt) throw std::runtime_error("not yet");
}

class Fuehrung {
 public:
  explicit Fuehrung(const QString& plan) : schritte_(plan.split(u'|', Qt::SkipEmptyParts)) {}

  void weiter() {
    if (schritte_.isEmpty()) return;
    QTimer::singleShot(Takt, [this] { versuche(); });
  }

 private:
  /// A control can be used once it is there, at rest, in two looks in a row.
  void versuche() {
    if (!uhr_.isValid()) uhr_.start();
    std::function<void()> tat;
    try {
      verlange(QGuiApplication::overrideCursor() == nullptr);
      tat = bereit(schritte_.first());
    } catch (const std::runtime_error&) {
      schon_ = false;
      if (uhr_.elapsed() > Geduld) {
        melde(u"nicht zu sehen: "_s + schritte_.first());
        ::_exit(99);
      }
      return weiter();
    }
    if (!std::exchange(schon_, true)) return weiter();
    schon_ = false;
    uhr_.invalidate();
    schritte_.removeFirst();
    // What is done may open a window, inside of which the walk goes on.
    weiter();
    tat();
  }

  std::function<void()> bereit(const QString& schritt) {
    const QString wort = schritt.section(u' ', 0, 0);
    const QString rest = schritt.section(u' ', 1);
    if (wort == "fenster"_L1) {
      verlange(vorn().objectName() == rest);
      return [] {};
    }
    if (wort == "klicke"_L1) {
      QWidget* ziel = &element(rest);
      return [this, ziel] { hand_.klicke(*ziel); };
    }
    if (wort == "knopf"_L1) return knopf(rest);
    if (wort == "zeilen"_L1) {
      const auto* modell = element<QAbstractItemView>(rest.section(u' ', 0, 0)).model();
      verlange(modell && modell->rowCount() == rest.section(u' ', 1).toInt());
      return [] {};
    }
    if (wort == "zelle"_L1) return zelle(rest.split(u' '));
    if (wort == "text"_L1) {
      verlange(text_von(element(rest.section(u'=', 0, 0))).startsWith(rest.section(u'=', 1)));
      return [] {};
    }
    if (wort == "tippe"_L1) return [this, rest] { hand_.tippe(rest); };
    if (wort == "taste"_L1) {
      const QKeyCombination taste = QKeySequence(rest)[0];
      return [this, taste] { hand_.taste(taste.key(), taste.keyboardModifiers()); };
    }
    static_cast<void>(vorn());
    return [] { sage(); };
  }

  std::function<void()> knopf(const QString& text) {
    for (QAbstractButton* einer : vorn().findChildren<QAbstractButton*>())
      if (einer->isVisible() && einer->isEnabled() && QString(einer->text()).remove(u'&') == text)
        return [this, einer] { hand_.klicke(*einer); };
    throw std::runtime_error("no such button");
  }

  std::function<void()> zelle(const QStringList& worte) {
    auto& liste = element<QAbstractItemView>(worte.value(0));
    const QModelIndex stelle = liste.model()->index(worte.value(1).toInt(), worte.value(2).toInt());
    verlange(stelle.isValid());
    return [this, &liste, stelle] {
      liste.scrollTo(stelle);
      hand_.klicke(*liste.viewport(), liste.visualRect(stelle).center());
    };
  }

  static void sage() {
    QStringList teile{vorn().objectName(), vorn().windowTitle()};
    for (const QWidget* kind : vorn().findChildren<QWidget*>())
      if (kind->isVisible() && !text_von(*kind).isEmpty()) teile.append(text_von(*kind).simplified());
    melde(u"Fenster: "_s + teile.join(u" · "_s));
  }

  QStringList schritte_;
  Hand hand_;
  QElapsedTimer uhr_;
  bool schon_ = false;
};

void fuehre() {
  static Fuehrung fuehrung(qEnvironmentVariable("KVO_FUEHRUNG"));
  QTimer::singleShot(0, [] { fuehrung.weiter(); });
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(fuehre)
