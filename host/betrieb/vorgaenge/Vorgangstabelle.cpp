#include "host/betrieb/vorgaenge/Vorgangstabelle.h"

#include <vector>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/vorgaenge/Transaktion.h"
#include "host/betrieb/vorgaenge/Zeitangabe.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;

namespace {

const QString Bedingung = u" WHERE Typ1 = ? AND Key1 = ? AND Key2 = ? AND Key3 = ?"_s;

std::vector<Wert> werte_von(const Vorgangsschluessel& s) {
  return {s.typ1, s.keys[0], s.keys[1], s.keys[2]};
}

Wert oder_Null(const std::optional<QString>& text) {
  return text ? Wert(*text) : Wert();
}

/// All columns of a record, in the order of its struct. One without a time was touched this moment.
std::vector<Wert> werte_von(const Vorgangssatz& satz) {
  std::vector<Wert> werte = werte_von(satz.schluessel);
  werte.insert(werte.end(),
      {oder_Null(satz.kundennummer), oder_Null(satz.projektnummer), satz.text, oder_Null(satz.ordner),
          satz.stand.value_or(Stand_jetzt())});
  return werte;
}

std::optional<QString> text_oder_Null(const adodb::Recordset& satz, std::int32_t spalte) {
  return std::holds_alternative<Null>(satz.Value(spalte)) ? std::nullopt : std::optional(satz.Text(spalte));
}

QString aus_Strich(const QString& teil) {
  return teil == "-"_L1 ? QString() : teil;
}

/// One transaction; a failure ends with Abbruch that begins with `sonst`.
template <class Anweisung>
void schreibe(adodb::Connection& verbindung, const QString& sonst, Anweisung&& anweisung) {
  const auto ausfall = versuche_Datenbank([&] {
    Schreibtransaktion transaktion(verbindung);
    anweisung();
    transaktion.beende();
  });
  if (ausfall) throw Abbruch(Ausgang::Datenbank, sonst + ausfall->worte);
}

void mache_Kunden(adodb::Connection& verbindung, const std::optional<Kunde>& neuer) {
  if (!neuer) return;
  if (vorgangstabelle::kunde(verbindung, neuer->nummer))
    throw Abbruch(
        Ausgang::Datenbank, u"Den Kunden %1 gibt es inzwischen schon; es ist nichts gespeichert."_s.arg(neuer->nummer));
  verbindung.Execute(
      u"INSERT INTO Kunden (Kundennummer, Name, Ort) VALUES (?, ?, ?)"_s, {neuer->nummer, neuer->name, neuer->ort});
}

void pruefe_frei(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel) {
  if (vorgangstabelle::gibt_es(verbindung, schluessel))
    throw Abbruch(Ausgang::Datenbank,
        u"%1 gibt es schon; es ist nichts gespeichert."_s.arg(vorgangstabelle::genannt(schluessel)));
}

void pruefe_unveraendert(adodb::Connection& verbindung, const Vorgangssatz& gelesen) {
  const auto jetzt = vorgangstabelle::lies(verbindung, gelesen.schluessel);
  const QString name = vorgangstabelle::genannt(gelesen.schluessel);
  if (!jetzt) throw Abbruch(Ausgang::Datenbank, u"%1 gibt es nicht mehr."_s.arg(name));
  if (*jetzt != gelesen)
    throw Abbruch(Ausgang::Datenbank,
        u"%1 ist inzwischen an einem anderen Platz geändert; es ist nichts gespeichert."_s.arg(name));
}

void pruefe_neue_Nummer(adodb::Connection& verbindung, const Vorgangsschluessel& alt, const Vorgangsschluessel& neu) {
  if (const int bilder = vorgangstabelle::anzahl_Bilder(verbindung, alt); bilder > 0)
    throw Abbruch(Ausgang::Datenbank,
        u"%1 hat inzwischen %2; Art und Nummer bleiben deshalb, und es ist nichts gespeichert."_s.arg(
            vorgangstabelle::genannt(alt), vorgang::anzahl_Bilder(bilder)));
  const auto treffer = vorgangstabelle::lies(verbindung, neu);
  // Another spelling of its own number is no other record.
  if (treffer && treffer->schluessel != alt) pruefe_frei(verbindung, neu);
}

/// What an article has beside its number stands in a table of its own, where a data folder has it.
void nimm_Artikelzusatz_mit(
    adodb::Connection& verbindung, const Vorgangsschluessel& alt, const Vorgangsschluessel& neu) {
  const bool artikel = text::UCase(alt.typ1) == "ART"_L1 && text::UCase(neu.typ1) == "ART"_L1;
  const auto tabelle =
      verbindung.Execute(u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = 'Artikelzusatz'"_s);
  if (!artikel || tabelle->Eof()) return;
  verbindung.Execute(
      u"UPDATE Artikelzusatz SET Artikelnummer = ? WHERE Artikelnummer = ?"_s, {neu.keys[0], alt.keys[0]});
}

}  // namespace

namespace vorgangstabelle {

Vorgangsschluessel schluessel_von(const Vorgang& vorgang) {
  const Datensatz& satz = vorgang.satz;
  return {satz.typ1, {aus_Strich(satz.key1), aus_Strich(satz.key2), aus_Strich(satz.key3)}};
}

QString genannt(const Vorgangsschluessel& schluessel) {
  const auto& [eins, zwei, drei] = schluessel.keys;
  return vorgang::art_von(schluessel.typ1).einzahl + u' ' +
      vorgang::aus_Schluesseln(schluessel.typ1, eins, zwei, drei).nummer;
}

std::optional<Vorgangssatz> lies(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel) {
  const auto satz = verbindung.Execute(
      u"SELECT Typ1, Key1, Key2, Key3, Kundennummer, Projektnummer, Text, Ordner, Stand FROM Vorgaenge"_s + Bedingung,
      werte_von(schluessel));
  if (satz->Eof()) return std::nullopt;
  return Vorgangssatz{{satz->Text(0), {satz->Text(1), satz->Text(2), satz->Text(3)}}, text_oder_Null(*satz, 4),
      text_oder_Null(*satz, 5), satz->Text(6), text_oder_Null(*satz, 7), text_oder_Null(*satz, 8)};
}

bool gibt_es(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel) {
  return !verbindung.Execute(u"SELECT 1 FROM Vorgaenge"_s + Bedingung, werte_von(schluessel))->Eof();
}

int anzahl_Bilder(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel) {
  std::vector<Wert> werte{schluessel.typ1};
  for (const QString& key : schluessel.keys) werte.emplace_back(key.isEmpty() ? u"-"_s : key);
  // Other programs' rows may hold nothing where ours hold "-".
  const auto satz = verbindung.Execute(
      u"SELECT COUNT(*) FROM Bild_Zuordnungen WHERE Typ1 = ? AND Key1 = ? AND "
      "COALESCE(NULLIF(Key2, ''), '-') = ? COLLATE SERVERTEXT AND "
      "COALESCE(NULLIF(Key3, ''), '-') = ? COLLATE SERVERTEXT"_s,
      werte);
  return satz->Text(0).toInt();
}

std::optional<Kunde> kunde(adodb::Connection& verbindung, const QString& nummer) {
  const auto satz =
      verbindung.Execute(u"SELECT Kundennummer, Name, Ort FROM Kunden WHERE Kundennummer = ?"_s, {nummer});
  if (satz->Eof()) return std::nullopt;
  return Kunde{satz->Text(0), satz->Text(1), satz->Text(2)};
}

QList<Kunde> kunden(adodb::Connection& verbindung, const QString& eingabe, int hoechstens) {
  const QString wort = text::Trim(eingabe);
  QList<Kunde> liste;
  const auto satz = verbindung.Execute(
      u"SELECT Kundennummer, Name, Ort FROM Kunden WHERE SUBSTR(Kundennummer, 1, LENGTH(?)) = ? COLLATE SERVERTEXT "
      "OR INSTR(SUCHTEXT(Name || ' ' || Ort), SUCHTEXT(?)) > 0 ORDER BY Kundennummer LIMIT ?"_s,
      {wort, wort, wort, std::int64_t{hoechstens}});
  for (; !satz->Eof(); satz->MoveNext()) liste.append({satz->Text(0), satz->Text(1), satz->Text(2)});
  return liste;
}

void mache(adodb::Connection& verbindung, const Vorgangssatz& satz, const std::optional<Kunde>& neuer_Kunde) {
  schreibe(verbindung, u"Der Vorgang ist nicht gespeichert: "_s, [&] {
    pruefe_frei(verbindung, satz.schluessel);
    mache_Kunden(verbindung, neuer_Kunde);
    verbindung.Execute(
        u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Projektnummer, Text, Ordner, Stand) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        werte_von(satz));
  });
}

void aendere(adodb::Connection& verbindung, const Vorgangssatz& gelesen, const Vorgangssatz& neu,
    const std::optional<Kunde>& neuer_Kunde) {
  schreibe(verbindung, u"Der Vorgang ist nicht gespeichert: "_s, [&] {
    pruefe_unveraendert(verbindung, gelesen);
    if (neu.schluessel != gelesen.schluessel) {
      pruefe_neue_Nummer(verbindung, gelesen.schluessel, neu.schluessel);
      nimm_Artikelzusatz_mit(verbindung, gelesen.schluessel, neu.schluessel);
    }
    mache_Kunden(verbindung, neuer_Kunde);
    std::vector<Wert> werte = werte_von(neu);
    for (const Wert& wert : werte_von(gelesen.schluessel)) werte.push_back(wert);
    verbindung.Execute(
        u"UPDATE Vorgaenge SET Typ1 = ?, Key1 = ?, Key2 = ?, Key3 = ?, Kundennummer = ?, Projektnummer = ?, Text = ?, "
        "Ordner = ?, Stand = ?"_s +
            Bedingung,
        werte);
  });
}

void loesche(adodb::Connection& verbindung, const Vorgangsschluessel& schluessel) {
  schreibe(verbindung, u"Der Vorgang ist nicht gelöscht: "_s, [&] {
    if (const int bilder = anzahl_Bilder(verbindung, schluessel); bilder > 0)
      throw Abbruch(Ausgang::Datenbank,
          u"%1 hat %2 und ist nicht gelöscht."_s.arg(genannt(schluessel), vorgang::anzahl_Bilder(bilder)));
    if (!gibt_es(verbindung, schluessel))
      throw Abbruch(Ausgang::Datenbank, u"%1 gibt es nicht mehr."_s.arg(genannt(schluessel)));
    verbindung.Execute(u"DELETE FROM Vorgaenge"_s + Bedingung, werte_von(schluessel));
  });
}

}  // namespace vorgangstabelle
