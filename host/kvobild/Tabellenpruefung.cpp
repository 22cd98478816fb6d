#include "host/kvobild/Tabellenpruefung.h"

#include <QHash>
#include <QRegularExpression>
#include <algorithm>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Schema.h"
#include "store/Felder.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A column as it stands in the database.
struct Gefundene {
  QString name;
  QString typ;
  /// In characters; -1 has no end.
  int laenge = -1;
  bool nullbar = true;
  bool ist_Text = false;
  bool ist_Zahl = false;
  /// Compares without regard to the case of letters, as the statements rely on.
  bool vergleicht_gleich = true;
};

constexpr int Schluesselbytes = 1700;

bool gehoert_zur_Kennung(const QString& spalte) {
  return std::any_of(felder::Kennung.begin(), felder::Kennung.end(),
      [&](const felder::Feld& feld) { return spalte.compare(feld.Spalte, Qt::CaseInsensitive) == 0; });
}

Gefundene aus_Server(const adodb::Recordset& satz) {
  Gefundene spalte{satz.Text(0), satz.Text(1).toLower()};
  spalte.laenge = satz.Text(2).isEmpty() ? -1 : satz.Text(2).toInt();
  spalte.nullbar = satz.Text(3).compare("NO"_L1, Qt::CaseInsensitive) != 0;
  // A char column fills up with blanks, which do no harm where the text is as long as the column anyway.
  const bool gefuellt = spalte.typ == "char"_L1 || spalte.typ == "nchar"_L1;
  spalte.ist_Text = spalte.typ == "nvarchar"_L1 || spalte.typ == "varchar"_L1 ||
      (gefuellt && spalte.name.compare("Druckkennzeichen"_L1, Qt::CaseInsensitive) == 0);
  spalte.ist_Zahl = QStringList{u"smallint"_s, u"int"_s, u"bigint"_s}.contains(spalte.typ);
  const QString sortierung = satz.Text(4).toUpper();
  spalte.vergleicht_gleich = !sortierung.contains("_CS"_L1) && !sortierung.contains("_BIN"_L1);
  return spalte;
}

/// SQLite takes any length; what bounds it is the condition that the script gives the column.
Gefundene aus_Datei(const adodb::Recordset& satz) {
  const QString definition = schema::definitionen(satz.Text(3)).value(satz.Text(0).toUpper());
  Gefundene spalte{satz.Text(0), satz.Text(1).toLower()};
  const QRegularExpression laenge(
      u"\\bLEN\\s*\\([^)]*\\)\\s*<=\\s*(\\d+)"_s, QRegularExpression::CaseInsensitiveOption);
  if (const auto treffer = laenge.match(definition); treffer.hasMatch()) spalte.laenge = treffer.captured(1).toInt();
  spalte.nullbar = satz.Text(2) == "0"_L1;
  spalte.ist_Text = spalte.typ.contains("text"_L1) || spalte.typ.contains("char"_L1);
  spalte.ist_Zahl = spalte.typ.contains("int"_L1);
  static const QRegularExpression Sortierung(
      u"\\bCOLLATE\\s+[\"\\[`]?SERVERTEXT"_s, QRegularExpression::CaseInsensitiveOption);
  spalte.vergleicht_gleich = !spalte.ist_Text || definition.contains(Sortierung);
  return spalte;
}

/// How the script writes it.
QString wie_erwartet(const schema::Spalte& spalte) {
  return spalte.laenge == 0 ? spalte.typ : u"%1(%2)"_s.arg(spalte.typ, QString::number(spalte.laenge));
}

class Pruefer {
 public:
  explicit Pruefer(adodb::Connection& verbindung)
      : verbindung_(verbindung), ist_Server_(!datenbankdatei(verbindung.ConnectionString())) {}

  Tabellenlage pruefe() {
    const bool lesbar = pruefe_Tabelle(schema::Zuordnungen);
    pruefe_Tabelle(schema::Belegkoepfe);
    lage_.lesbar = lesbar;
    return lage_;
  }

 private:
  void melde(const QString& kennung, const QString& text, bool sperrt = false) {
    lage_.befunde.append({kennung, text, sperrt, 0, {}});
  }

  /// True when its rows can be read with all expected columns.
  bool pruefe_Tabelle(const QString& tabelle) {
    const QList<Gefundene> gefundene = lies_Spalten(tabelle);
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

  QList<Gefundene> lies_Spalten(const QString& tabelle) {
    const QString anweisung = ist_Server_
        ? u"SELECT COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE, COLLATION_NAME FROM "
          "INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA = 'dbo' AND TABLE_NAME = '%1' "
          "ORDER BY ORDINAL_POSITION"_s
        : u"SELECT p.name, p.type, p.\"notnull\", m.sql FROM sqlite_master m JOIN "
          "pragma_table_info(m.name) p WHERE m.name = '%1' COLLATE NOCASE ORDER BY p.cid"_s;
    QList<Gefundene> liste;
    for (const auto satz = verbindung_.Execute(anweisung.arg(tabelle)); !satz->Eof(); satz->MoveNext())
      liste.append(ist_Server_ ? aus_Server(*satz) : aus_Datei(*satz));
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

  bool pruefe_Spalte(const QString& tabelle, const schema::Spalte& erwartet, const QList<Gefundene>& gefundene) {
    const QString name = tabelle + u'.' + erwartet.name;
    const auto spalte = std::find_if(gefundene.begin(), gefundene.end(),
        [&](const Gefundene& g) { return g.name.compare(erwartet.name, Qt::CaseInsensitive) == 0; });
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
    if (!spalte->vergleicht_gleich)
      melde(u"spalte_sortierung"_s,
          u"Die Spalte %1 unterscheidet beim Vergleichen Groß und klein; so bleiben Zuordnungen unentdeckt."_s.arg(
              name));
    // The host's table is only read.
    if (tabelle == schema::Zuordnungen) pruefe_Platz(name, erwartet, *spalte);
    return true;
  }

  void pruefe_Platz(const QString& name, const schema::Spalte& erwartet, const Gefundene& spalte) {
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

  void pruefe_Schluessel(const QList<Gefundene>& gefundene) {
    if (!ist_Server_) return;
    int bytes = 0;
    for (const Gefundene& spalte : gefundene) {
      if (!gehoert_zur_Kennung(spalte.name)) continue;
      if (spalte.laenge < 0) bytes += Schluesselbytes + 1;
      bytes += spalte.laenge * (spalte.typ.startsWith(u'n') ? 2 : 1);
    }
    if (bytes > Schluesselbytes)
      melde(u"schluessel_breit"_s,
          u"Die acht Spalten des Schlüssels von Bild_Zuordnungen sind zusammen breiter als 1700 Bytes; ein Index "
          "darüber ist nicht möglich oder nimmt nicht jede Zeile an."_s);
  }

  /// Columns of somebody else that would refuse every new row; the statements below meet no row and can't tell.
  void pruefe_Fremde() {
    QStringList eigene;
    for (const schema::Spalte& spalte : schema::spalten(schema::Zuordnungen)) eigene.append(spalte.name);
    // 189 is the type of a row's version, which the server fills in itself.
    const auto satz = verbindung_.Execute(ist_Server_
            ? u"SELECT name FROM sys.columns WHERE object_id = OBJECT_ID(N'dbo.Bild_Zuordnungen') AND "
              "is_nullable = 0 AND is_identity = 0 AND is_computed = 0 AND default_object_id = 0 AND "
              "system_type_id <> 189"_s
            : u"SELECT name FROM pragma_table_info('Bild_Zuordnungen') WHERE \"notnull\" = 1 AND pk = 0 AND "
              "dflt_value IS NULL"_s);
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
    gelingt([&] {
      verbindung_.Execute(ist_Server_ ? u"IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"_s : u"ROLLBACK TRANSACTION"_s);
    });
    lage_.rechte.append({was, tabelle, !grund});
    if (grund)
      melde(u"recht_fehlt"_s,
          u"%1 auf %2 ist nicht erlaubt oder geht nicht: %3"_s.arg(was, tabelle, grund->Beschreibung()), true);
    return !grund;
  }

  adodb::Connection& verbindung_;
  bool ist_Server_;
  Tabellenlage lage_;
};

}  // namespace

Tabellenlage pruefe_Tabellen(adodb::Connection& verbindung) {
  return Pruefer(verbindung).pruefe();
}
