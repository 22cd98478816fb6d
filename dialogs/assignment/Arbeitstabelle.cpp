#include "dialogs/assignment/Arbeitstabelle.h"

#include <algorithm>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "store/Bilddatei.h"
#include "store/mod_BilderSuchen.h"

using text::Trim;
using text::UCase;

// ── One row ─────────────────────────────────────────────────────────────────────────────────────────────────────────

void Arbeitszeile::lies(const clsBilderSpeicher& satz, const QString& root) {
  Gespeichert = true;
  VollerPfad = Bilddatei::von(satz, root).pfad();
  Root = root;
  Pfad = satz.Bild_Pfad;
  Bildname = satz.Bild_Bildname;
  BildExt = satz.Bild_BildExt;
  Beschreibung = satz.Bild_Beschreibung;
  Drucken = satz.Bild_Drucken;
  DruckGesamteSeite = satz.Bild_DruckGesamteSeite;
  NeueSeite = satz.Bild_NeueSeite;
  AlsAnhang = satz.Bild_AlsAnhang;
  Key1 = satz.Bild_Key1;
  Key2 = satz.Bild_Key2;
  Key3 = satz.Bild_Key3;
  Key4 = satz.Bild_Key4;
  Typ1 = satz.Bild_Typ1;
  Typ2 = satz.Bild_Typ2;
  SortIndex = satz.Bild_SortIndex;
  Spur.dateiname = satz.Bild_Bildname;
  Spur.dateipfad = satz.Bild_Pfad;
  // A copy that was read again may be turned or edited by now: its size says nothing any more.
  Spur.groesse = -1;
}

void Arbeitszeile::uebernimm_in(clsBilderSpeicher& satz) {
  satz.Bild_Pfad = Pfad;
  satz.Bild_Bildname = Bildname;
  satz.Bild_BildExt = BildExt;
  satz.Bild_AlsAnhang = AlsAnhang;
  satz.Bild_Beschreibung = Bilddatei::passender_Drucktext(Beschreibung);
  satz.Bild_Drucken = Drucken;
  satz.Bild_DruckGesamteSeite = DruckGesamteSeite;
  satz.Bild_NeueSeite = NeueSeite;
  // A text that was cut before it was read again has not been shortened by the user.
  if (satz.Bild_Beschreibung != Beschreibung)
    Spur.ungekuerzter_Drucktext = Beschreibung;
  else if (Bilddatei::passender_Drucktext(Spur.ungekuerzter_Drucktext) != Beschreibung)
    Spur.ungekuerzter_Drucktext.clear();
}

bool Arbeitszeile::gleicht(const clsBilderSpeicher& satz) const {
  const QString textdatei = Bilddatei::von(satz, Root).textpfad();
  const QString info = fehler::still_enden([&] { return mod_BilderSuchen::Fkt_ReadFile(textdatei); });
  return satz.Bild_Bildname == Bildname && satz.Bild_Pfad == Pfad && satz.Bild_Beschreibung == Beschreibung &&
      satz.Bild_Drucken == Drucken && satz.Bild_AlsAnhang == AlsAnhang && satz.Bild_NeueSeite == NeueSeite &&
      satz.Bild_DruckGesamteSeite == DruckGesamteSeite && Spur.bestaetigt_vorgemerkt == Entfernen &&
      Trim(info) == Trim(BildInfo);
}

bool Arbeitszeile::nenne(const QString& name) {
  Bildname = name;
  if (UCase(Trim(name)) != UCase(Trim(OriginalName))) return false;
  setze_Namen_zurueck();
  NameGeaendert = false;
  return true;
}

void Arbeitszeile::merke_Namen(const QString& name, const QString& pfad) {
  Spur.fruehere.push_back({Spur.dateiname, Spur.dateipfad});
  Spur.dateiname = name;
  Spur.dateipfad = pfad;
  Spur.abgelehnter_Name.clear();
  Spur.umbenennung = {Dateischritt::Stand::Getan, {}};
  if (!Spur.satz) return;
  Spur.satz->Bild_Bildname = name;
  Spur.satz->Bild_Pfad = pfad;
}

void Arbeitszeile::lehne_Namen_ab(const QString& grund) {
  Spur.abgelehnter_Name = Trim(Bildname);
  Spur.umbenennung = {Dateischritt::Stand::Gescheitert, grund};
  setze_Namen_zurueck();
}

// ── Rows ────────────────────────────────────────────────────────────────────────────────────────────────────────────

bool Arbeitstabelle::KeineBilder() const {
  return zeilen_.empty() || (zeilen_.size() == 1 && zeilen_.front().VollerPfad.isEmpty());
}

Arbeitszeile& Arbeitstabelle::Zeile(std::int32_t nummer) {
  if (gibt_es(nummer)) return zeilen_[static_cast<std::size_t>(nummer)];
  return keine_ = {};
}

void Arbeitstabelle::verlange(std::int32_t nummer) const {
  if (!gibt_es(nummer)) throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
}

Arbeitszeile& Arbeitstabelle::freie_Zeile() {
  const bool frei = !zeilen_.empty() && zeilen_.back().ist_leer() && Trim(zeilen_.back().Pfad).isEmpty();
  return frei ? zeilen_.back() : haenge_an();
}

void Arbeitstabelle::entferne(std::int32_t nummer) {
  verlange(nummer);
  zeilen_.erase(begin() + nummer);
}

void Arbeitstabelle::verschiebe(std::int32_t quelle, std::int32_t ziel) {
  verlange(quelle);
  verlange(ziel);
  Arbeitszeile zeile = std::move(Zeile(quelle));
  zeilen_.erase(begin() + quelle);
  zeilen_.insert(begin() + ziel, std::move(zeile));
  nummeriere();
  for (Arbeitszeile& z : zeilen_) z.ZeileGeaendert = true;
}

void Arbeitstabelle::nummeriere() {
  std::int32_t nummer = 0;
  for (Arbeitszeile& zeile : zeilen_) zeile.SortIndex = nummer++;
}

// ── Names ───────────────────────────────────────────────────────────────────────────────────────────────────────────

template <class Bedingung>
static std::int32_t erste(const Arbeitstabelle& tabelle, Bedingung&& bedingung) {
  return static_cast<std::int32_t>(std::find_if(tabelle.begin(), tabelle.end(), bedingung) - tabelle.begin());
}

bool Arbeitstabelle::ist_vergeben(const QString& name, const QString& endung, std::int32_t in_Arbeit) const {
  const QString gesucht = Trim(name);
  const std::int32_t i = erste(*this, [&](const Arbeitszeile& andere) {
    const bool wird_bearbeitet = &andere - zeilen_.data() == in_Arbeit;
    return wird_bearbeitet ? andere.Bildname == gesucht : UCase(andere.Bildname) == UCase(gesucht);
  });
  return gibt_es(i) && UCase(Trim(zeilen_[static_cast<std::size_t>(i)].BildExt)) == UCase(Trim(endung));
}

std::int32_t Arbeitstabelle::erste_Doppelte() const {
  const std::int32_t i = erste(*this, [](const Arbeitszeile& z) { return z.NameDoppelt && !z.Entfernen; });
  return gibt_es(i) ? i : -1;
}

std::int32_t Arbeitstabelle::erste_Umbenannte() const {
  return erste(*this, [](const Arbeitszeile& z) { return z.NameGeaendert; });
}

QString Arbeitstabelle::gestempelter_Name(const Arbeitszeile& eigene, const QString& endung, const QString& stempel,
    const std::function<bool(const QString&)>& nimmt) const {
  const QString anfang = Bilddatei::ersetze_verbotene(eigene.Bildname);
  for (int i = 1;; ++i) {
    QString name = Bilddatei{anfang, endung}.gestempelt(stempel, i).name;
    const QString datei = UCase(Bilddatei{name, endung}.textdatei());
    const bool frei = std::none_of(begin(), end(), [&](const Arbeitszeile& z) {
      return &z != &eigene && UCase(Bilddatei{Trim(z.Bildname), z.BildExt}.textdatei()) == datei;
    });
    if (frei && nimmt(name)) return name;
  }
}

void Arbeitstabelle::halte_leere_Namen() {
  for (Arbeitszeile& z : zeilen_) {
    if (!z.Gespeichert || !z.NameGeaendert || !Trim(z.Bildname).isEmpty()) continue;
    z.setze_Namen_zurueck();
    z.NameGeaendert = false;
  }
}

// ── Records ─────────────────────────────────────────────────────────────────────────────────────────────────────────

std::vector<const clsBilderSpeicher*> Arbeitstabelle::Folge() const {
  std::vector<const clsBilderSpeicher*> folge;
  for (const Arbeitszeile& z : zeilen_)
    if (z.Spur.satz) folge.push_back(z.Spur.satz.get());
  return folge;
}

std::vector<Bildspur> Arbeitstabelle::Spuren() const {
  std::vector<Bildspur> spuren;
  if (KeineBilder()) return spuren;
  for (const Arbeitszeile& z : zeilen_) spuren.push_back(z.Spur);
  return spuren;
}

Arbeitstabelle::Ungespeicherte Arbeitstabelle::ungespeicherte() const {
  Ungespeicherte behalten;
  std::int32_t platz = 0;
  for (const Arbeitszeile& z : zeilen_) {
    if (!z.Gespeichert && (z.Entfernen || z.ist_leer())) continue;
    if (!z.Gespeichert) behalten.emplace_back(platz, z);
    ++platz;
  }
  return behalten;
}

// A place behind the last row comes of records that are gone by now.
void Arbeitstabelle::stelle_zurueck(const Ungespeicherte& zeilen) {
  if (!zeilen.empty() && KeineBilder()) zeilen_.clear();
  for (const auto& [platz, zeile] : zeilen) zeilen_.insert(begin() + std::min(platz, LetzteZeile() + 1), zeile);
}
