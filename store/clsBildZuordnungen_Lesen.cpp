#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "platform/basic/Fehlerbehandlung.h"
#include "store/BasZuordnungen.h"
#include "store/Felder.h"
#include "store/clsBildZuordnungen.h"
#include "store/clsBildZuordnungen_Meldung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void entpacke_Kennzeichen(const QString& gepackt, clsBilderSpeicher& satz) {
  for (std::size_t i = 0; i < felder::Kennzeichen.size(); ++i) {
    const auto stelle = static_cast<qsizetype>(i);
    satz.*felder::Kennzeichen[i] = stelle < gepackt.size() && gepackt[stelle] == u'1';
  }
}

/// Makes records some at a time, which live until the last of them is given up: thousands of rows are read at once, and
/// each allocation counts.
class Satzvorrat {
 public:
  std::shared_ptr<clsBilderSpeicher> neuer() {
    if (naechster_ == Anzahl) {
      block_ = std::make_shared<std::array<clsBilderSpeicher, Anzahl>>();
      naechster_ = 0;
    }
    return {block_, &(*block_)[naechster_++]};
  }

 private:
  static constexpr std::size_t Anzahl = 64;
  std::shared_ptr<std::array<clsBilderSpeicher, Anzahl>> block_;
  std::size_t naechster_ = Anzahl;
};

/// What the list of a customer's or a project's records has of each.
constexpr std::array Vorgangsspalten{u"Key1", u"Key2", u"Key3", u"Typ1"};

/// Fills records from the current row of a result; where its columns stand is looked up once.
class Satzfueller {
 public:
  Satzfueller(const adodb::Recordset& rs, bool ganze) : rs_(rs) {
    for (const felder::Feld& feld : felder::Texte)
      if (ganze || std::find(Vorgangsspalten.begin(), Vorgangsspalten.end(), feld.Name) != Vorgangsspalten.end())
        orte_.emplace_back(rs.Spalte(feld.Name.toString()), feld.Wert);
  }

  void fuelle(clsBilderSpeicher& satz) const {
    for (const auto& [ort, wert] : orte_) satz.*wert = rs_.Text(ort);
    // A record holds them packed only while it is being written.
    entpacke_Kennzeichen(std::exchange(satz.Bild_Druckkennzeichen, {}), satz);
  }

 private:
  const adodb::Recordset& rs_;
  std::vector<std::pair<std::int32_t, QString clsBilderSpeicher::*>> orte_;
};

}  // namespace

bool clsBildZuordnungen::Init(const QString& pConnectstring, std::shared_ptr<adodb::Connection> pconnection,
    const QString& pGL_jmtVerarbeitungsdatum) {
  return gemeldet(u"Init", [&] {
    cGL_jmtVerarbeitungsdatum = pGL_jmtVerarbeitungsdatum;
    mConnection = std::move(pconnection);
    mConnectstring = pConnectstring;
    Pruefe_Verbindung();
    neue_Tabelle();
    return true;
  });
}

bool clsBildZuordnungen::Pruefe_Verbindung() {
  return fehler::still_enden([&] {
    if (!mConnection) mConnection = BasZuordnungen::oeffne_Verbindung(mConnectstring);
    return true;
  });
}

adodb::Connection& clsBildZuordnungen::lesende_Verbindung() const {
  if (!mConnection) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  return *mConnection;
}

/// Fills the empty collection with what a statement gives: whole rows, or only what tells the records apart.
bool clsBildZuordnungen::lese_Saetze(const QString& anweisung, bool ganze) {
  const std::shared_ptr<adodb::Recordset> rs = lesende_Verbindung().Execute(anweisung, -1);
  const bool gefunden = !rs->Eof();
  if (gefunden) {
    const Satzfueller fueller(*rs, ganze);
    const std::int32_t sortindex = ganze ? rs->Spalte(felder::SortIndex.toString()) : -1;
    Satzvorrat saetze;
    zeilen().reserve(static_cast<std::size_t>(rs->RecordCount()));
    for (bool erste = true; !rs->Eof(); rs->MoveNext(), erste = false) {
      if (!erste) haenge_Zeile_an();
      Zeile& neu = zeilen().back();
      neu.Zeile_Objekt = saetze.neuer();
      fueller.fuelle(*neu.Zeile_Objekt);
      neu.Zeile_Bildname = neu.Zeile_Objekt->Bild_Bildname;
      neu.Zeile_BildExt = neu.Zeile_Objekt->Bild_BildExt;
      // Bild_SortIndex of the record stays 0 on purpose: the order shows in the order of the rows only.
      if (ganze) neu.Zeile_SortIndex = rs->Value(sortindex);
    }
    if (AnzahlPos() > 0) AktInd(0);
  }
  fehler::still_enden([&] { rs->Close(); });
  return gefunden;
}

bool clsBildZuordnungen::FKT_LeseBilder(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhere, bool MitSortorder) {
  return gemeldet(u"FKT_LeseBilder", [&] {
    neue_Tabelle();
    const QString where =
        Aufbau_Key_Where({&pKey1, &pKey2, &pKey3, &pKey4, &pBildname, &pBildExt, &PTyp1, &pTyp2}, pWhere);
    // No blank in front of "order": the statement is known in this form.
    const QString ordnung = MitSortorder ? u"order by SortIndex"_s : QString();
    return lese_Saetze(u"Select * from Bild_Zuordnungen "_s + where + ordnung, true);
  });
}

bool clsBildZuordnungen::FKT_LeseBilder_FuerKunde_Projekt(const QString& pKdnr_Prj, bool pFuerProjekt) {
  return gemeldet(u"FKT_LeseBilder_FuerKunde_Projekt", [&] {
    neue_Tabelle();
    QString filter;
    if (!pKdnr_Prj.isEmpty())
      filter = (pFuerProjekt ? u"AND BelegKopfZunft.Projektnummer = '"_s : u"AND BelegKopfZunft.Kundennummer = '"_s) +
          pKdnr_Prj + u"' "_s;
    return lese_Saetze(
        u"SELECT TOP 100 PERCENT %1, dbo.Bild_Zuordnungen.Typ1 "
        "FROM dbo.Bild_Zuordnungen LEFT OUTER JOIN dbo.BelegKopfZunft "
        "ON dbo.Bild_Zuordnungen.Key1 = dbo.BelegKopfZunft.Belegart AND "
        "dbo.Bild_Zuordnungen.Key2 = dbo.BelegKopfZunft.Belegnummer "
        "WHERE (dbo.Bild_Zuordnungen.Typ1 = 'Mon' OR dbo.Bild_Zuordnungen.Typ1 = 'Bel') %2 "
        "GROUP BY %1, dbo.Bild_Zuordnungen.Typ1 ORDER BY %1"_s.arg(
            u"dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, dbo.Bild_Zuordnungen.Key3"_s, filter),
        false);
  });
}

bool clsBildZuordnungen::FKT_BilderVorhanden(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhere) {
  return gemeldet(u"FKT_BilderVorhanden", [&] {
    const auto rs = lesende_Verbindung().Execute(u"Select Top 1 Key1 from Bild_Zuordnungen "_s +
            Aufbau_Key_Where({&pKey1, &pKey2, &pKey3, &pKey4, &pBildname, &pBildExt, &PTyp1, &pTyp2}, pWhere),
        -1);
    const bool vorhanden = !rs->Eof();
    fehler::still_enden([&] { rs->Close(); });
    return vorhanden;
  });
}

bool clsBildZuordnungen::korrigiere_alle(QString clsBilderSpeicher::*feld, const QString& wert) {
  return fehler::still_enden([&] {
    const std::int32_t anzahl = AnzahlPos();
    if (anzahl < 1) return true;
    const std::int32_t vorher = AktInd();
    for (std::int32_t i = 0; i < anzahl; ++i) {
      AktInd(i);
      aktueller_Satz().*feld = wert;
    }
    AktInd(vorher);
    return true;
  });
}

bool clsBildZuordnungen::fkt_Korr_Key1(const QString& pKey1) {
  return korrigiere_alle(&clsBilderSpeicher::Bild_Key1, pKey1);
}

bool clsBildZuordnungen::fkt_Korr_Key2(const QString& pKey2) {
  return korrigiere_alle(&clsBilderSpeicher::Bild_Key2, pKey2);
}

QString clsBildZuordnungen::UPrN(const QString& pWert) const {
  return pWert.isEmpty() ? u" = NULL,"_s : u" = '"_s + pWert + u"',"_s;
}

QString clsBildZuordnungen::UPSTR(const Variant& pWert) const {
  return u" = '"_s + CStr(pWert).replace(u',', u'.') + u"',"_s;
}

QString clsBildZuordnungen::UChkB(const Variant& pWert) const {
  return ist_True(pWert) ? u" = 1,"_s : u" = 0,"_s;
}
