#include "host/fenster/dialog/Dialograhmen.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>
#include <algorithm>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/fenster/dialog/Bildschirm.h"

using namespace Qt::Literals::StringLiterals;

Dialograhmen::Dialograhmen(QString titel, std::optional<std::uint32_t> ueber) : titel_(std::move(titel)) {
  qApp->installEventFilter(this);
  if (!ueber) return;
  if (const auto ganzes = bildschirm::ganzes_Fenster(*ueber))
    fremdes_.reset(QWindow::fromWinId(*ganzes));
  else if (QGuiApplication::platformName() == "xcb"_L1)
    ausgabe::meldung(u"Das Fenster 0x%1 gibt es nicht; der Dialog öffnet sich für sich."_s.arg(*ueber, 0, 16));
  else
    ausgabe::meldung(u"Über einem fremden Fenster steht ein Dialog nur unter X11; er öffnet sich für sich."_s);
}

Dialograhmen::~Dialograhmen() = default;

/// The window is made by then, and the platform has not shown it yet.
bool Dialograhmen::eventFilter(QObject* empfaenger, QEvent* ereignis) {
  if (ereignis->type() != QEvent::Show || ereignis->spontaneous()) return false;
  auto* fenster = qobject_cast<QWidget*>(empfaenger);
  if (!fenster || !fenster->isWindow() || !fenster->windowHandle()) return false;
  if (fenster->windowType() == Qt::Dialog || fenster->windowType() == Qt::Window) rahme(*fenster);
  return false;
}

QWidget* Dialograhmen::darunter(const QWidget& fenster) const {
  const auto vorheriges = std::find_if(gezeigte_.rbegin(), gezeigte_.rend(),
      [&](const QPointer<QWidget>& eines) { return eines && eines != &fenster && eines->isVisible(); });
  return vorheriges == gezeigte_.rend() ? nullptr : vorheriges->data();
}

void Dialograhmen::rahme(QWidget& fenster) {
  gezeigte_.append(&fenster);
  QWindow& eigenes = *fenster.windowHandle();
  if (eigenes.transientParent()) return;
  if (const QWidget* unteres = darunter(fenster)) return eigenes.setTransientParent(unteres->windowHandle());
  if (!titel_.isEmpty() && fenster.objectName().startsWith("frm_"_L1))
    fenster.setWindowTitle(titel_ + u" – "_s + fenster.windowTitle());
  if (fremdes_) return eigenes.setTransientParent(fremdes_.get());
  // A dialog of nobody's is left out of the task bar by many window managers.
  eigenes.setFlags((eigenes.flags() & ~Qt::WindowType_Mask) | Qt::Window);
}
