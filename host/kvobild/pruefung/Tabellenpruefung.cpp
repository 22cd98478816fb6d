#include "host/kvobild/pruefung/Tabellenpruefung.h"

#include <algorithm>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Schema.h"
#include "store/Felder.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool gehoert_zur_Kennung(const QString& spalte) {
  return std::any_of(felder::Kennung.begin(), felder::Kennung.end(),
      [&](const felder::Feld& feld) { return spalte.compare(feld.Spalte, Qt::CaseInsensitive) == 0; });
}

/// The type as the script writes it.
QString wie_erwartet(const schema::Spalte& spalte) {
  return spalte.laenge == 0 ? spalte.typ : u"%1(%2)"_s.arg(spalte.typ, QString::number(spalte.laenge));
}

class Pruefer {
 public:
  explicit Pruefer(adodb::Connection& verbindung) : verbindung_(verbindung), art_(Datenbankart::von(verbindung)) {}

  Tabellenlage pruefe() {
    const bool lesbar = pruefe_Tabelle(schema::Zuordnungen);
    pruefe_Tabelle(schema::Belegkoepfe);
    lage_.lesbar = lesbar;
    return lage_;
  }

 private:
  void melde(const QString& kennung, const QString& text, bool sperrt = false) {
    lage_.befunde.append({kennung, text, sperrt, 0, {}, false});
  }

  /// True when its rows can be read with all expected columns.
  bool pruefe_Tabelle(const QString& tabelle) {
    const QList<Spaltenlage> gefundene = lies_Spalten(tabelle);
    // A table of which the user may do nothing at all is invisible as well; the statement itself tells the difference.
    if (gefundene.isEmpty() && fehlt(tabelle)) return false;
    QStringList vorhandene;
    for (const schema::Spalte& spalte : schema::spalten(tabelle))
      if (pruefe_Spalte(tabelle, spalte, gefundene)) vorhandene.append(spalte.name);
    lage_.tabellen.append(tabelle);
    lage_.spalten.append(static_cast<int>(vorhandene.size()));
    if (tabelle == schema::Zuordnungen) {
      pruefe_Schluessel(gefundene);
      pruefe_Fremde();
    }
    return versuche_Anweisungen(tabelle, vorhandene) && vorhandene.size() == schema::spalten(tabelle).size();
  }

  QList<Spaltenlage> lies_Spalten(const QString& tabelle) {
    QList<Spaltenlage> liste;
    for (const auto satz = verbindung_.Execute(art_.Spalten.arg(tabelle)); !satz->Eof(); satz->MoveNext())
      liste.append(art_.spalte(*satz));
    return liste;
  }

  bool fehlt(const QString& tabelle) {
    const auto ausfall =
        versuche_Datenbank([&] { verbindung_.Execute(u"SELECT 1 FROM "_s + tabelle + u" WHERE 1 = 0"_s); });
    if (!ausfall || ausfall->grund != Datenbankgrund::Tabelle_fehlt) return false;
    if (tabelle == schema::Zuordnungen)
      melde(
          u"tabelle_fehlt"_s, u"Die Tabelle Bild_Zuordnungen fehlt; „kvobild datenbank anlegen“ legt sie an."_s, true);
    else
      melde(u"tabelle_fehlt"_s,
          u"Die Tabelle BelegKopfZunft des Betriebs fehlt; Bilder nach Kunde oder Projekt sind nicht zu finden."_s,
          true);
    return true;
  }

  bool pruefe_Spalte(const QString& tabelle, const schema::Spalte& erwartet, const QList<Spaltenlage>& gefundene) {
    const QString name = tabelle + u'.' + erwartet.name;
    const auto spalte = std::find_if(gefundene.begin(), gefundene.end(),
        [&](const Spaltenlage& g) { return g.name.compare(erwartet.name, Qt::CaseInsensitive) == 0; });
    // Nothing is visible of a table without a right to it; the statements will tell.
    if (gefundene.isEmpty()) return true;
    if (spalte == gefundene.end()) {
      melde(u"spalte_fehlt"_s, u"Die Spalte %1 fehlt; erwartet ist %2."_s.arg(name, wie_erwartet(erwartet)), true);
      return false;
    }
    const bool Text = erwartet.laenge > 0;
    if (Text ? !spalte->ist_Text : !spalte->ist_Zahl)
      melde(u"spalte_typ"_s,
          u"Die Spalte %1 ist „%2“; erwartet ist %3."_s.arg(name, spalte->typ, wie_erwartet(erwartet)));
    if (!spalte->vergleicht_gleich && !vergleicht_doch(tabelle, erwartet.name))
      melde(u"spalte_sortierung"_s,
          u"Die Spalte %1 unterscheidet beim Vergleichen Groß und klein; so bleiben Zuordnungen unentdeckt."_s.arg(
              name));
    // The host's table is only read.
    if (tabelle == schema::Zuordnungen) pruefe_Platz(name, erwartet, *spalte);
    return true;
  }

  /// A view of SQLite has its columns' comparison from the tables behind, where no definition tells it. Rows of a UNION
  /// are compared as its first column says.
  bool vergleicht_doch(const QString& tabelle, const QString& spalte) {
    return art_.ist_Datei &&
        verbindung_
            .Execute(u"SELECT 1 FROM (SELECT %1 FROM %2 WHERE 1 = 0 UNION SELECT 'a' UNION SELECT 'A')"_s.arg(
                spalte, tabelle))
            ->RecordCount() == 1;
  }

  void pruefe_Platz(const QString& name, const schema::Spalte& erwartet, const Spaltenlage& spalte) {
    if (spalte.laenge >= 0 && spalte.laenge < erwartet.laenge)
      melde(u"spalte_kurz"_s,
          u"Die Spalte %1 fasst %2 Zeichen, nötig sind %3; Zeilen mit längeren Werten sind nicht zu schreiben."_s.arg(
              name, QString::number(spalte.laenge), QString::number(erwartet.laenge)));
    // These three are never written empty.
    const bool immer_gefuellt = QStringList{u"Key1"_s, u"Druckkennzeichen"_s, u"SortIndex"_s}.contains(erwartet.name);
    if (!spalte.nullbar && !immer_gefuellt)
      melde(u"spalte_pflicht"_s,
          u"Die Spalte %1 nimmt kein NULL; Zeilen ohne diese Angabe sind nicht zu schreiben."_s.arg(name));
  }

  void pruefe_Schluessel(const QList<Spaltenlage>& gefundene) {
    if (art_.Schluesselbytes == 0) return;
    int bytes = 0;
    for (const Spaltenlage& spalte : gefundene) {
      if (!gehoert_zur_Kennung(spalte.name)) continue;
      if (spalte.laenge < 0) bytes += art_.Schluesselbytes + 1;
      bytes += spalte.laenge * (spalte.typ.startsWith(u'n') ? 2 : 1);
    }
    if (bytes > art_.Schluesselbytes)
      melde(u"schluessel_breit"_s,
          u"Die acht Spalten des Schlüssels von Bild_Zuordnungen sind zusammen breiter als %1 Bytes; ein Index "
          "darüber ist nicht möglich oder nimmt nicht jede Zeile an."_s.arg(art_.Schluesselbytes));
  }

  /// Columns of somebody else that would refuse every new row; the statements below meet no row and can't tell.
  void pruefe_Fremde() {
    QStringList eigene;
    for (const schema::Spalte& spalte : schema::spalten(schema::Zuordnungen)) eigene.append(spalte.name);
    const auto satz = verbindung_.Execute(art_.Pflichtspalten);
    for (; !satz->Eof(); satz->MoveNext())
      if (!eigene.contains(satz->Text(0), Qt::CaseInsensitive))
        melde(u"spalte_fremd"_s,
            u"Die Spalte Bild_Zuordnungen.%1 kennt das System nicht; ohne NULL und ohne Vorgabe lässt sie keine neue "
            "Zeile zu."_s.arg(satz->Text(0)),
            true);
  }

  /// The statements name the tables as the system does, without a schema. Each of them meets no row, so that even
  /// without the transaction nothing would change; the transaction is for a trigger, which a server runs for no rows
  /// too, and what it writes goes back with it. The right is checked all the same: a server checks it before it looks
  /// for rows, and SQLite asks for the write lock first.
  bool versuche_Anweisungen(const QString& tabelle, const QStringList& spalten) {
    const QString liste = spalten.join(u", "_s);
    const bool lesen = versuche_eine(u"SELECT"_s, tabelle, u"SELECT %1 FROM %2 WHERE 1 = 0"_s.arg(liste, tabelle));
    if (tabelle != schema::Zuordnungen) return lesen;
    QStringList werte;
    QStringList zuweisungen;
    for (const QString& spalte : spalten) {
      werte.append(spalte == felder::SortIndex ? u"0"_s : u"''"_s);
      zuweisungen.append(spalte + u" = "_s + werte.last());
    }
    versuche_eine(
        u"INSERT"_s, tabelle, u"INSERT INTO %1 (%2) SELECT %3 WHERE 1 = 0"_s.arg(tabelle, liste, werte.join(u", "_s)));
    versuche_eine(u"UPDATE"_s, tabelle, u"UPDATE %1 SET %2 WHERE 1 = 0"_s.arg(tabelle, zuweisungen.join(u", "_s)));
    versuche_eine(u"DELETE"_s, tabelle, u"DELETE FROM %1 WHERE 1 = 0"_s.arg(tabelle));
    return lesen;
  }

  bool versuche_eine(const QString& was, const QString& tabelle, const QString& anweisung) {
    verbindung_.Execute(u"BEGIN TRANSACTION"_s);
    const auto grund = versuche([&] { verbindung_.Execute(anweisung); });
    // A failure may have ended the transaction; where the connection is gone, the next statement says so.
    gelingt([&] { verbindung_.Execute(art_.Ruecknahme); });
    lage_.rechte.append({was, tabelle, !grund});
    if (grund)
      melde(u"recht_fehlt"_s,
          u"%1 auf %2 ist nicht erlaubt oder geht nicht: %3"_s.arg(was, tabelle, grund->Beschreibung()), true);
    return !grund;
  }

  adodb::Connection& verbindung_;
  const Datenbankart& art_;
  Tabellenlage lage_;
};

}  // namespace

Tabellenlage pruefe_Tabellen(adodb::Connection& verbindung) {
  return Pruefer(verbindung).pruefe();
}
