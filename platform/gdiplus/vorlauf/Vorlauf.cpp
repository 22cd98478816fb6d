#include "platform/gdiplus/vorlauf/Vorlauf.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/Pfadkarte.h"
#include "platform/gdiplus/bild/Bildlader.h"
#include "platform/gdiplus/bild/Reduktion.h"
#include "platform/gdiplus/vorlauf/Rechenwerk.h"
#include "platform/gdiplus/vorlauf/Vorarbeit.h"

namespace bildvorlauf {
namespace {

std::atomic<bool> erlaubt = true;

using Groesse = vorarbeit::Auftrag::Groesse;

bool ist_da(const bildlader::Herkunft& herkunft, QSize ziel) {
  const auto eintrag = Bildspeicher::aktuell().suche(herkunft.schluessel);
  return eintrag && !reduktion::von_Groesse(eintrag->reduzierte, ziel).isNull();
}

}  // namespace

void an(bool wert) noexcept {
  erlaubt = wert;
}

bool ist_an() noexcept {
  return erlaubt;
}

struct Vorlauf::Zustand {
  /// Of what was announced since the last giving up.
  std::shared_ptr<std::atomic<bool>> aufgegeben = std::make_shared<std::atomic<bool>>(false);
};

Vorlauf::Vorlauf() : zustand_(std::make_shared<Zustand>()) {}

Vorlauf::~Vorlauf() {
  gib_auf();
}

void Vorlauf::datei(const QString& pfad, Mass mass) {
  if (!erlaubt) return;
  // A path that leads nowhere is met by whoever opens it.
  fehler::still_enden([&] {
    vorarbeit::Auftrag auftrag;
    auftrag.ort = Pfadkarte::aktuell().genauer_Pfad(pfad);
    auftrag.aufgegeben = zustand_->aufgegeben;
    if (mass) auftrag.masse = [mass = std::move(mass)](QSize groesse) { return QList<Groesse>{{mass(groesse), true}}; };
    vorarbeit::beginne(std::move(auftrag));
  });
}

void Vorlauf::bilder(const QList<Wunsch>& wuensche) {
  if (!erlaubt) return;
  // Sizes of one file go together, in their order: the second may come out of the first.
  std::vector<std::pair<bildlader::Herkunft, QList<Groesse>>> dateien;
  for (const Wunsch& w : wuensche) {
    auto herkunft = w.bild ? bildlader::herkunft(*w.bild) : std::nullopt;
    if (!herkunft || ist_da(*herkunft, w.ziel)) continue;
    const auto gleiche = std::find_if(dateien.begin(), dateien.end(),
        [&](const auto& d) { return d.first.schluessel.pfad == herkunft->schluessel.pfad; });
    const Groesse groesse{w.ziel, herkunft->bytes.isNull()};
    if (gleiche != dateien.end())
      gleiche->second.append(groesse);
    else
      dateien.emplace_back(std::move(*herkunft), QList<Groesse>{groesse});
  }
  for (auto& [herkunft, groessen] : dateien)
    vorarbeit::beginne({herkunft.schluessel.pfad, zustand_->aufgegeben, [groessen](QSize) { return groessen; },
        herkunft.schluessel, herkunft.bytes, herkunft.kopf});
}

void Vorlauf::gib_auf() {
  *zustand_->aufgegeben = true;
  zustand_->aufgegeben = std::make_shared<std::atomic<bool>>(false);
  Rechenwerk::aktuell().gelesenes.wecke();
}

}  // namespace bildvorlauf
