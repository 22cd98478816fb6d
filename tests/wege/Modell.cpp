// The dialog as the user sees it; saving stands in ModellSichern.cpp.
#include "tests/wege/Modell.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;
using schritt::Antwort;

namespace {

constexpr int Keine = -1;

QString ohne_Rand(const QString& text) {
  qsizetype von = 0;
  qsizetype bis = text.size();
  while (von < bis && text[von] == u' ') ++von;
  while (bis > von && text[bis - 1] == u' ') --bis;
  return text.mid(von, bis - von);
}

bool gleich(const QString& a, const QString& b) {
  return ohne_Rand(a).compare(ohne_Rand(b), Qt::CaseInsensitive) == 0;
}

QString pfad(const QString& ordner, const QString& datei) {
  return QString(ordner).replace(u'\\', u'/') + u'/' + datei;
}

}  // namespace

QStringList Modell::namen() const {
  QStringList alle;
  for (const Bild& bild : streifen_) alle.append(bild.name);
  return alle;
}

// ── Opening and reading again ───────────────────────────────────────────────────────────────────────────────────────

void Modell::oeffne() {
  std::vector<Zuordnung> zeilen;
  std::copy_if(welt.tabelle.begin(), welt.tabelle.end(), std::back_inserter(zeilen),
      [](const Zuordnung& zeile) { return zeile.re == u"1"_s; });
  std::stable_sort(zeilen.begin(), zeilen.end(), [](const auto& x, const auto& y) { return x.sort < y.sort; });
  sammlung_.clear();
  streifen_.clear();
  for (const Zuordnung& zeile : zeilen)
    sammlung_.push_back(std::make_shared<Satz>(Satz{zeile, zeile.name, zeile.ordner, false, false, false}));
  anzeige_ = {};
  gewaehlt_ = Keine;
  lade();
  if (!streifen_.empty()) waehle(0);
}

Modell::Bild Modell::lade_Bild(const std::shared_ptr<Satz>& satz, bool vorgemerkt) const {
  Bild bild;
  const Zuordnung& w = satz->werte;
  bild.satz = satz;
  bild.ordner = w.ordner;
  bild.name = w.name;
  bild.endung = w.endung;
  bild.datei = pfad(w.ordner, w.name + u'.' + w.endung);
  bild.drucktext = w.drucktext;
  bild.marken = w.marken;
  bild.info = welt.texte.value(welt.finde_Text(pfad(w.ordner, w.name + w.endung + u".txt"_s)));
  if (!satz->ungeschriebener_Text.isEmpty()) bild.info = satz->ungeschriebener_Text;
  bild.fehlt = welt.finde(bild.datei).isEmpty();
  bild.lesbar = !bild.fehlt || ist_lesbar(bild);
  bild.vorgemerkt = vorgemerkt;
  bild.entfernen = vorgemerkt || (bild.fehlt && bild.lesbar);
  return bild;
}

// New pictures that could not be saved stay where they stood; those that were marked for removal are gone.
void Modell::lade() {
  std::vector<Bild> alte = std::exchange(streifen_, {});
  bool offen = false;
  if (alte.empty())
    for (const auto& satz : sammlung_) streifen_.push_back(lade_Bild(satz, false));
  for (Bild& bild : alte) {
    if (bild.satz)
      streifen_.push_back(lade_Bild(bild.satz, bild.vorgemerkt));
    else if (!bild.entfernen)
      streifen_.push_back(bild), offen = true;
  }
  for (const Bild& bild : streifen_) {
    offen = offen || bild.entfernen;
    if (bild.satz && !bild.entfernen) bild.satz->weg = false;
  }
  geaendert_ = offen;
}

void Modell::aktualisiere(Antwort namen) {
  if (gewaehlt_ == Keine) return;
  if (geaendert_ && !zeige_Kollision()) sichere(namen);
  // What could not be saved would be lost by reading it anew; the selected row is shown as it stands.
  if (geaendert_) return waehle(gewaehlt_);
  lade();
  if (streifen_.empty())
    anzeige_ = {};
  else
    waehle(gewaehlt_ < anzahl() ? gewaehlt_ : 0);
}

// ── Rows ────────────────────────────────────────────────────────────────────────────────────────────────────────────

void Modell::haenge_an(const QStringList& dateien) {
  for (const QString& datei : dateien) {
    Bild bild;
    const qsizetype strich = datei.lastIndexOf(u'/');
    const qsizetype punkt = datei.lastIndexOf(u'.');
    bild.datei = datei;
    bild.ordner = datei.left(strich);
    bild.name = datei.mid(strich + 1, punkt - strich - 1);
    bild.endung = datei.mid(punkt + 1);
    bild.doppelt = ist_vergeben(bild.name, bild.endung, Keine);
    bild.info = welt.texte.value(bild.ordner + u'/' + bild.name + bild.endung + u".txt"_s);
    bild.angefasst = true;
    streifen_.push_back(bild);
  }
  if (gewaehlt_ == Keine || gewaehlt_ == 0) waehle(0);
  geaendert_ = true;
}

// A row whose fields had to be filled with something else counts as changed: it is written back with the others.
void Modell::waehle(int zeile) {
  gewaehlt_ = zeile;
  Bild& bild = streifen_[z(zeile)];
  if (bild.umbenannt && gleich(bild.name, bild.original)) {
    bild.name = bild.original;
    bild.umbenannt = false;
  }
  const Anzeige neu{bild.name, bild.name, bild.info, bild.drucktext, bild.marken, bild.entfernen};
  if (neu.name != anzeige_.name || neu.info != anzeige_.info || neu.drucktext != anzeige_.drucktext ||
      neu.marken != anzeige_.marken || neu.entfernen != anzeige_.entfernen)
    bild.angefasst = true;
  anzeige_ = neu;
  gesperrt_ = ohne_Rand(neu.name).isEmpty();
}

void Modell::verschiebe(int von, int nach) {
  if (von == nach) return;
  const Bild bild = streifen_[z(von)];
  streifen_.erase(streifen_.begin() + von);
  streifen_.insert(streifen_.begin() + nach, bild);
  for (Bild& b : streifen_) b.angefasst = true;
  geaendert_ = true;
  // The fields show the picture that stands at the selected place now.
  if (gewaehlt_ != Keine) waehle(gewaehlt_);
}

bool Modell::ist_lesbar(const Bild& bild) const {
  return ordner_da_ || bild.ordner != u"Belege\\1"_s;
}

void Modell::aendere(int zeile) {
  streifen_[z(zeile)].angefasst = true;
  geaendert_ = true;
}

bool Modell::ist_vergeben(const QString& name, const QString& endung, int in_Arbeit) const {
  const QString gesucht = ohne_Rand(name);
  for (int i = 0; i < anzahl(); ++i) {
    const QString& anderer = streifen_[z(i)].name;
    const bool selber = i == in_Arbeit ? anderer == gesucht : anderer.compare(gesucht, Qt::CaseInsensitive) == 0;
    if (selber) return gleich(streifen_[z(i)].endung, endung);
  }
  return false;
}

void Modell::aendere_Namen(const QString& text) {
  Bild& bild = streifen_[z(gewaehlt_)];
  aendere(gewaehlt_);
  bild.doppelt = ist_vergeben(text, bild.endung, gewaehlt_);
  if (ohne_Rand(bild.original).isEmpty()) bild.original = anzeige_.alter_Name;
  anzeige_.name = text;
  bild.umbenannt = !gleich(text, bild.original);
  bild.name = bild.umbenannt ? text : bild.original;
}

void Modell::schreibe(schritt::Feld feld, const QString& text) {
  Bild& bild = streifen_[z(gewaehlt_)];
  (feld == schritt::Feld::Info ? bild.info : bild.drucktext) = text;
  (feld == schritt::Feld::Info ? anzeige_.info : anzeige_.drucktext) = text;
  aendere(gewaehlt_);
}

void Modell::schalte(schritt::Marke marke) {
  const auto m = static_cast<std::size_t>(marke);
  anzeige_.marken[m] = streifen_[z(gewaehlt_)].marken[m] = !streifen_[z(gewaehlt_)].marken[m];
  aendere(gewaehlt_);
}

void Modell::merke_vor() {
  Bild& bild = streifen_[z(gewaehlt_)];
  anzeige_.entfernen = bild.entfernen = bild.vorgemerkt = !bild.entfernen;
  aendere(gewaehlt_);
}

void Modell::drehe(int viertel, Antwort namen) {
  const QString datei = welt.finde(streifen_[z(gewaehlt_)].datei);
  if (datei.isEmpty() || gestoert_.contains(datei)) {
    kaesten.append(Kasten::Nicht_gedreht);
    return;
  }
  Bildinhalt& inhalt = welt.bilder[datei];
  inhalt.viertel = (inhalt.viertel + viertel) % 4;
  aktualisiere(namen);
}

// ── The share ───────────────────────────────────────────────────────────────────────────────────────────────────────

void Modell::verschwinde(const QString& datei) {
  verschwundene_[datei] = welt.bilder.take(datei);
}

void Modell::trenne() {
  ordner_da_ = false;
  for (const QString& datei : welt.bilder.keys())
    if (datei.startsWith(u"Belege/1/"_s)) verschwinde(datei);
  for (const QString& text : welt.texte.keys())
    if (text.startsWith(u"Belege/1/"_s)) verschwundene_Texte_[text] = welt.texte.take(text);
}

QStringList Modell::kehre_zurueck() {
  QStringList alle;
  for (auto i = verschwundene_.begin(); i != verschwundene_.end(); ++i) {
    if (!welt.finde(i.key()).isEmpty()) {
      ersetzte_.insert(i.value().bild);
      continue;
    }
    welt.bilder[i.key()] = i.value();
    alle.append(i.key());
  }
  for (auto i = verschwundene_Texte_.begin(); i != verschwundene_Texte_.end(); ++i) {
    if (welt.texte.contains(welt.finde_Text(i.key()))) continue;
    welt.texte[i.key()] = i.value();
    alle.append(i.key());
  }
  alle += gestoert_.values();
  verschwundene_.clear();
  verschwundene_Texte_.clear();
  gestoert_.clear();
  ordner_da_ = true;
  return alle;
}
