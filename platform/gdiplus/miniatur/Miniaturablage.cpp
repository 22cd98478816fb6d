#include "platform/gdiplus/miniatur/Miniaturablage.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/gdiplus/Status.h"
#include "platform/gdiplus/bild/Bilddekoder.h"
#include "platform/gdiplus/jpeg/Jpegdekoder.h"
#include "platform/gdiplus/miniatur/Eintragsdatei.h"
#include "platform/gdiplus/miniatur/Klassen.h"
#include "platform/gdiplus/miniatur/Pngeintrag.h"

namespace {

using namespace miniatur;

/// Writes that fail one after the other: the disk is full or was taken away.
constexpr int Fehlschlaege_bis_aus = 3;
/// So many entries of our own later their folder is measured again.
constexpr int Kuerzen_alle = 256;
/// So many files that were turned or exchanged are told apart.
constexpr qsizetype Meiste_Vergessene = 4096;
/// Enough for header and texts of most entries.
constexpr qsizetype Erstes_Stueck = 4096;

template <class Zeitgeber>
std::int64_t nanosekunden() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(Zeitgeber::now().time_since_epoch()).count();
}

std::int64_t systemuhr() {
  return nanosekunden<std::chrono::system_clock>();
}

std::int64_t systemstoppuhr() {
  return nanosekunden<std::chrono::steady_clock>();
}

bool ist_Ort(const QByteArray& ort) {
  return ort.startsWith('/') && ort.size() < PATH_MAX && !ort.contains('\0');
}

bool passt(const Angaben& a, const QByteArray& adresse, const Miniaturablage::Datei& datei) {
  return a.adresse == adresse && a.laenge == datei.laenge && a.geaendert_ns == datei.geaendert_ns &&
      a.geaendert_ns <= a.gesehen_ns - Ruhezeit_ns;
}

/// The picture is the whole original with its proportions; each side may be rounded by less than a pixel.
bool ist_ganzes_Bild(QSize pixel, QSize original) {
  const std::int64_t links = std::int64_t{pixel.width()} * original.height();
  const std::int64_t rechts = std::int64_t{pixel.height()} * original.width();
  return std::abs(links - rechts) <= std::int64_t{original.width()} + original.height();
}

// The other formats may have transparency. Ours are opaque; file managers show the background of their window.
bool gehoert_allen(const Bildkopf& kopf, bool gedreht) {
  return !gedreht && kopf.format == Bildformat::Jpeg;
}

// A JPEG is decoded at a scale of eighths, and only then scaled to what is shown; at some sizes that is much softer
// than scaling a much larger entry alone. Going through the same size keeps both alike.
QImage wie_entpackt(const QImage& eintrag, const Bildkopf& kopf, QSize ziel) {
  if (eintrag.isNull() || kopf.format != Bildformat::Jpeg) return eintrag;
  const std::int64_t achtel = jpegdekoder::massstab(kopf.groesse, ziel);
  const auto seite = [&](int s) { return static_cast<int>((s * achtel + 7) / 8); };
  const QSize entpackt(seite(kopf.groesse.width()), seite(kopf.groesse.height()));
  const bool viel_kleiner =
      5 * entpackt.width() <= 4 * eintrag.width() && 5 * entpackt.height() <= 4 * eintrag.height();
  return viel_kleiner ? bilddekoder::auf_Groesse(eintrag, entpackt) : eintrag;
}

void entferne_unseren(const QByteArray& pfad) {
  Pngkopf kopf;
  const Eintragsdatei datei(pfad);
  if (!datei.ist_offen() || lies_Pngkopf(datei.lies(Laengster_Pngkopf), kopf) != Lesestand::Ok) return;
  if (ist_unserer(kopf.texte)) ::unlink(pfad.constData());
}

void entferne_unsere(const Ordner& ordner, const QByteArray& name) {
  for (const Klasse& k : Klassen)
    for (const QByteArray* const wurzel : {&ordner.gemeinsam, &ordner.eigen})
      entferne_unseren(*wurzel + '/' + k.ordner + name);
  entferne_unseren(ordner.fehlschlaege + name);
}

}  // namespace

/// One asking: entries are opened until one fits, and the time that their disk took is added up.
class Miniaturablage::Anfrage {
 public:
  Anfrage(const Lage& lage, const Datei& datei)
      : stoppuhr_(lage.stoppuhr), datei_(datei), adresse_(adresse(datei.ort)), name_('/' + eintragsname(adresse_)) {}

  /// Opens an entry; true when it is of this state. A `kante` of 0 means a failure entry, whose pixels say nothing.
  bool oeffne(const QByteArray& ordner, int kante) {
    const std::int64_t anfang = stoppuhr_();
    offen_.emplace(ordner + name_);
    const bool gelesen = offen_->ist_offen() && lies_Kopf();
    dauer_ns_ += stoppuhr_() - anfang;
    const auto angaben = gelesen ? aus_Texten(kopf_.texte) : std::nullopt;
    if (!angaben || !passt(*angaben, adresse_, datei_)) return false;
    angaben_ = *angaben;
    if (kante == 0) return true;
    const QSize original = angaben_.kopf.groesse;
    return angaben_.status == gdiplus::Ok && angaben_.kopf.befund == Kopfbefund::Ok &&
        std::max(original.width(), original.height()) > kante && kopf_.groesse == eintragsgroesse(original, kante);
  }

  const Angaben& angaben() const noexcept { return angaben_; }
  QSize groesse() const noexcept { return kopf_.groesse; }
  std::int64_t dauer_ns() const noexcept { return dauer_ns_; }

  QImage pixel() {
    const std::int64_t anfang = stoppuhr_();
    const QByteArray alle = offen_->lies(offen_->laenge());
    dauer_ns_ += stoppuhr_() - anfang;
    // Read a second time, so that header and pixels are of one file.
    return alle.startsWith(anfang_) ? lies_Pixel(alle, kopf_) : QImage();
  }

 private:
  bool lies_Kopf() {
    for (const qsizetype anzahl : {Erstes_Stueck, Laengster_Pngkopf}) {
      anfang_ = offen_->lies(anzahl);
      const Lesestand stand = lies_Pngkopf(anfang_, kopf_);
      if (stand != Lesestand::ZuKurz) return stand == Lesestand::Ok;
    }
    return false;
  }

  const Uhr stoppuhr_;
  const Datei& datei_;
  const QByteArray adresse_;
  const QByteArray name_;
  std::optional<Eintragsdatei> offen_;
  QByteArray anfang_;
  Pngkopf kopf_;
  Angaben angaben_;
  std::int64_t dauer_ns_ = 0;
};

Miniaturablage& Miniaturablage::aktuell() {
  // Never destroyed: a pool's threads may still write when the process ends.
  static Miniaturablage& ablage = *new Miniaturablage(cacheheim_der_Umgebung());
  return ablage;
}

Miniaturablage::Miniaturablage(QByteArray cacheheim)
    : cacheheim_(std::move(cacheheim)), uhr_(systemuhr), stoppuhr_(systemstoppuhr) {}

void Miniaturablage::an(bool wert) {
  const std::scoped_lock halten(sperre_);
  an_ = wert;
}

// With the lock held.
bool Miniaturablage::ist_nutzbar() {
  if (!an_ || cacheheim_.isEmpty() || kosten_.ist_zu_teuer() || fehlschlaege_ >= Fehlschlaege_bis_aus) return false;
  if (!brauchbar_) brauchbar_ = ist_brauchbar(ordner_in(cacheheim_).gemeinsam);
  return *brauchbar_;
}

bool Miniaturablage::ist_an() {
  const std::scoped_lock halten(sperre_);
  return ist_nutzbar();
}

std::optional<Miniaturablage::Lage> Miniaturablage::lage() {
  const std::scoped_lock halten(sperre_);
  if (!ist_nutzbar()) return std::nullopt;
  return Lage{ordner_in(cacheheim_), stoppuhr_};
}

void Miniaturablage::zaehle_Anfrage(std::int64_t dauer_ns) {
  const std::scoped_lock halten(sperre_);
  kosten_.zaehle(dauer_ns);
}

void Miniaturablage::zaehle_Schreiben(bool gut) {
  const std::scoped_lock halten(sperre_);
  fehlschlaege_ = gut ? 0 : fehlschlaege_ + 1;
}

// At the first entry to our own folder, and again after many.
bool Miniaturablage::ist_zu_kuerzen() {
  const std::scoped_lock halten(sperre_);
  return eigene_++ % Kuerzen_alle == 0;
}

std::optional<Miniaturablage::Auskunft> Miniaturablage::kopf(const Datei& datei) {
  return fehler::still_enden([&]() -> std::optional<Auskunft> {
    const auto hier = lage();
    if (!hier || !ist_Ort(datei.ort)) return std::nullopt;
    Anfrage anfrage(*hier, datei);
    std::optional<Auskunft> ergebnis;
    const auto sieh_nach = [&](const QByteArray& ordner, int kante) {
      if (!ergebnis && anfrage.oeffne(ordner, kante))
        ergebnis = Auskunft{anfrage.angaben().kopf, anfrage.angaben().status, kante == 0};
    };
    for (const Klasse& k : Klassen)
      for (const QByteArray* const ordner : {&hier->ordner.gemeinsam, &hier->ordner.eigen})
        sieh_nach(*ordner + '/' + k.ordner, k.kante);
    sieh_nach(hier->ordner.fehlschlaege, 0);
    zaehle_Anfrage(anfrage.dauer_ns());
    return ergebnis;
  });
}

QImage Miniaturablage::suche(const Datei& datei, QSize ziel) {
  return fehler::still_enden([&] {
    QImage ergebnis;
    const auto hier = lage();
    if (!hier || !ist_Ort(datei.ort) || ziel.isEmpty()) return ergebnis;
    Anfrage anfrage(*hier, datei);
    for (const Klasse& k : Klassen)
      for (const QByteArray* const ordner : {&hier->ordner.gemeinsam, &hier->ordner.eigen}) {
        // What can't reach in any proportions need not be opened.
        if (!ergebnis.isNull() || !reicht(k, {k.kante, k.kante}, ziel)) continue;
        if (anfrage.oeffne(*ordner + '/' + k.ordner, k.kante) && reicht(k, anfrage.groesse(), ziel))
          ergebnis = wie_entpackt(anfrage.pixel(), anfrage.angaben().kopf, ziel);
      }
    zaehle_Anfrage(anfrage.dauer_ns());
    return ergebnis;
  });
}

int Miniaturablage::kante_fuer(QSize ziel, QSize groesse) {
  if (ziel.isEmpty() || groesse.isEmpty()) return 0;
  for (const Klasse& k : Klassen)
    if (reicht(k, eintragsgroesse(groesse, k.kante), ziel)) return lohnt(groesse, k.kante) ? k.kante : 0;
  return 0;
}

QSize Miniaturablage::groesse_des_Eintrags(QSize groesse, int kante) {
  return eintragsgroesse(groesse, kante);
}

Angaben Miniaturablage::angaben(const Datei& datei, const Bildkopf& kopf, std::int32_t status) const {
  return {adresse(datei.ort), datei.laenge, datei.geaendert_ns, datei.gesehen_ns != 0 ? datei.gesehen_ns : jetzt(),
      kopf, status};
}

bool Miniaturablage::ist_anzunehmen(const Lage& lage, const Datei& datei, const Angaben& a) const {
  return passt(a, a.adresse, datei) && ist_vom_Inhalt(a.kopf, a.status) && !liegt_darin(lage.ordner, datei.ort);
}

bool Miniaturablage::merke(const Datei& datei, const Bildkopf& kopf, const QImage& pixel, int kante, bool gedreht) {
  return fehler::still_enden([&] {
    const auto hier = lage();
    const auto klasse = std::ranges::find(Klassen, kante, &Klasse::kante);
    if (!hier || klasse == Klassen.end() || !ist_Ort(datei.ort) || kopf.befund != Kopfbefund::Ok) return false;
    const QSize groesse = eintragsgroesse(kopf.groesse, kante);
    if (std::max(kopf.groesse.width(), kopf.groesse.height()) <= kante || pixel.width() < groesse.width() ||
        pixel.height() < groesse.height() || !ist_ganzes_Bild(pixel.size(), kopf.groesse))
      return false;
    const Angaben a = angaben(datei, kopf, gdiplus::Ok);
    if (!ist_anzunehmen(*hier, datei, a)) return false;
    const bool fuer_alle = gehoert_allen(kopf, gedreht);
    const QByteArray& wurzel = fuer_alle ? hier->ordner.gemeinsam : hier->ordner.eigen;
    const QImage klein = bilddekoder::auf_Groesse(bilddekoder::undurchsichtig(pixel, qRgb(0, 0, 0)), groesse);
    if (!schreibe(wurzel + '/' + klasse->ordner, a, klein)) return false;
    if (!fuer_alle && ist_zu_kuerzen()) kuerze(wurzel, Eigene_Grenze);
    return true;
  });
}

bool Miniaturablage::merke_Fehlschlag(const Datei& datei, std::int32_t status, const Bildkopf& kopf) {
  return fehler::still_enden([&] {
    const auto hier = lage();
    if (!hier || !ist_Ort(datei.ort)) return false;
    const Angaben a = angaben(datei, kopf, status);
    return ist_anzunehmen(*hier, datei, a) && schreibe(hier->ordner.fehlschlaege, a, bilddekoder::schwarz({1, 1}));
  });
}

// With the names' lock held.
bool Miniaturablage::wurde_vergessen(const Angaben& a) const {
  return std::max(vergessen_.value(a.adresse), alles_vergessen_) >= a.gesehen_ns;
}

bool Miniaturablage::schreibe(const QByteArray& ordner, const Angaben& a, const QImage& pixel) {
  const QByteArray datei = als_Png(pixel, als_Texte(a));
  if (datei.isEmpty()) return false;
  Neuer_Eintrag eintrag(ordner, eintragsname(a.adresse), datei);
  const std::scoped_lock halten(namenssperre_);
  if (wurde_vergessen(a)) return false;
  const bool gut = eintrag.benenne();
  zaehle_Schreiben(gut);
  return gut;
}

void Miniaturablage::vergiss(const QByteArray& ort) {
  fehler::still_enden([&] {
    if (!ist_Ort(ort)) return;
    const QByteArray gemeint = adresse(ort);
    const std::int64_t wann = jetzt();
    // Also while it is switched off: somebody may switch it on again.
    const QByteArray heim = [&] {
      const std::scoped_lock halten(sperre_);
      return cacheheim_;
    }();
    const std::scoped_lock halten(namenssperre_);
    if (vergessen_.size() >= Meiste_Vergessene) {
      vergessen_.clear();
      alles_vergessen_ = wann;
    }
    vergessen_.insert(gemeint, wann);
    if (!heim.isEmpty()) entferne_unsere(ordner_in(heim), '/' + eintragsname(gemeint));
  });
}

std::int64_t Miniaturablage::jetzt() const {
  const Uhr geltende = [&] {
    const std::scoped_lock halten(sperre_);
    return uhr_;
  }();
  return geltende();
}

void Miniaturablage::uhr(Uhr andere) {
  const std::scoped_lock halten(sperre_);
  uhr_ = andere != nullptr ? andere : systemuhr;
}

void Miniaturablage::stoppuhr(Uhr andere) {
  const std::scoped_lock halten(sperre_);
  stoppuhr_ = andere != nullptr ? andere : systemstoppuhr;
}

void Miniaturablage::cacheheim(const QByteArray& anderes) {
  const std::scoped_lock halten(sperre_);
  cacheheim_ = anderes;
  brauchbar_.reset();
  kosten_ = {};
  fehlschlaege_ = 0;
}
