#include "host/kvobild/pruefung/Sichtpruefung.h"

#include <algorithm>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"
#include "host/kvobild/pruefung/Sichtwerte.h"
#include "platform/adodb/Treiber.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Stand = u"Stand"_s;

QString genannt(const QString& spalte) {
  return schema::Vorgaenge + u'.' + spalte;
}

QString erwarteter_Typ(const QString& spalte) {
  return spalte == Stand ? u"ein Datum mit Zeit"_s : u"ein Text"_s;
}

bool ist_Text(const Spaltenlage& spalte) {
  // A char column is filled up with blanks, which do not count; the large old texts can't be compared.
  return spalte.ist_Text || spalte.typ == "char"_L1 || spalte.typ == "nchar"_L1;
}

bool ist_Zeit(const Spaltenlage& spalte) {
  return spalte.typ.startsWith("date"_L1) || spalte.typ == "smalldatetime"_L1;
}

/// The words of a failure, or none. Where the connection is gone the failure flies on.
template <class Anweisung>
std::optional<Datenbankausfall> scheitert(Anweisung&& anweisung) {
  return versuche(anweisung, [](const Laufzeitfehler& fehler) {
    if (ausfall_von(fehler).grund == Datenbankgrund::Unerreichbar) throw;
    return Datenbankausfall{ausfall_von(fehler).grund, fehler.Beschreibung()};
  });
}

/// A full-text table that does not hold what its content holds says so by this number.
bool ist_beschaedigt(const Laufzeitfehler& fehler) {
  constexpr int Beschaedigt = 11;
  const auto* genauer = dynamic_cast<const adodb::Datenbankfehler*>(&fehler);
  return genauer && (genauer->NativeNummer() & 0xFF) == Beschaedigt;
}

class Pruefer {
 public:
  explicit Pruefer(adodb::Connection& verbindung) : verbindung_(verbindung), art_(Datenbankart::von(verbindung)) {}

  Sichtlage pruefe(bool mit_Zuordnungen) {
    if (!findet_Sicht() || !pruefe_Spalten()) return lage_;
    if (mit_Zuordnungen && !antwortet()) return lage_;
    const Sichtwerte werte = pruefe_Sichtwerte(verbindung_, mit_Textstand_);
    lage_.vorgaenge = werte.vorgaenge;
    lage_.sicht.befunde += werte.befunde;
    if (schema::hat_eigene_Vorgaenge(verbindung_)) pruefe_Index();
    lage_.sicht.lesbar = true;
    return lage_;
  }

 private:
  void melde(const QString& kennung, const QString& text, bool sperrt = false, bool hinweis = false) {
    lage_.sicht.befunde.append({kennung, text, sperrt, 0, {}, hinweis});
  }

  /// The name alone is asked for first: whoever may not read a view doesn't see its columns either.
  bool findet_Sicht() {
    const auto ausfall = scheitert([&] { verbindung_.Execute(u"SELECT 1 FROM Bild_Vorgaenge WHERE 1 = 0"_s); });
    if (ausfall && ausfall->grund == Datenbankgrund::Tabelle_fehlt && !schema::nennt_Vorgaenge(verbindung_)) {
      melde(u"sicht_fehlt"_s, u"Ohne die Sicht Bild_Vorgaenge zeigt bildzuordnung nur Vorgänge, die Bilder haben."_s,
          false, true);
      return false;
    }
    if (!ausfall)
      for (const auto satz = verbindung_.Execute(art_.Spalten.arg(schema::Vorgaenge)); !satz->Eof(); satz->MoveNext())
        spalten_.append(art_.spalte(*satz));
    lage_.sicht.tabellen.append(schema::Vorgaenge);
    lage_.sicht.spalten.append(0);
    if (ausfall) melde_Recht(ausfall->worte);
    return !ausfall;
  }

  void melde_Recht(const QString& worte) {
    lage_.sicht.rechte.append({u"SELECT"_s, schema::Vorgaenge, false});
    melde(u"recht_fehlt"_s,
        u"%1 auf %2 ist nicht erlaubt oder geht nicht: %3"_s.arg(u"SELECT"_s, schema::Vorgaenge, worte), true);
  }

  /// True when the records can be read and compared.
  bool pruefe_Spalten() {
    QStringList vorhandene;
    bool gut = true;
    for (const schema::Spalte& erwartet : schema::spalten(schema::Vorgaenge)) {
      const auto spalte = std::find_if(spalten_.begin(), spalten_.end(),
          [&](const Spaltenlage& g) { return g.name.compare(erwartet.name, Qt::CaseInsensitive) == 0; });
      if (!spalten_.isEmpty() && spalte == spalten_.end()) {
        melde(u"spalte_fehlt"_s,
            u"Die Spalte %1 fehlt; erwartet ist %2."_s.arg(genannt(erwartet.name), erwarteter_Typ(erwartet.name)),
            true);
        continue;
      }
      vorhandene.append(erwartet.name);
      if (!spalten_.isEmpty()) gut = pruefe_Spalte(erwartet.name, *spalte) && gut;
    }
    lage_.sicht.spalten.last() = static_cast<int>(vorhandene.size());
    const auto ausfall = scheitert(
        [&] { verbindung_.Execute(u"SELECT %1 FROM Bild_Vorgaenge WHERE 1 = 0"_s.arg(vorhandene.join(u", "_s))); });
    if (ausfall)
      melde_Recht(ausfall->worte);
    else
      lage_.sicht.rechte.append({u"SELECT"_s, schema::Vorgaenge, true});
    return gut && !ausfall && vorhandene.size() == schema::spalten(schema::Vorgaenge).size();
  }

  bool pruefe_Spalte(const QString& name, const Spaltenlage& spalte) {
    const bool zeitlich = name == Stand;
    // SQLite keeps dates as texts whatever the column is called; a view's calculated columns have no type at all.
    const bool offen = art_.ist_Datei && (zeitlich || spalte.typ.isEmpty());
    if (zeitlich) mit_Textstand_ = art_.ist_Datei || ist_Text(spalte);
    if (!offen && !ist_Text(spalte) && !(zeitlich && ist_Zeit(spalte))) {
      melde(u"spalte_typ"_s,
          u"Die Spalte %1 ist „%2“; erwartet ist %3."_s.arg(genannt(name), spalte.typ, erwarteter_Typ(name)));
      return art_.ist_Datei;
    }
    // The programs compare on SQLite as the assignments do, and fold what they search.
    if (!art_.ist_Datei && !zeitlich && name != "Ordner"_L1 && !spalte.vergleicht_gleich)
      melde(u"spalte_sortierung"_s,
          u"Die Spalte %1 unterscheidet beim Vergleichen Groß und klein; so bleiben Zuordnungen unentdeckt."_s.arg(
              genannt(name)));
    return true;
  }

  /// What the list asks for at first, with the pictures of the records. Collations that do not meet and conversions
  /// that fail show only here.
  bool antwortet() {
    vorgangsquelle::Frage frage;
    frage.hoechstens = 1;
    const auto ausfall =
        scheitert([&] { vorgangsquelle::lies(verbindung_, vorgangsquelle::herkunft(verbindung_), frage); });
    if (ausfall)
      melde(u"sicht_antwortet_nicht"_s,
          u"Bild_Vorgaenge beantwortet nicht, was bildzuordnung fragt: %1"_s.arg(ausfall->worte), true);
    return !ausfall;
  }

  /// The check is a statement that writes to the index, and changes nothing.
  void pruefe_Index() {
    for (const QString& name : {u"Vorgaenge_Text"_s, u"Vorgaenge_Anfang"_s}) {
      verbindung_.Execute(u"BEGIN TRANSACTION"_s);
      // The failure itself is needed: its number tells a damage from a lock or a database that is only read.
      const auto beschaedigt =
          versuche([&] { verbindung_.Execute(u"INSERT INTO %1 (%1, rank) VALUES ('integrity-check', 1)"_s.arg(name)); },
              [](const Laufzeitfehler& fehler) { return std::pair(ist_beschaedigt(fehler), fehler.Beschreibung()); });
      gelingt([&] { verbindung_.Execute(art_.Ruecknahme); });
      if (!beschaedigt) continue;
      if (beschaedigt->first)
        melde(u"suchindex"_s,
            u"Der Suchindex %1 passt nicht zu den Vorgängen; die Suche findet nicht alle oder falsche."_s.arg(name));
      else
        melde(u"suchindex_ungeprueft"_s, u"Der Suchindex %1 ist nicht zu prüfen: %2"_s.arg(name, beschaedigt->second),
            false, true);
    }
  }

  adodb::Connection& verbindung_;
  const Datenbankart& art_;
  QList<Spaltenlage> spalten_;
  bool mit_Textstand_ = false;
  Sichtlage lage_;
};

}  // namespace

Sichtlage pruefe_Sicht(adodb::Connection& verbindung, bool mit_Zuordnungen) {
  return Pruefer(verbindung).pruefe(mit_Zuordnungen);
}
