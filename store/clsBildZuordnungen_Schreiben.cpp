#include <QScopeGuard>
#include <QStringList>
#include <utility>
#include <vector>

#include "platform/basic/Fehlerbehandlung.h"
#include "store/BasZuordnungen.h"
#include "store/Bildereignis.h"
#include "store/Felder.h"
#include "store/clsBildZuordnungen.h"
#include "store/clsBildZuordnungen_Meldung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString in_Hochkommas(const QString& s) {
  return u'\'' + s + u'\'';
}

/// Nothing is quoted: an apostrophe breaks the statement or becomes a part of its condition.
QString bedingung(const felder::Feld& feld, const QString& wert) {
  return feld.Name.toString() + u" = "_s + in_Hochkommas(wert);
}

}  // namespace

QString clsBildZuordnungen::Aufbau_Key_Where(const Kennung& kennung, const QString& pWhere) {
  return gemeldet(u"Aufbau_Key_Where", [&] {
    QStringList teile;
    for (std::size_t i = 0; i < kennung.size(); ++i)
      if (!kennung[i]->isEmpty()) teile.append(bedingung(felder::Kennung[i], *kennung[i]));
    if (!pWhere.isEmpty()) teile.append(pWhere);
    return teile.isEmpty() ? QString() : u" where "_s + teile.join(u" and "_s);
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
    const bool gelungen = FKT_DeleteBilder(Bild_Key1(), Bild_Key2(), Bild_Key3(), Bild_Key4(), Bild_Bildname(),
        Bild_BildExt(), Bild_Typ1(), Bild_Typ2(), {});
    geloescht[static_cast<std::size_t>(i)] = gelungen;
    if (AktBildObj) bildereignis::melde(Bildereignis::von(*AktBildObj, Bildereignis::Tat::Entfernen, gelungen));
  }
}

bool clsBildZuordnungen::Fkt_Update_Insert(bool pNeu) {
  return gemeldet(u"Fkt_Update_Insert", [&] {
    clsBilderSpeicher& satz = aktueller_Satz();
    QString kennzeichen(felder::Kurz, u' ');
    std::int32_t stelle = 0;
    for (const auto feld : felder::Kennzeichen) SetzeString_TrueFalse(satz.*feld, kennzeichen, ++stelle);
    satz.Bild_Druckkennzeichen = kennzeichen;
    // The doubled quotes stay in the record, so that a second save without a read doubles them again. Meant so.
    for (const felder::Feld& feld : felder::Texte)
      if (feld.besonderes == felder::Besonderheit::Verdoppelt) (satz.*feld.Wert).replace(u"'"_s, u"''"_s);
    const QString anweisung = pNeu ? insert_Anweisung() : update_Anweisung();
    const bool gelungen = BasZuordnungen::CmdSql(anweisung, mConnectstring, true);
    if (pNeu) bildereignis::melde(Bildereignis::von(satz, Bildereignis::Tat::Zuordnen, gelungen));
    return gelungen;
  });
}

QString clsBildZuordnungen::insert_Anweisung() {
  clsBilderSpeicher& satz = aktueller_Satz();
  for (const felder::Feld& feld : felder::Kennung) satz.*feld.Wert = Fkt_LeerAlsStrich(satz.*feld.Wert);
  QString spalten;
  QString werte;
  for (const felder::Feld& feld : felder::Texte) {
    spalten += feld.Spalte.toString() + u", "_s;
    werte += UPrN_Insert(feld.gekuerzt(satz));
  }
  // Each value brings the comma in front of it, the first one too.
  return u"insert into Bild_Zuordnungen ("_s + spalten + felder::SortIndex.toString() + u") Values ("_s + werte.mid(1) +
      u", "_s + QString::number(satz.Bild_SortIndex) + u')';
}

QString clsBildZuordnungen::update_Anweisung() const {
  const clsBilderSpeicher& satz = aktueller_Satz();
  const felder::Feld& erstes = felder::Texte.front();
  QString gesetzte = erstes.Spalte.toString() + u" = "_s + in_Hochkommas(erstes.gekuerzt(satz)) + u", "_s;
  QString letzte;
  for (const felder::Feld& feld : std::span(felder::Texte).subspan(1))
    (feld.besonderes == felder::Besonderheit::Zuletzt_im_Update ? letzte : gesetzte) +=
        feld.Spalte.toString() + UPrN(feld.gekuerzt(satz));
  // The row is found by the same values that are set, whole where the set ones are cut: an update never moves a row to
  // another identity.
  QStringList kennung;
  for (const felder::Feld& feld : felder::Kennung) kennung.append(bedingung(feld, satz.*feld.Wert));
  return u"UPDATE Bild_Zuordnungen SET "_s + gesetzte + letzte + felder::SortIndex.toString() + u" = "_s +
      QString::number(satz.Bild_SortIndex) + u" WHERE "_s + kennung.join(u" and "_s);
}

bool clsBildZuordnungen::FKT_DeleteBilder(const QString& pKey1, const QString& pKey2, const QString& pKey3,
    const QString& pKey4, const QString& pBildname, const QString& pBildExt, const QString& PTyp1, const QString& pTyp2,
    const QString& pWhereAllg) {
  return gemeldet(u"FKT_DeleteBilder", [&] {
    const QString where =
        Aufbau_Key_Where({&pKey1, &pKey2, &pKey3, &pKey4, &pBildname, &pBildExt, &PTyp1, &pTyp2}, pWhereAllg);
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
  return felder::oder_Strich(s);
}

QString clsBildZuordnungen::UPrN_Insert(const QString& s) const {
  return s.isEmpty() ? u",NULL"_s : u","_s + in_Hochkommas(s);
}
