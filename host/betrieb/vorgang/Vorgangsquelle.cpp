#include "host/betrieb/vorgang/Vorgangsquelle.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <utility>

#include "host/betrieb/Datenbank.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Leser {
 public:
  explicit Leser(adodb::Connection& verbindung) : verbindung_(verbindung) {}

  vorgangsquelle::Bestand lies() {
    const QList<Vorgang> bebilderte = lies_Anzahlen();
    lies_Tabelle(u"Kunden"_s, u"Select Kundennummer, Name, Ort from Kunden"_s, [&](const adodb::Recordset& satz) {
      kunden_.insert(satz.Text(0), verbunden({satz.Text(1), satz.Text(2)}, u", "_s));
    });
    lies_Art(Vorgangsart::Beleg, u"Select Belegart, Belegnummer, Kundennummer, Projektnummer from BelegKopfZunft"_s, 2,
        [&](const adodb::Recordset& satz) {
      const QString projekt = satz.Text(3).isEmpty() ? QString() : u"Projekt "_s + satz.Text(3);
      return verbunden({kunden_.value(satz.Text(2), satz.Text(2)), projekt}, u" · "_s);
    });
    lies_Art(Vorgangsart::Montageauftrag, u"Select Belegart, Belegnummer, MontageNr, Aufgabe from Montageauftraege"_s,
        3, [](const adodb::Recordset& satz) { return satz.Text(3); });
    lies_Art(Vorgangsart::Artikel, u"Select Artikelnummer, Bezeichnung from Artikelstamm"_s, 1,
        [](const adodb::Recordset& satz) { return satz.Text(1); });
    lies_Art(Vorgangsart::Anlage, u"Select Referenz1, Referenz2, Referenz3, Bezeichnung from Anlagen"_s, 3,
        [&](const adodb::Recordset& satz) {
      return verbunden({satz.Text(3), kunden_.value(satz.Text(0))}, u" · "_s);
    });
    for (const Vorgang& neu : bebilderte) nimm_auf(neu);
    ordne();
    return std::move(bestand_);
  }

 private:
  /// All records that have pictures, with their numbers. Only rows whose other parts are "-" are a record's: they are
  /// the ones that the dialog is given.
  QList<Vorgang> lies_Anzahlen() {
    QList<Vorgang> liste;
    const auto satz = verbindung_.Execute(
        u"Select Typ1, Key1, Key2, Key3, Count(*) as Anzahl from Bild_Zuordnungen "
        "where key4 = '-' and Typ2 = '-' group by Typ1, Key1, Key2, Key3"_s);
    for (; !satz->Eof(); satz->MoveNext()) {
      const QString typ = text::UCase(text::Trim(satz->Text(0)));
      for (const Vorgangsart art : Vorgangsarten) {
        if (vorgang::woerter(art).typ1 != typ) continue;
        Vorgang neu = vorgang::aus_Schluesseln(art, satz->Text(1), satz->Text(2), satz->Text(3));
        neu.bilder = satz->Text(4).toInt();
        anzahlen_.insert(vorgang::kennung(neu), neu.bilder);
        liste.append(neu);
      }
    }
    return liste;
  }

  /// Reads one table of the host; `je_Satz` sees each record. A host that has no such table has no such records.
  template <class JeSatz>
  void lies_Tabelle(const QString& was, const QString& anweisung, JeSatz&& je_Satz) {
    const auto ausfall = versuche_Datenbank([&] {
      const auto satz = verbindung_.Execute(anweisung);
      for (; !satz->Eof(); satz->MoveNext()) je_Satz(*satz);
    });
    if (!ausfall) return;
    const bool fehlt = ausfall->grund == Datenbankgrund::Tabelle_fehlt;
    bestand_.hinweise.append(was + u": "_s + (fehlt ? u"die Tabelle fehlt"_s : ausfall->worte));
  }

  /// Reads the records of a kind: the first `schluessel` columns are their keys, `betreff` makes their subject.
  template <class Betreff>
  void lies_Art(Vorgangsart art, const QString& anweisung, std::int32_t schluessel, Betreff&& betreff) {
    lies_Tabelle(vorgang::woerter(art).mehrzahl, anweisung, [&](const adodb::Recordset& satz) {
      std::array<QString, 3> keys;
      for (std::int32_t i = 0; i < schluessel; ++i) keys.at(static_cast<std::size_t>(i)) = satz.Text(i);
      Vorgang neu = vorgang::aus_Schluesseln(art, keys[0], keys[1], keys[2]);
      neu.betreff = betreff(satz);
      neu.bilder = anzahlen_.value(vorgang::kennung(neu));
      nimm_auf(neu);
    });
  }

  static QString verbunden(QStringList teile, const QString& trenner) {
    teile.removeAll(QString());
    return teile.join(trenner);
  }

  void nimm_auf(const Vorgang& neu) {
    const auto vorher = bekannt_.size();
    bekannt_.insert(vorgang::kennung(neu));
    if (bekannt_.size() > vorher) bestand_.vorgaenge.append(neu);
  }

  void ordne() {
    const auto rang = [](const Vorgang& v) { return std::pair(v.art, text::UCase(v.nummer)); };
    std::stable_sort(bestand_.vorgaenge.begin(), bestand_.vorgaenge.end(),
        [&](const Vorgang& a, const Vorgang& b) { return rang(a) < rang(b); });
  }

  adodb::Connection& verbindung_;
  vorgangsquelle::Bestand bestand_;
  /// By their number, as "Bäckerei Huber, Freiburg".
  QHash<QString, QString> kunden_;
  QHash<QString, int> anzahlen_;
  QSet<QString> bekannt_;
};

}  // namespace

vorgangsquelle::Bestand vorgangsquelle::lies(adodb::Connection& verbindung) {
  return Leser(verbindung).lies();
}
