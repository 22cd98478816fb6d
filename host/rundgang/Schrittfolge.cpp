#include "host/rundgang/Schrittfolge.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <exception>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// How often an effect is looked for and how long it must last, in milliseconds.
constexpr int Blick = 10;
constexpr int Ruhe = 40;

}  // namespace

/// The pump in force, and whether it is at work: a window that lets events run in the middle of its work is not ready
/// to be looked at.
class Schrittfolge::Pumpenwache final : public oberflaeche::Ereignispumpe {
 public:
  void verarbeite_anstehende() override {
    ++tiefe_;
    if (vorige)
      vorige->verarbeite_anstehende();
    else
      QCoreApplication::processEvents();
    --tiefe_;
  }
  bool pumpt() const noexcept { return tiefe_ > 0; }
  std::shared_ptr<oberflaeche::Ereignispumpe> vorige;

 private:
  int tiefe_ = 0;
};

Schrittfolge::Schrittfolge(int geduld) : geduld_(geduld), wache_(std::make_shared<Pumpenwache>()) {
  wache_->vorige = oberflaeche::setze(std::shared_ptr<oberflaeche::Ereignispumpe>(wache_));
}

Schrittfolge::~Schrittfolge() {
  oberflaeche::setze(std::exchange(wache_->vorige, nullptr));
}

void Schrittfolge::beginne(std::function<void()> am_Ende) {
  am_Ende_ = std::move(am_Ende);
  QTimer::singleShot(0, [this] { tue_naechsten(); });
}

/// What ends a statement here is one more thing that went wrong: nothing may fly through the event loop.
template <class Anweisung>
bool Schrittfolge::geschuetzt(Anweisung&& anweisung) {
  try {
    anweisung();
    return true;
  } catch (const Laufzeitfehler& f) {
    fehler(f.Beschreibung());
  } catch (const std::exception& f) {
    fehler(QString::fromUtf8(f.what()));
  }
  return false;
}

void Schrittfolge::tue_naechsten() {
  if (stelle_ == schritte_.size()) {
    durchlaufen_ = true;
    return am_Ende_();
  }
  const Schritt schritt = schritte_[stelle_];
  sage(u"%1. %2"_s.arg(stelle_ + 1, 2).arg(schritt.text));
  uhr_.start();
  schon_gesehen_ = false;
  // First, because what is done may open a window whose event loop ends only with a later step.
  QTimer::singleShot(0, [this] { sieh_nach(); });
  if (schritt.tun && !geschuetzt(schritt.tun)) stelle_ = schritte_.size();
}

bool Schrittfolge::ist_soweit() const {
  try {
    const auto& bis = schritte_[stelle_].bis;
    return !bis || bis();
  } catch (const std::exception&) {
    return false;
  }
}

void Schrittfolge::sieh_nach() {
  if (stelle_ == schritte_.size()) return am_Ende_();
  // Seen twice: by then the window has laid itself out and painted what it shows.
  const bool zu_sehen = !wache_->pumpt() && ist_soweit();
  if (!std::exchange(schon_gesehen_, zu_sehen) || !zu_sehen) {
    if (uhr_.elapsed() < geduld_) {
      QTimer::singleShot(zu_sehen ? Ruhe : Blick, [this] { sieh_nach(); });
      return;
    }
    fehler(u"Das ist in %1 Sekunden nicht zu sehen gewesen; der Rundgang endet hier."_s.arg(geduld_ / 1000.0));
    return am_Ende_();
  }
  if (const auto danach = schritte_[stelle_].danach) geschuetzt(danach);
  ++stelle_;
  QTimer::singleShot(0, [this] { tue_naechsten(); });
}

void Schrittfolge::erwarte(const QString& was, const QString& ist, const QString& soll) {
  ++pruefungen_;
  if (ist != soll) fehler(u"%1: erwartet „%2“, zu sehen „%3“"_s.arg(was, soll, ist));
}

void Schrittfolge::erwarte(const QString& was, bool stimmt) {
  ++pruefungen_;
  if (!stimmt) fehler(u"erwartet, aber nicht so: "_s + was);
}

void Schrittfolge::fehler(const QString& text) {
  ++fehler_;
  sage(u"    FEHLER: "_s + text);
}

void Schrittfolge::sage(const QString& zeile) {
  static_cast<void>(std::fputs((zeile + u'\n').toUtf8().constData(), stdout));
  static_cast<void>(std::fflush(stdout));
}
