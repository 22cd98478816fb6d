#include <QScopeGuard>
#include <array>
#include <utility>
#include <vector>

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "store/BasZuordnungen.h"
#include "store/clsBildZuordnungen.h"
#include "store/clsBildZuordnungen_Meldung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype Laenge_Schluessel = 50;
constexpr qsizetype Laenge_Text = 250;
constexpr qsizetype Laenge_Kennzeichen = 50;

QString in_Hochkommas(const QString& s) {
  return u'\'' + s + u'\'';
}

}  // namespace

QString clsBildZuordnungen::Aufbau_Key_Where(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhere) {
  return gemeldet(u"Aufbau_Key_Where", [&] {
    const std::array<std::pair<const char16_t*, const QString*>, 8> teile{
        {{u"Key1", &pKey1}, {u"Key2", &pKey2}, {u"Key3", &pKey3}, {u"Key4", &pKey4}, {u"Bildname", &pBildname},
            {u"BildExt", &pBildExt}, {u"Typ1", &PTyp1}, {u"Typ2", &pTyp2}}};
    QString where;
    const auto haenge_an = [&](const QString& bedingung) {
      where += (where.isEmpty() ? QString() : u" and "_s) + bedingung;
    };
    // Nothing is quoted: an apostrophe breaks the statement or becomes a part of its condition.
    for (const auto& [spalte, wert] : teile)
      if (!wert->isEmpty()) haenge_an(QString::fromUtf16(spalte) + u" = "_s + in_Hochkommas(*wert));
    if (!pWhere.isEmpty()) haenge_an(pWhere);
    return where.isEmpty() ? where : u" where "_s + where;
  });
}

bool clsBildZuordnungen::FKT_SpeichernBilder() {
  return gemeldet(u"FKT_SpeichernBilder", [&] {
    schreibe_geaenderte_Zeilen();
    const std::size_t anzahl = zeilen().size();
    loesche_markierte_Zeilen();
    if (zeilen().size() != anzahl && zeilen().empty()) haenge_Zeile_an();
    if (!zeilen().empty()) AktInd(0);
    return true;
  });
}

void clsBildZuordnungen::schreibe_geaenderte_Zeilen() {
  const auto anzahl = static_cast<std::int32_t>(zeilen().size());
  for (std::int32_t i = 0; i < anzahl; ++i) {
    AktInd(i);
    if (!zeile(i).Bild_Changeflag || zeile(i).Bild_Delete) continue;
    if (!Fkt_Update_Insert(zeile(i).Bild_Neu)) continue;
    zeile(i).Bild_Changeflag = false;
    zeile(i).Bild_Neu = false;
  }
}

// The rows leave the table together: taken out one by one, each would move all that stand behind it.
void clsBildZuordnungen::loesche_markierte_Zeilen() {
  std::vector<bool> geloescht(zeilen().size());
  const auto raeume_auf = qScopeGuard([&] {
    Zeilen& alle = zeilen();
    std::size_t bleibende = 0;
    for (std::size_t i = 0; i < alle.size(); ++i) {
      if (geloescht[i]) continue;
      if (bleibende != i) alle[bleibende] = std::move(alle[i]);
      ++bleibende;
    }
    alle.resize(bleibende);
  });
  for (std::int32_t i = letzte_Zeile(); i >= 0; --i) {
    AktInd(i);
    if (!zeile(i).Bild_Delete) continue;
    geloescht[static_cast<std::size_t>(i)] = FKT_DeleteBilder(Bild_Key1(), Bild_Key2(), Bild_Key3(), Bild_Key4(),
        Bild_Bildname(), Bild_BildExt(), Bild_Typ1(), Bild_Typ2(), {});
  }
}

bool clsBildZuordnungen::Fkt_Update_Insert(bool pNeu) {
  return gemeldet(u"Fkt_Update_Insert", [&] {
    clsBilderSpeicher& satz = aktueller_Satz();
    QString kennzeichen(Laenge_Kennzeichen, u' ');
    SetzeString_TrueFalse(satz.Bild_NeueSeite, kennzeichen, 1);
    SetzeString_TrueFalse(satz.Bild_AlsAnhang, kennzeichen, 2);
    SetzeString_TrueFalse(satz.Bild_DruckGesamteSeite, kennzeichen, 3);
    SetzeString_TrueFalse(satz.Bild_Drucken, kennzeichen, 4);
    satz.Bild_Druckkennzeichen = kennzeichen;
    // The doubled quotes stay in the record, so that a second save without a read
    // doubles them again. Meant so.
    satz.Bild_Beschreibung.replace(u"'"_s, u"''"_s);
    const QString anweisung = pNeu ? insert_Anweisung() : update_Anweisung();
    return BasZuordnungen::CmdSql(anweisung, mConnectstring, true);
  });
}

QString clsBildZuordnungen::insert_Anweisung() {
  clsBilderSpeicher& satz = aktueller_Satz();
  for (QString* teil : {&satz.Bild_Key1, &satz.Bild_Key2, &satz.Bild_Key3, &satz.Bild_Key4, &satz.Bild_Bildname,
           &satz.Bild_BildExt, &satz.Bild_Typ1, &satz.Bild_Typ2})
    *teil = Fkt_LeerAlsStrich(*teil);
  QString werte = in_Hochkommas(text::Left(satz.Bild_Key1, Laenge_Schluessel));
  for (const QString* schluessel : {&satz.Bild_Key2, &satz.Bild_Key3, &satz.Bild_Key4, &satz.Bild_Bildname})
    werte += UPrN_Insert(text::Left(*schluessel, Laenge_Schluessel));
  for (const QString* ganz : {&satz.Bild_BildExt, &satz.Bild_Typ1, &satz.Bild_Typ2}) werte += UPrN_Insert(*ganz);
  for (const QString* lang : {&satz.Bild_Pfad, &satz.Bild_Beschreibung})
    werte += UPrN_Insert(text::Left(*lang, Laenge_Text));
  for (const QString* ganz : {&satz.Bild_Druckkennzeichen, &satz.Bild_GrafikAnbNr, &satz.Bild_Grafik_Ursprung})
    werte += UPrN_Insert(*ganz);
  return u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, "
         "Typ1, Typ2, BildPfad, "
         "Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex"
         ") Values ("_s +
      werte + u", "_s + QString::number(satz.Bild_SortIndex) + u')';
}

QString clsBildZuordnungen::update_Anweisung() const {
  const clsBilderSpeicher& satz = aktueller_Satz();
  const auto kurz = [](const QString& s) { return text::Left(s, Laenge_Schluessel); };
  const auto lang = [](const QString& s) { return text::Left(s, Laenge_Text); };
  // The row is found by the same values that are set, whole where the set ones are cut: an update never moves a row to
  // another identity.
  return u"UPDATE Bild_Zuordnungen SET "_s +                              //
      u"Key1 = "_s + in_Hochkommas(kurz(satz.Bild_Key1)) + u", "_s +      //
      u"Key2"_s + UPrN(kurz(satz.Bild_Key2)) +                            //
      u"Key3"_s + UPrN(kurz(satz.Bild_Key3)) +                            //
      u"key4"_s + UPrN(kurz(satz.Bild_Key4)) +                            //
      u"Bildname"_s + UPrN(kurz(satz.Bild_Bildname)) +                    //
      u"BildExt"_s + UPrN(satz.Bild_BildExt) +                            //
      u"Typ1"_s + UPrN(satz.Bild_Typ1) +                                  //
      u"Typ2"_s + UPrN(satz.Bild_Typ2) +                                  //
      u"BildPfad"_s + UPrN(lang(satz.Bild_Pfad)) +                        //
      u"Beschreibung"_s + UPrN(lang(satz.Bild_Beschreibung)) +            //
      u"Druckkennzeichen"_s + UPrN(satz.Bild_Druckkennzeichen) +          //
      u"Grafik_Ursprung"_s + UPrN(satz.Bild_Grafik_Ursprung) +            //
      u"GrafikAnbNr"_s + UPrN(satz.Bild_GrafikAnbNr) +                    //
      u"SortIndex"_s + u" = "_s + QString::number(satz.Bild_SortIndex) +  //
      u" WHERE "_s +                                                      //
      u"Key1 = "_s + in_Hochkommas(satz.Bild_Key1) +                      //
      u" and Key2 = "_s + in_Hochkommas(satz.Bild_Key2) +                 //
      u" and Key3 = "_s + in_Hochkommas(satz.Bild_Key3) +                 //
      u" and Key4 = "_s + in_Hochkommas(satz.Bild_Key4) +                 //
      u" and Bildname = "_s + in_Hochkommas(satz.Bild_Bildname) +         //
      u" and BildExt = "_s + in_Hochkommas(satz.Bild_BildExt) +           //
      u" and Typ1 = "_s + in_Hochkommas(satz.Bild_Typ1) +                 //
      u" and Typ2 = "_s + in_Hochkommas(satz.Bild_Typ2);
}

bool clsBildZuordnungen::FKT_DeleteBilder(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhereAllg) {
  return gemeldet(u"FKT_DeleteBilder", [&] {
    const QString where = Aufbau_Key_Where(pKey1, pKey2, pKey3, pKey4, pBildname, pBildExt, PTyp1, pTyp2, pWhereAllg);
    // A delete without any condition is never sent.
    if (where.isEmpty()) return true;
    return BasZuordnungen::CmdSql(u"Delete from Bild_Zuordnungen "_s + where, mConnectstring, true);
  });
}

bool clsBildZuordnungen::SetzeString_TrueFalse(bool pWert, QString& pFeld, std::int32_t ppos) {
  if (ppos < 1 || ppos > pFeld.size()) return false;
  pFeld[ppos - 1] = pWert ? u'1' : u'0';
  return true;
}

QString clsBildZuordnungen::Fkt_LeerAlsStrich(const QString& s) const {
  return s.isEmpty() ? u"-"_s : s;
}

QString clsBildZuordnungen::UPrN_Insert(const QString& s) const {
  return s.isEmpty() ? u",NULL"_s : u","_s + in_Hochkommas(s);
}
