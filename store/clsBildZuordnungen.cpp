#include "store/clsBildZuordnungen.h"

#include <limits>
#include <utility>

#include "imaging/frmPic.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "store/Felder.h"
#include "store/clsBildZuordnungen_Meldung.h"

clsBildZuordnungen::clsBildZuordnungen() : AktBildObj(std::make_shared<clsBilderSpeicher>()) {}

clsBildZuordnungen::~clsBildZuordnungen() {
  AktLoadPicture_Picture.reset();
  // Only released: the connection belongs to the host.
  mConnection.reset();
  AktBildObj.reset();
  mBilder.reset();
  frmPic::Entladen();
}

clsBildZuordnungen::Zeilen& clsBildZuordnungen::zeilen() const {
  if (!mBilder) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *mBilder;
}

clsBildZuordnungen::Zeile& clsBildZuordnungen::zeile(std::int32_t nummer) const {
  Zeilen& alle = zeilen();
  if (nummer < 0 || static_cast<std::size_t>(nummer) >= alle.size())
    throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return alle[static_cast<std::size_t>(nummer)];
}

clsBilderSpeicher& clsBildZuordnungen::aktueller_Satz() const {
  if (!AktBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *AktBildObj;
}

void clsBildZuordnungen::neue_Tabelle() {
  AktInd(-1);
  // Rows that come into being are blank, which spares a step of its own for types and values of the cells.
  mBilder = std::make_unique<Zeilen>(1);
}

void clsBildZuordnungen::Init_Zeile(std::int32_t nummer) {
  zeile(nummer) = Zeile();
}

std::int32_t clsBildZuordnungen::haenge_Zeile_an() {
  zeilen().emplace_back();
  return letzte_Zeile();
}

/// Appends a row for a record, changed and new; the first one takes the blank row. Gives the row's number.
std::int32_t clsBildZuordnungen::haenge_an(std::shared_ptr<clsBilderSpeicher> satz) {
  if (AnzahlPos() > 0) haenge_Zeile_an();
  const std::int32_t nummer = letzte_Zeile();
  Init_Zeile(nummer);
  Zeile& neu = zeile(nummer);
  neu.Zeile_Bildname = satz->Bild_Bildname;
  neu.Zeile_BildExt = satz->Bild_BildExt;
  neu.Zeile_Objekt = std::move(satz);
  neu.Bild_Changeflag = true;
  neu.Bild_Neu = true;
  return nummer;
}

std::int32_t clsBildZuordnungen::letzte_Zeile() const {
  return static_cast<std::int32_t>(zeilen().size()) - 1;
}

void clsBildZuordnungen::AktInd(std::int32_t wert) noexcept {
  fehler::Weiter weiter;
  mAktInd = wert;
  AktBildObj.reset();
  if (mAktInd > -1) weiter([&] { AktBildObj = zeile(mAktInd).Zeile_Objekt; });
}

std::int32_t clsBildZuordnungen::AnzahlPos() const {
  const Zeilen& alle = zeilen();
  if (alle.size() != 1) return static_cast<std::int32_t>(alle.size());
  const Zeile& einzige = alle.front();
  return !einzige.Zeile_Objekt && einzige.Zeile_Bildname.isEmpty() ? 0 : 1;
}

void clsBildZuordnungen::setze_Kennzeichen(bool Zeile::*kennzeichen, bool wert) noexcept {
  fehler::Weiter weiter;
  weiter([&] { zeile(mAktInd).*kennzeichen = wert; });
}

void clsBildZuordnungen::Bild_SortIndex(int wert) {
  using Grenzen = std::numeric_limits<std::int16_t>;
  if (wert < Grenzen::min() || wert > Grenzen::max()) throw Laufzeitfehler(fehlernummer::Ueberlauf);
  aktueller_Satz().Bild_SortIndex = static_cast<std::int16_t>(wert);
}

bool clsBildZuordnungen::FKT_Neu() {
  return gemeldet(u"FKT_Neu", [&] {
    neue_Tabelle();
    return true;
  });
}

bool clsBildZuordnungen::FKT_NeuesBild(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2) {
  return gemeldet(u"FKT_NeuesBild", [&] {
    auto satz = std::make_shared<clsBilderSpeicher>();
    Init_AktBildObj(*satz, {&pKey1, &pKey2, &pKey3, &pKey4, &pBildname, &pBildExt, &PTyp1, &pTyp2});
    AktInd(haenge_an(std::move(satz)));
    return true;
  });
}

/// Gives a new record its identity and the values that it starts with.
bool clsBildZuordnungen::Init_AktBildObj(clsBilderSpeicher& satz, const Kennung& kennung) {
  return gemeldet(u"Init_AktBildObj", [&] {
    for (std::size_t i = 0; i < kennung.size(); ++i) satz.*felder::Kennung[i].Wert = *kennung[i];
    satz.Bild_Drucken = true;
    satz.Bild_Grafik_Ursprung = felder::oder_Strich({});
    return true;
  });
}

bool clsBildZuordnungen::Fkt_Clone(clsBildZuordnungen& pBildAlt, std::int16_t pMontageNr, bool /*pBnrerhalten*/) {
  fehler::Weiter weiter;
  weiter([&] { neue_Tabelle(); });
  std::int32_t anzahl = 0;
  weiter([&] { anzahl = pBildAlt.AnzahlPos(); });
  for (std::int32_t i = 0; i < anzahl; ++i) {
    pBildAlt.AktInd(i);
    weiter([&] {
      auto satz = std::make_shared<clsBilderSpeicher>();
      // A row without a record gives a new, empty one.
      weiter([&] { satz->Fkt_Clone(pBildAlt.aktueller_Satz(), pMontageNr); });
      haenge_an(std::move(satz));
    });
  }
  if (anzahl > 0) AktInd(0);
  return false;
}
