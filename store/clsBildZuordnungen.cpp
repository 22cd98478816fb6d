#include "store/clsBildZuordnungen.h"

#include <limits>

#include "imaging/frmPic.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "store/clsBildZuordnungen_Meldung.h"

using namespace Qt::Literals::StringLiterals;

clsBildZuordnungen::clsBildZuordnungen() : AktBildObj(std::make_shared<clsBilderSpeicher>()) {}

clsBildZuordnungen::~clsBildZuordnungen() {
  AktLoadPicture_Picture.reset();
  // Only released: the connection belongs to the host.
  mConnection.reset();
  AktBildObj.reset();
  mBilder.reset();
  frmPic::Entladen();
}

clsBildZuordnungen::Zeilen& clsBildZuordnungen::zeilen() {
  if (!mBilder) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *mBilder;
}

const clsBildZuordnungen::Zeilen& clsBildZuordnungen::zeilen() const {
  if (!mBilder) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *mBilder;
}

clsBildZuordnungen::Zeile& clsBildZuordnungen::zeile(std::int32_t nummer) {
  Zeilen& alle = zeilen();
  if (nummer < 0 || static_cast<std::size_t>(nummer) >= alle.size())
    throw Laufzeitfehler(fehlernummer::IndexAusserhalb);
  return alle[static_cast<std::size_t>(nummer)];
}

const clsBildZuordnungen::Zeile& clsBildZuordnungen::aktuelle_Zeile() const {
  return const_cast<clsBildZuordnungen*>(this)->zeile(mAktInd);
}

clsBilderSpeicher& clsBildZuordnungen::aktueller_Satz() const {
  if (!AktBildObj) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *AktBildObj;
}

void clsBildZuordnungen::neue_Tabelle() {
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

bool clsBildZuordnungen::Bild_Changeflag() const {
  return aktuelle_Zeile().Bild_Changeflag;
}
void clsBildZuordnungen::Bild_Changeflag(bool wert) noexcept {
  setze_Kennzeichen(&Zeile::Bild_Changeflag, wert);
}
bool clsBildZuordnungen::Bild_Neu() const {
  return aktuelle_Zeile().Bild_Neu;
}
void clsBildZuordnungen::Bild_Neu(bool wert) noexcept {
  setze_Kennzeichen(&Zeile::Bild_Neu, wert);
}
bool clsBildZuordnungen::Bild_Delete() const {
  return aktuelle_Zeile().Bild_Delete;
}
void clsBildZuordnungen::Bild_Delete(bool wert) noexcept {
  setze_Kennzeichen(&Zeile::Bild_Delete, wert);
}

void clsBildZuordnungen::setze_Kennzeichen(bool Zeile::*kennzeichen, bool wert) noexcept {
  fehler::Weiter weiter;
  weiter([&] { zeile(mAktInd).*kennzeichen = wert; });
}

// The forwarding properties are all of one shape: reading without a current record gives an empty value, setting
// raises.
#define KVO_FELD(Typ, Argument, Name)             \
  Typ clsBildZuordnungen::Name() const {          \
    return AktBildObj ? AktBildObj->Name : Typ(); \
  }                                               \
  void clsBildZuordnungen::Name(Argument wert) {  \
    aktueller_Satz().Name = wert;                 \
  }
#define KVO_TEXTFELD(Name) KVO_FELD(QString, const QString&, Name)
#define KVO_JANEINFELD(Name) KVO_FELD(bool, bool, Name)

KVO_TEXTFELD(Bild_Key1)
KVO_TEXTFELD(Bild_Key2)
KVO_TEXTFELD(Bild_Key3)
KVO_TEXTFELD(Bild_Key4)
KVO_TEXTFELD(Bild_Bildname)
KVO_TEXTFELD(Bild_BildExt)
KVO_TEXTFELD(Bild_Typ1)
KVO_TEXTFELD(Bild_Typ2)
KVO_TEXTFELD(Bild_Pfad)
KVO_TEXTFELD(Bild_Beschreibung)
KVO_TEXTFELD(Bild_GrafikAnbNr)
KVO_TEXTFELD(Bild_Grafik_Ursprung)
KVO_JANEINFELD(Bild_NeueSeite)
KVO_JANEINFELD(Bild_AlsAnhang)
KVO_JANEINFELD(Bild_DruckGesamteSeite)
KVO_JANEINFELD(Bild_Drucken)

#undef KVO_JANEINFELD
#undef KVO_TEXTFELD
#undef KVO_FELD

std::int16_t clsBildZuordnungen::Bild_SortIndex() const {
  return AktBildObj ? AktBildObj->Bild_SortIndex : std::int16_t{0};
}

void clsBildZuordnungen::Bild_SortIndex(int wert) {
  using Grenzen = std::numeric_limits<std::int16_t>;
  if (wert < Grenzen::min() || wert > Grenzen::max()) throw Laufzeitfehler(fehlernummer::Ueberlauf);
  aktueller_Satz().Bild_SortIndex = static_cast<std::int16_t>(wert);
}

bool clsBildZuordnungen::FKT_Neu() {
  return gemeldet(u"FKT_Neu", [&] {
    neue_Tabelle();
    mAktInd = -1;
    AktBildObj.reset();
    return true;
  });
}

bool clsBildZuordnungen::FKT_NeuesBild(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2) {
  return gemeldet(u"FKT_NeuesBild", [&] {
    if (AnzahlPos() > 0) haenge_Zeile_an();
    const std::int32_t nummer = letzte_Zeile();
    Init_Zeile(nummer);
    AktBildObj = std::make_shared<clsBilderSpeicher>();
    Init_AktBildObj(pKey1, pKey2, pKey3, pKey4, pBildname, pBildExt, PTyp1, pTyp2);
    Zeile& neu = zeile(nummer);
    neu.Zeile_Bildname = pBildname;
    neu.Zeile_BildExt = pBildExt;
    neu.Zeile_Objekt = AktBildObj;
    neu.Bild_Changeflag = true;
    neu.Bild_Neu = true;
    neu.Bild_Delete = false;
    AktInd(nummer);
    return true;
  });
}

bool clsBildZuordnungen::Init_AktBildObj(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1,
    const QString& pTyp2) {
  return gemeldet(u"Init_AktBildObj", [&] {
    clsBilderSpeicher& satz = aktueller_Satz();
    satz.Bild_Key1 = pKey1;
    satz.Bild_Key2 = pKey2;
    satz.Bild_Key3 = pKey3;
    satz.Bild_Key4 = pKey4;
    satz.Bild_Bildname = pBildname;
    satz.Bild_BildExt = pBildExt;
    satz.Bild_Typ1 = PTyp1;
    satz.Bild_Typ2 = pTyp2;
    satz.Bild_Pfad.clear();
    satz.Bild_Beschreibung.clear();
    satz.Bild_NeueSeite = false;
    satz.Bild_AlsAnhang = false;
    satz.Bild_DruckGesamteSeite = false;
    satz.Bild_Drucken = true;
    satz.Bild_Grafik_Ursprung = u"-"_s;
    satz.Bild_GrafikAnbNr.clear();
    return true;
  });
}

bool clsBildZuordnungen::Fkt_Clone(clsBildZuordnungen& pBildAlt, std::int16_t pMontageNr, bool /*pBnrerhalten*/) {
  fehler::Weiter weiter;
  weiter([&] { neue_Tabelle(); });
  mAktInd = -1;
  AktBildObj.reset();
  std::int32_t anzahl = 0;
  weiter([&] { anzahl = pBildAlt.AnzahlPos(); });
  for (std::int32_t i = 0; i < anzahl; ++i) {
    if (i > 0) weiter([&] { haenge_Zeile_an(); });
    weiter([&] { Init_Zeile(i); });
    pBildAlt.AktInd(i);
    weiter([&] {
      Zeile& neu = zeile(i);
      neu.Bild_Changeflag = true;
      neu.Bild_Neu = true;
      neu.Bild_Delete = false;
      neu.Zeile_Bildname = pBildAlt.Bild_Bildname();
      neu.Zeile_BildExt = pBildAlt.Bild_BildExt();
      auto satz = std::make_shared<clsBilderSpeicher>();
      // A row without a record gives a new, empty one.
      weiter([&] { satz->Fkt_Clone(pBildAlt.aktueller_Satz(), pMontageNr); });
      neu.Zeile_Objekt = std::move(satz);
    });
  }
  if (anzahl > 0) AktInd(0);
  return false;
}
