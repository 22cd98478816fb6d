#include "platform/host/Oberflaeche.h"

#include <QByteArray>
#include <cstdio>
#include <utility>

#include "platform/basic/Dienstplatz.h"

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

using Meldungsplatz = Dienstplatz<Meldungsfenster, KonsolenMeldung>;
using Zeigerplatz = Dienstplatz<Mauszeiger, GemerkterZeiger>;
using Pumpenplatz = Dienstplatz<Ereignispumpe, OhneEreignisse>;

}  // namespace

Meldungsfenster::~Meldungsfenster() = default;
Mauszeiger::~Mauszeiger() = default;
Ereignispumpe::~Ereignispumpe() = default;

Meldungsfenster& meldungsfenster() {
  return *Meldungsplatz::in_Kraft();
}
Mauszeiger& mauszeiger() {
  return *Zeigerplatz::in_Kraft();
}
Ereignispumpe& ereignispumpe() {
  return *Pumpenplatz::in_Kraft();
}

std::shared_ptr<Meldungsfenster> setze(std::shared_ptr<Meldungsfenster> dienst) {
  return Meldungsplatz::setze(std::move(dienst));
}
std::shared_ptr<Mauszeiger> setze(std::shared_ptr<Mauszeiger> dienst) {
  return Zeigerplatz::setze(std::move(dienst));
}
std::shared_ptr<Ereignispumpe> setze(std::shared_ptr<Ereignispumpe> dienst) {
  return Pumpenplatz::setze(std::move(dienst));
}

Antwort MsgBox(const QString& text, Knoepfe knoepfe, Symbol symbol, const QString& titel) {
  return meldungsfenster().zeige({text, titel, symbol, knoepfe});
}

}  // namespace oberflaeche
