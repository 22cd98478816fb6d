#include "host/betrieb/vorgang/Vorgangsquelle.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <utility>

#include "host/betrieb/Datenbank.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Customers by their number, as "Bäckerei Huber, Freiburg".
using Kunden = QHash<QString, QString>;

class Leser {
 public:
  explicit Leser(adodb::Connection& verbindung) : verbindung_(verbindung) {}

  vorgangsquelle::Bestand lies() {
    const QList<Vorgang> bebilderte = lies_Anzahlen();
    lies_Kunden();
    lies_Belege();
    lies_Montageauftraege();
    lies_Artikel();
    lies_Anlagen();
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
        if (vorgang::typ1(art) != typ) continue;
        Vorgang neu = vorgang::aus_schluesseln(art, satz->Text(1), satz->Text(2), satz->Text(3));
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

  void lies_Kunden() {
    lies_Tabelle(u"Kunden"_s, u"Select Kundennummer, Name, Ort from Kunden"_s, [&](const adodb::Recordset& satz) {
      QStringList teile{satz.Text(1), satz.Text(2)};
      teile.removeAll(QString());
      kunden_.insert(satz.Text(0), teile.join(u", "_s));
    });
  }

  void lies_Belege() {
    lies_Tabelle(vorgang::mehrzahl(Vorgangsart::Beleg),
        u"Select Belegart, Belegnummer, Kundennummer, Projektnummer from BelegKopfZunft"_s,
        [&](const adodb::Recordset& satz) {
      QStringList teile{kunden_.value(satz.Text(2), satz.Text(2))};
      if (!satz.Text(3).isEmpty()) teile.append(u"Projekt "_s + satz.Text(3));
      teile.removeAll(QString());
      nimm_auf(Vorgangsart::Beleg, {satz.Text(0), satz.Text(1), {}}, teile.join(u" · "_s));
    });
  }

  void lies_Montageauftraege() {
    lies_Tabelle(vorgang::mehrzahl(Vorgangsart::Montageauftrag),
        u"Select Belegart, Belegnummer, MontageNr, Aufgabe from Montageauftraege"_s, [&](const adodb::Recordset& satz) {
          nimm_auf(Vorgangsart::Montageauftrag, {satz.Text(0), satz.Text(1), satz.Text(2)}, satz.Text(3));
        });
  }

  void lies_Artikel() {
    lies_Tabelle(vorgang::mehrzahl(Vorgangsart::Artikel), u"Select Artikelnummer, Bezeichnung from Artikelstamm"_s,
        [&](const adodb::Recordset& satz) {
      nimm_auf(Vorgangsart::Artikel, {satz.Text(0), {}, {}}, satz.Text(1));
    });
  }

  void lies_Anlagen() {
    lies_Tabelle(vorgang::mehrzahl(Vorgangsart::Anlage),
        u"Select Referenz1, Referenz2, Referenz3, Bezeichnung from Anlagen"_s, [&](const adodb::Recordset& satz) {
          QStringList teile{satz.Text(3), kunden_.value(satz.Text(0))};
          teile.removeAll(QString());
          nimm_auf(Vorgangsart::Anlage, {satz.Text(0), satz.Text(1), satz.Text(2)}, teile.join(u" · "_s));
        });
  }

  void nimm_auf(Vorgangsart art, const std::array<QString, 3>& schluessel, const QString& betreff) {
    Vorgang neu = vorgang::aus_schluesseln(art, schluessel[0], schluessel[1], schluessel[2]);
    neu.betreff = betreff;
    neu.bilder = anzahlen_.value(vorgang::kennung(neu));
    nimm_auf(neu);
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
  Kunden kunden_;
  QHash<QString, int> anzahlen_;
  QSet<QString> bekannt_;
};

}  // namespace

vorgangsquelle::Bestand vorgangsquelle::lies(adodb::Connection& verbindung) {
  return Leser(verbindung).lies();
}
