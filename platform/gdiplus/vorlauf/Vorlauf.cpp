#include "platform/gdiplus/vorlauf/Vorlauf.h"

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

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

/// Sizes of one file go together, in their order: the second may come out of the first.
std::vector<std::pair<bildlader::Herkunft, QList<Groesse>>> nach_Dateien(const QList<Vorlauf::Wunsch>& wuensche) {
  std::vector<std::pair<bildlader::Herkunft, QList<Groesse>>> dateien;
  for (const Vorlauf::Wunsch& w : wuensche) {
    auto herkunft = w.bild ? bildlader::herkunft(*w.bild) : std::nullopt;
    if (!herkunft || ist_da(*herkunft, w.ziel)) continue;
    const auto gleiche = std::ranges::find_if(
        dateien, [&](const auto& d) { return d.first.schluessel.pfad == herkunft->schluessel.pfad; });
    const Groesse groesse{w.ziel, herkunft->bytes.isNull()};
    if (gleiche != dateien.end())
      gleiche->second.append(groesse);
    else
      dateien.emplace_back(std::move(*herkunft), QList<Groesse>{groesse});
  }
  return dateien;
}

}  // namespace

void an(bool wert) noexcept {
  erlaubt = wert;
}

bool ist_an() noexcept {
  return erlaubt;
}

struct Vorlauf::Zustand {
  using Marke = std::shared_ptr<std::atomic<bool>>;
  struct Bestellt {
    QByteArray ort;
    QList<QSize> groessen;
    Marke aufgegeben;

    /// Somebody is still at work on it or will be: whoever is holds the mark too.
    bool laeuft() const noexcept { return aufgegeben.use_count() > 1; }
  };

  /// Of the files that were announced since the last giving up.
  Marke aufgegeben = std::make_shared<std::atomic<bool>>(false);
  /// The pictures that were announced last.
  std::vector<Bestellt> bilder;
};

Vorlauf::Vorlauf() : zustand_(std::make_unique<Zustand>()) {}

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
  std::vector<Zustand::Bestellt> neue;
  for (auto& [herkunft, groessen] : nach_Dateien(wuensche)) {
    const QByteArray& ort = herkunft.schluessel.pfad;
    QList<QSize> ziele;
    for (const Groesse& g : groessen) ziele.append(g.ziel);
    // What is being made already is not begun anew, and above all not given up on the way.
    const auto alt = std::ranges::find_if(zustand_->bilder, [&](const auto& b) {
      return b.ort == ort && b.laeuft() && std::ranges::all_of(ziele, [&](QSize z) { return b.groessen.contains(z); });
    });
    if (alt != zustand_->bilder.end()) {
      neue.push_back(*alt);
      continue;
    }
    neue.push_back({ort, ziele, std::make_shared<std::atomic<bool>>(false)});
    vorarbeit::beginne({ort, neue.back().aufgegeben, [g = groessen](QSize) { return g; }, herkunft.schluessel,
        herkunft.bytes, herkunft.kopf});
  }
  std::swap(zustand_->bilder, neue);
  for (const auto& b : neue)
    if (std::ranges::none_of(zustand_->bilder, [&](const auto& x) { return x.aufgegeben == b.aufgegeben; }))
      *b.aufgegeben = true;
  Rechenwerk::aktuell().gelesenes.wecke();
}

void Vorlauf::gib_auf() {
  *zustand_->aufgegeben = true;
  zustand_->aufgegeben = std::make_shared<std::atomic<bool>>(false);
  for (const auto& b : std::exchange(zustand_->bilder, {})) *b.aufgegeben = true;
  Rechenwerk::aktuell().gelesenes.wecke();
}

}  // namespace bildvorlauf
