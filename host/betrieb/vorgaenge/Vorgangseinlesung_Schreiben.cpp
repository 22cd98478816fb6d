// Writes what was compared, with the search index in step, in one transaction.
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
constexpr qint64 Teil = 5'000;

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
  // Out of the index, written, and into the index with its words.
  ganz_ = alte + befund.neu + befund.geaendert + 2 * (alte + befund.neu);
  nimm_aus_dem_Index();
  schreibe_Kunden();
  schreibe_Zeilen();
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
    for (const QString& anweisung : anweisungen) {
      verbindung_.Execute(anweisung, {Wert(von), Wert(bis)});
      getan_ += anzahl;
      melde(Schritt::Schreiben, getan_ / anweisungen.size(), ganz_);
    }
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

void Vorgangseinlesung::schreibe_Zeilen() {
  static const QString Aendern = u"UPDATE Vorgaenge SET "_s +
      QStringList{zuweisung(Vorgangsspalte::Kundennummer), zuweisung(Vorgangsspalte::Projektnummer),
          zuweisung(Vorgangsspalte::Text), zuweisung(Vorgangsspalte::Ordner), zuweisung(Vorgangsspalte::Stand, u"?"_s)}
          .join(u", "_s) +
      u" FROM Einlesen_Zeilen e WHERE Vorgaenge.Nr = e.Nr AND e.Art = %1 AND e.Folge > ? AND e.Folge <= ?"_s.arg(
          static_cast<int>(Zeilenart::Geaendert));
  static const QString Einfuegen =
      u"INSERT INTO Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Projektnummer, Text, Ordner, Stand) SELECT Typ1, "
      "Key1, Key2, Key3, Kundennummer, Projektnummer, COALESCE(Text, ''), Ordner, CASE WHEN (Genannte & %1) <> 0 THEN "
      "Stand ELSE ? END FROM Einlesen_Zeilen WHERE Art = %2 AND Folge > ? AND Folge <= ? ORDER BY Folge"_s.arg(
          QString::number(bit(Vorgangsspalte::Stand)), QString::number(static_cast<int>(Zeilenart::Neu)));
  const QString jetzt = Stand_jetzt();
  const qint64 letzte_Nr = zahl(u"SELECT COALESCE(MAX(Nr), 0) FROM Vorgaenge"_s);
  const qint64 letzte = zahl(u"SELECT COALESCE(MAX(Folge), 0) FROM Einlesen_Zeilen"_s);
  for (qint64 von = 0; von < letzte; von += Teil) {
    for (const QString& anweisung : {Aendern, Einfuegen})
      verbindung_.Execute(anweisung, {Wert(jetzt), Wert(von), Wert(von + Teil)});
    melde(Schritt::Schreiben, std::min(getan_ + von, ganz_), ganz_);
  }
  verbindung_.Execute(
      u"INSERT OR IGNORE INTO Einlesen_Beruehrte SELECT Nr FROM Vorgaenge WHERE Nr > ?"_s, {Wert(letzte_Nr)});
}

void Vorgangseinlesung::nimm_in_den_Index() {
  je_Teil_der_Beruehrten({
      u"UPDATE Vorgaenge SET Bezeichnung = (SELECT w.Bezeichnung FROM Vorgaenge_Worte w WHERE w.Nr = Vorgaenge.Nr) "
      "WHERE Nr IN (SELECT Nr FROM Einlesen_Beruehrte WHERE Nr > ? AND Nr <= ?)"_s,
      u"INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT v.Nr, v.Suchtext FROM Einlesen_Beruehrte b "
      "CROSS JOIN Vorgaenge v ON v.Nr = b.Nr WHERE b.Nr > ? AND b.Nr <= ?"_s,
      u"INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT v.Nr, v.Wortanfaenge FROM Einlesen_Beruehrte b "
      "CROSS JOIN Vorgaenge v ON v.Nr = b.Nr WHERE b.Nr > ? AND b.Nr <= ?"_s,
  });
}
