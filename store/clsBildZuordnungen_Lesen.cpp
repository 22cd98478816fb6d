#include <array>
#include <utility>

#include "platform/basic/Fehlerbehandlung.h"
#include "store/BasZuordnungen.h"
#include "store/clsBildZuordnungen.h"
#include "store/clsBildZuordnungen_Meldung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Position `pos` (from 1) of the packed print flags holds a "1".
bool Flag_Aus_Kennzeichen(const QString& s, qsizetype pos) {
  return s.size() >= pos && s[pos - 1] == u'1';
}

void decodiere_Kennzeichen(const QString& s, clsBilderSpeicher& satz) {
  satz.Bild_NeueSeite = Flag_Aus_Kennzeichen(s, 1);
  satz.Bild_AlsAnhang = Flag_Aus_Kennzeichen(s, 2);
  satz.Bild_DruckGesamteSeite = Flag_Aus_Kennzeichen(s, 3);
  satz.Bild_Drucken = Flag_Aus_Kennzeichen(s, 4);
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

/// Where the columns of a whole row stand in a result, looked up once for all its records.
struct Spaltenorte {
  explicit Spaltenorte(const adodb::Recordset& rs)
      : Bildname(rs.Spalte(u"BildName"_s)),
        BildExt(rs.Spalte(u"BildExt"_s)),
        Key1(rs.Spalte(u"Key1"_s)),
        Key2(rs.Spalte(u"Key2"_s)),
        Key3(rs.Spalte(u"Key3"_s)),
        Key4(rs.Spalte(u"key4"_s)),
        Typ1(rs.Spalte(u"Typ1"_s)),
        Typ2(rs.Spalte(u"Typ2"_s)),
        Pfad(rs.Spalte(u"BildPfad"_s)),
        Beschreibung(rs.Spalte(u"Beschreibung"_s)),
        GrafikAnbNr(rs.Spalte(u"GrafikAnbNr"_s)),
        Grafik_Ursprung(rs.Spalte(u"Grafik_Ursprung"_s)),
        Druckkennzeichen(rs.Spalte(u"Druckkennzeichen"_s)),
        SortIndex(rs.Spalte(u"SortIndex"_s)) {}
  std::int32_t Bildname, BildExt, Key1, Key2, Key3, Key4, Typ1, Typ2, Pfad, Beschreibung, GrafikAnbNr, Grafik_Ursprung,
      Druckkennzeichen, SortIndex;
};

}  // namespace

bool clsBildZuordnungen::Init(const QString& pConnectstring, std::shared_ptr<adodb::Connection> pconnection,
    const QString& pGL_jmtVerarbeitungsdatum) {
  return gemeldet(u"Init", [&] {
    cGL_jmtVerarbeitungsdatum = pGL_jmtVerarbeitungsdatum;
    mConnection = std::move(pconnection);
    mConnectstring = pConnectstring;
    Pruefe_Verbindung();
    AktInd(-1);
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

/// The common frame of both reads. `vorbereiten` sees the recordset once, when there is a record, and gives what fills
/// one row from it.
template <class Vorbereiten>
bool clsBildZuordnungen::lese_Saetze(const QString& anweisung, Vorbereiten&& vorbereiten) {
  const std::shared_ptr<adodb::Recordset> rs = lesende_Verbindung().Execute(anweisung, -1);
  const bool gefunden = !rs->Eof();
  if (gefunden) {
    auto fuelle = vorbereiten(*rs);
    Satzvorrat saetze;
    zeilen().reserve(static_cast<std::size_t>(rs->RecordCount()));
    for (bool erste = true; !rs->Eof(); rs->MoveNext(), erste = false) {
      if (!erste) haenge_Zeile_an();
      Zeile& neu = zeilen().back();
      neu.Zeile_Objekt = saetze.neuer();
      fuelle(neu, *neu.Zeile_Objekt);
    }
    if (AnzahlPos() > 0) AktInd(0);
  }
  fehler::still_enden([&] { rs->Close(); });
  return gefunden;
}

bool clsBildZuordnungen::FKT_LeseBilder(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhere, bool MitSortorder) {
  const auto vorbereiten = [](const adodb::Recordset& rs) {
    return [&rs, ort = Spaltenorte(rs)](Zeile& zeile, clsBilderSpeicher& satz) {
      zeile.Zeile_Bildname = rs.Text(ort.Bildname);
      zeile.Zeile_BildExt = rs.Text(ort.BildExt);
      satz.Bild_Key1 = rs.Text(ort.Key1);
      satz.Bild_Key2 = rs.Text(ort.Key2);
      satz.Bild_Key3 = rs.Text(ort.Key3);
      satz.Bild_Key4 = rs.Text(ort.Key4);
      satz.Bild_Bildname = zeile.Zeile_Bildname;
      satz.Bild_BildExt = zeile.Zeile_BildExt;
      satz.Bild_Typ1 = rs.Text(ort.Typ1);
      satz.Bild_Typ2 = rs.Text(ort.Typ2);
      satz.Bild_Pfad = rs.Text(ort.Pfad);
      satz.Bild_Beschreibung = rs.Text(ort.Beschreibung);
      satz.Bild_GrafikAnbNr = rs.Text(ort.GrafikAnbNr);
      satz.Bild_Grafik_Ursprung = rs.Text(ort.Grafik_Ursprung);
      decodiere_Kennzeichen(rs.Text(ort.Druckkennzeichen), satz);
      // Bild_SortIndex of the record stays 0 on purpose: the order shows in the order of the rows only.
      zeile.Zeile_SortIndex = rs.Value(ort.SortIndex);
    };
  };
  return gemeldet(u"FKT_LeseBilder", [&] {
    AktInd(-1);
    neue_Tabelle();
    QString anweisung = u"Select * from Bild_Zuordnungen "_s +
        Aufbau_Key_Where(pKey1, pKey2, pKey3, pKey4, pBildname, pBildExt, PTyp1, pTyp2, pWhere);
    // No blank in front of "order": the statement is known in this form.
    if (MitSortorder) anweisung += u"order by SortIndex"_s;
    return lese_Saetze(anweisung, vorbereiten);
  });
}

bool clsBildZuordnungen::FKT_LeseBilder_FuerKunde_Projekt(const QString& pKdnr_Prj, bool pFuerProjekt) {
  const auto vorbereiten = [](const adodb::Recordset& rs) {
    return [&rs, key1 = rs.Spalte(u"Key1"_s), key2 = rs.Spalte(u"Key2"_s), key3 = rs.Spalte(u"Key3"_s),
               typ1 = rs.Spalte(u"Typ1"_s)](Zeile&, clsBilderSpeicher& satz) {
      satz.Bild_Key1 = rs.Text(key1);
      satz.Bild_Key2 = rs.Text(key2);
      satz.Bild_Key3 = rs.Text(key3);
      satz.Bild_Typ1 = rs.Text(typ1);
    };
  };
  return gemeldet(u"FKT_LeseBilder_FuerKunde_Projekt", [&] {
    AktInd(-1);
    neue_Tabelle();
    QString filter;
    if (!pKdnr_Prj.isEmpty())
      filter = (pFuerProjekt ? u"AND BelegKopfZunft.Projektnummer = '"_s : u"AND BelegKopfZunft.Kundennummer = '"_s) +
          pKdnr_Prj + u"' "_s;
    return lese_Saetze(
        u"SELECT TOP 100 PERCENT dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, "
        "dbo.Bild_Zuordnungen.Key3, dbo.Bild_Zuordnungen.Typ1 "
        "FROM dbo.Bild_Zuordnungen LEFT OUTER JOIN dbo.BelegKopfZunft "
        "ON dbo.Bild_Zuordnungen.Key1 = dbo.BelegKopfZunft.Belegart AND "
        "dbo.Bild_Zuordnungen.Key2 = dbo.BelegKopfZunft.Belegnummer "
        "WHERE (dbo.Bild_Zuordnungen.Typ1 = 'Mon' OR dbo.Bild_Zuordnungen.Typ1 = 'Bel') "_s +
            filter +
            u" GROUP BY dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, "
            "dbo.Bild_Zuordnungen.Key3, dbo.Bild_Zuordnungen.Typ1 "
            "ORDER BY dbo.Bild_Zuordnungen.Key1, dbo.Bild_Zuordnungen.Key2, "
            "dbo.Bild_Zuordnungen.Key3"_s,
        vorbereiten);
  });
}

bool clsBildZuordnungen::FKT_BilderVorhanden(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhere) {
  return gemeldet(u"FKT_BilderVorhanden", [&] {
    const auto rs = lesende_Verbindung().Execute(u"Select Top 1 Key1 from Bild_Zuordnungen "_s +
            Aufbau_Key_Where(pKey1, pKey2, pKey3, pKey4, pBildname, pBildExt, PTyp1, pTyp2, pWhere),
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
