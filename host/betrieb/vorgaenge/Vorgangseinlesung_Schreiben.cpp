// Writes what was compared, with the search index in step, in one transaction.
#include <algorithm>
#include <limits>
#include <vector>

#include "host/betrieb/vorgaenge/Einlesezeile.h"
#include "host/betrieb/vorgaenge/Transaktion.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung.h"
#include "host/betrieb/vorgaenge/Vorgangseinlesung_Teile.h"
#include "host/betrieb/vorgaenge/Zeitangabe.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;

namespace {

/// Rows that one statement takes: few enough to give up between two of them, many enough that their number is no
/// burden.
constexpr qint64 Teil = 10'000;

QString zuweisung(Vorgangsspalte spalte, const QString& sonst = {}) {
  const QString name = vorgangsspalten::eigenschaft(spalte).name;
  return u"%1 = CASE WHEN (e.Genannte & %2) <> 0 THEN e.%1 ELSE %3 END"_s.arg(
      name, QString::number(bit(spalte)), sonst.isEmpty() ? u"Vorgaenge."_s + name : sonst);
}

}  // namespace

Einlesebefund Vorgangseinlesung::uebernimm(bool fehlerhafte_auslassen) {
  Einlesebefund befund;
  einlesung::geschuetzt([&] {
    melde(Schritt::Schreiben, 0, 1);
    Schreibtransaktion transaktion(verbindung_);
    // From here on nobody else writes.
    befund = verglichen_ == datenversion() ? zaehle() : vergleiche();
    if (befund.falsch > 0 && !fehlerhafte_auslassen) return;
    if (befund.neu + befund.geaendert > 0) schreibe(befund);
    transaktion.beende();
    verglichen_.clear();
  });
  return befund;
}

void Vorgangseinlesung::schreibe(const Einlesebefund& befund) {
  verbindung_.Execute(u"INSERT INTO Vorgaenge_Ruhe (Grund) VALUES ('Einlesen')"_s);
  sammle_Beruehrte();
  const qint64 alte = zahl(u"SELECT COUNT(*) FROM Einlesen_Beruehrte"_s);
  getan_ = 0;
  // Out of the index and with new words, written over all lines, and all of them into the index.
  ganz_ = 2 * alte + (befund.geaendert > 0 ? befund.zeilen() : 0) + (befund.neu > 0 ? befund.zeilen() : 0) + alte +
      befund.neu;
  nimm_aus_dem_Index();
  schreibe_Kunden();
  if (alte > 0) schreibe_Geaenderte();
  if (befund.neu > 0) schreibe_Neue();
  nimm_in_den_Index();
  verbindung_.Execute(u"DELETE FROM Vorgaenge_Ruhe"_s);
  melde(Schritt::Schreiben, ganz_, ganz_);
}

/// The records whose words change: their own, or their customer's.
void Vorgangseinlesung::sammle_Beruehrte() {
  verbindung_.Execute(u"DELETE FROM Einlesen_Beruehrte"_s);
  verbindung_.Execute(u"INSERT OR IGNORE INTO Einlesen_Beruehrte SELECT Nr FROM Einlesen_Zeilen WHERE Art = %1"_s.arg(
      static_cast<int>(Zeilenart::Geaendert)));
  verbindung_.Execute(
      u"INSERT OR IGNORE INTO Einlesen_Beruehrte SELECT v.Nr FROM Einlesen_Kunden k CROSS JOIN Vorgaenge v "
      "ON v.Kundennummer = k.Kundennummer WHERE k.Neu IS NOT NULL"_s);
}

void Vorgangseinlesung::je_Teil_der_Beruehrten(const QList<QString>& anweisungen) {
  for (qint64 von = std::numeric_limits<qint64>::min();;) {
    const auto grenze = verbindung_.Execute(
        u"SELECT MAX(Nr), COUNT(*) FROM (SELECT Nr FROM Einlesen_Beruehrte WHERE Nr > ? ORDER BY Nr LIMIT ?)"_s,
        {Wert(von), Wert(Teil)});
    const qint64 anzahl = grenze->Text(1).toLongLong();
    if (anzahl == 0) return;
    const qint64 bis = grenze->Text(0).toLongLong();
    for (const QString& anweisung : anweisungen) verbindung_.Execute(anweisung, {Wert(von), Wert(bis)});
    getan_ += anzahl;
    melde(Schritt::Schreiben, std::min(getan_, ganz_), ganz_);
    von = bis;
  }
}

void Vorgangseinlesung::nimm_aus_dem_Index() {
  je_Teil_der_Beruehrten({
      u"INSERT INTO Vorgaenge_Text (Vorgaenge_Text, rowid, Suchtext) SELECT 'delete', v.Nr, v.Suchtext "
      "FROM Einlesen_Beruehrte b CROSS JOIN Vorgaenge v ON v.Nr = b.Nr WHERE b.Nr > ? AND b.Nr <= ?"_s,
      u"INSERT INTO Vorgaenge_Anfang (Vorgaenge_Anfang, rowid, Wortanfaenge) SELECT 'delete', v.Nr, v.Wortanfaenge "
      "FROM Einlesen_Beruehrte b CROSS JOIN Vorgaenge v ON v.Nr = b.Nr WHERE b.Nr > ? AND b.Nr <= ?"_s,
  });
}

void Vorgangseinlesung::schreibe_Kunden() {
  verbindung_.Execute(
      u"UPDATE Kunden SET Name = COALESCE(e.Name, Kunden.Name), Ort = COALESCE(e.Ort, Kunden.Ort) "
      "FROM Einlesen_Kunden e WHERE Kunden.Kundennummer = e.Kundennummer AND e.Neu = 0"_s);
  verbindung_.Execute(
      u"INSERT INTO Kunden (Kundennummer, Name, Ort) SELECT Kundennummer, COALESCE(Name, ''), COALESCE(Ort, '') "
      "FROM Einlesen_Kunden WHERE Neu = 1"_s);
}

/// The words of a record come from one view. For records that are not in the table yet, the same view is asked over the
/// lines that were read: its text names the tables without a schema, and temporary ones go before.
class Vorgangseinlesung::Worte_der_Zeilen {
 public:
  explicit Worte_der_Zeilen(adodb::Connection& verbindung) : verbindung_(verbindung) {
    const auto sicht = verbindung.Execute(
        u"SELECT SUBSTR(sql, LENGTH('CREATE VIEW ') + 1) FROM dbo.sqlite_master WHERE name = 'Vorgaenge_Worte'"_s);
    verbindung.Execute(
        u"CREATE TEMP VIEW Vorgaenge AS SELECT Folge AS Nr, COALESCE(Text, '') AS Text, Kundennummer, Projektnummer "
        "FROM Einlesen_Zeilen"_s);
    verbindung.Execute(u"CREATE TEMP VIEW "_s + sicht->Text(0));
  }
  ~Worte_der_Zeilen() {
    for (const QString& sicht : {u"Vorgaenge_Worte"_s, u"Vorgaenge"_s})
      gelingt([&] { verbindung_.Execute(u"DROP VIEW temp."_s + sicht); });
  }
  Q_DISABLE_COPY_MOVE(Worte_der_Zeilen)

 private:
  adodb::Connection& verbindung_;
};

void Vorgangseinlesung::je_Teil_der_Zeilen(const QString& anweisung) {
  const QString jetzt = Stand_jetzt();
  const qint64 letzte = zahl(u"SELECT COALESCE(MAX(Folge), 0) FROM Einlesen_Zeilen"_s);
  const qint64 vorher = getan_;
  for (qint64 von = 0; von < letzte; von += Teil) {
    verbindung_.Execute(anweisung, {Wert(jetzt), Wert(von), Wert(von + Teil)});
    getan_ = vorher + std::min(von + Teil, letzte);
    melde(Schritt::Schreiben, getan_, ganz_);
  }
}

void Vorgangseinlesung::schreibe_Geaenderte() {
  static const QString Aendern = u"UPDATE Vorgaenge SET "_s +
      QStringList{zuweisung(Vorgangsspalte::Kundennummer), zuweisung(Vorgangsspalte::Projektnummer),
          zuweisung(Vorgangsspalte::Text), zuweisung(Vorgangsspalte::Ordner), zuweisung(Vorgangsspalte::Stand, u"?"_s)}
          .join(u", "_s) +
      u" FROM Einlesen_Zeilen e WHERE Vorgaenge.Nr = e.Nr AND e.Art = %1 AND e.Folge > ? AND e.Folge <= ?"_s.arg(
          static_cast<int>(Zeilenart::Geaendert));
  je_Teil_der_Zeilen(Aendern);
  je_Teil_der_Beruehrten({
      u"UPDATE Vorgaenge SET Bezeichnung = (SELECT w.Bezeichnung FROM Vorgaenge_Worte w WHERE w.Nr = Vorgaenge.Nr) "
      "WHERE Nr IN (SELECT Nr FROM Einlesen_Beruehrte WHERE Nr > ? AND Nr <= ?)"_s,
  });
}

void Vorgangseinlesung::schreibe_Neue() {
  static const QString Einfuegen =
      u"INSERT INTO dbo.Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Projektnummer, Text, Ordner, Stand, "
      "Bezeichnung) SELECT e.Typ1, e.Key1, e.Key2, e.Key3, e.Kundennummer, e.Projektnummer, COALESCE(e.Text, ''), "
      "e.Ordner, CASE WHEN (e.Genannte & %1) <> 0 THEN e.Stand ELSE ? END, w.Bezeichnung FROM Einlesen_Zeilen e "
      "CROSS JOIN temp.Vorgaenge_Worte w ON w.Nr = e.Folge WHERE e.Art = %2 AND e.Folge > ? AND e.Folge <= ?"_s.arg(
          QString::number(bit(Vorgangsspalte::Stand)), QString::number(static_cast<int>(Zeilenart::Neu)));
  const qint64 letzte_Nr = zahl(u"SELECT COALESCE(MAX(Nr), 0) FROM Vorgaenge"_s);
  {
    const Worte_der_Zeilen worte(verbindung_);
    je_Teil_der_Zeilen(Einfuegen);
  }
  verbindung_.Execute(
      u"INSERT OR IGNORE INTO Einlesen_Beruehrte SELECT Nr FROM Vorgaenge WHERE Nr > ?"_s, {Wert(letzte_Nr)});
}

void Vorgangseinlesung::nimm_in_den_Index() {
  je_Teil_der_Beruehrten({
      u"INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT v.Nr, v.Suchtext FROM Einlesen_Beruehrte b "
      "CROSS JOIN Vorgaenge v ON v.Nr = b.Nr WHERE b.Nr > ? AND b.Nr <= ?"_s,
      u"INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT v.Nr, v.Wortanfaenge FROM Einlesen_Beruehrte b "
      "CROSS JOIN Vorgaenge v ON v.Nr = b.Nr WHERE b.Nr > ? AND b.Nr <= ?"_s,
  });
}
