#include "platform/host/Oberflaeche.h"

#include <QByteArray>
#include <cstdio>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace oberflaeche {
namespace {

class KonsolenMeldung final : public Meldungsfenster {
 public:
  Antwort zeige(const Meldung& meldung) override {
    const QString titel = meldung.Titel.isEmpty() ? QString() : meldung.Titel + u": "_s;
    QString zeile = titel + meldung.Text;
    if (meldung.Auswahl != Knoepfe::OK) zeile += u" [Nein]"_s;
    const QByteArray bytes = (zeile + u'\n').toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    return meldung.Auswahl == Knoepfe::OK ? Antwort::OK : Antwort::Nein;
  }
};

class GemerkterZeiger final : public Mauszeiger {
 public:
  Zeigerform form() const override { return form_; }
  void form(Zeigerform form) override { form_ = form; }

 private:
  Zeigerform form_ = Zeigerform::Standard;
};

class OhneEreignisse final : public Ereignispumpe {
 public:
  void verarbeite_anstehende() override {}
};

template <class Dienst, class Vorgabe>
std::shared_ptr<Dienst>& instanz() {
  static std::shared_ptr<Dienst> dienst = std::make_shared<Vorgabe>();
  return dienst;
}

template <class Dienst, class Vorgabe>
std::shared_ptr<Dienst> tausche(std::shared_ptr<Dienst> dienst) {
  if (!dienst) dienst = std::make_shared<Vorgabe>();
  return std::exchange(instanz<Dienst, Vorgabe>(), std::move(dienst));
}

}  // namespace

Meldungsfenster::~Meldungsfenster() = default;
Mauszeiger::~Mauszeiger() = default;
Ereignispumpe::~Ereignispumpe() = default;

Meldungsfenster& meldungsfenster() {
  return *instanz<Meldungsfenster, KonsolenMeldung>();
}
Mauszeiger& mauszeiger() {
  return *instanz<Mauszeiger, GemerkterZeiger>();
}
Ereignispumpe& ereignispumpe() {
  return *instanz<Ereignispumpe, OhneEreignisse>();
}

std::shared_ptr<Meldungsfenster> setze(std::shared_ptr<Meldungsfenster> dienst) {
  return tausche<Meldungsfenster, KonsolenMeldung>(std::move(dienst));
}
std::shared_ptr<Mauszeiger> setze(std::shared_ptr<Mauszeiger> dienst) {
  return tausche<Mauszeiger, GemerkterZeiger>(std::move(dienst));
}
std::shared_ptr<Ereignispumpe> setze(std::shared_ptr<Ereignispumpe> dienst) {
  return tausche<Ereignispumpe, OhneEreignisse>(std::move(dienst));
}

Antwort MsgBox(const QString& text, Knoepfe knoepfe, Symbol symbol, const QString& titel) {
  return meldungsfenster().zeige({text, titel, symbol, knoepfe});
}

}  // namespace oberflaeche
