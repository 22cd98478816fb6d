#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QStringList>
#include <functional>
#include <memory>

#include "component/Zuordnungsweg.h"
#include "store/BasZuordnungen.h"
#include "store/Dialogspur.h"
#include "store/Sammlungszugriff.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Doppel.h"
#include "tests/support/Pruefdatenbank.h"

/// The road over a database and a picture tree of its own, the dialog replaced by what a user would have done in it.
/// The record is BEL, AB 1; its pictures lie in Belege\1.
class Wegtest : public ::testing::Test {
 protected:
  using Ergebnis = Zuordnungsweg::Ergebnis;
  using Verbleib = Zuordnungsweg::Verbleib;
  using Handlung = std::function<void(clsBildZuordnungen&)>;

  class Betrieb final : public Anwendungsobjekt {
   public:
    explicit Betrieb(Pruefdatenbank& db) : db_(db) {}
    QString ConnectStringDB() const override { return db_.verbindungszeichenfolge(); }
    std::shared_ptr<adodb::Connection> ConnectionDB() const override { return db_.verbindung(); }

   private:
    Pruefdatenbank& db_;
  };

  explicit Wegtest(std::chrono::milliseconds wartegrenze = adodb::SqliteTreiber::Wartegrenze) : db(wartegrenze) {
    BasZuordnungen::verwirf_Verbindung();
    wurzel.schreibe(QStringLiteral("Belege/1/da.txt"), "x");
  }
  ~Wegtest() override { BasZuordnungen::verwirf_Verbindung(); }

  static Zuordnungsweg::Vorgang vorgang() {
    return {QStringLiteral("AB"), QStringLiteral("1"), {}, {}, QStringLiteral("BEL"), {}, QStringLiteral("Belege\\1"),
        QStringLiteral("Beleg AB 1")};
  }
  static QString datei(const QString& name) { return QStringLiteral("Belege/1/") + name + QStringLiteral(".jpg"); }

  /// Walks the road; each handling is one opening of the dialog.
  Ergebnis gehe(std::vector<Handlung> handlungen) {
    geoeffnet = 0;
    const auto dialog = [&](const auto&, const QString&, const QString&, const auto& bilder, const auto&...) {
      if (geoeffnet < handlungen.size()) handlungen[geoeffnet](*bilder);
      ++geoeffnet;
      sammlung = bilder;
      return true;
    };
    return Zuordnungsweg(std::make_shared<Betrieb>(db), QStringLiteral("P:"), dialog).gehe(vorgang());
  }
  Ergebnis gehe(const Handlung& handlung) { return gehe(std::vector<Handlung>{handlung}); }

  /// A picture that is there, with its row; the last two columns of its identity and its folder can be others.
  void gespeichert(const QString& name, int platz, const QString& ordner = QStringLiteral("Belege\\1"),
      const QString& key1 = QStringLiteral("AB")) {
    db.fuehre_aus(
        QStringLiteral("insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, "
                       "BildPfad, Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) "
                       "Values ('%1','1','-','-','%2','jpg','BEL','-','%3','T','0001',NULL,'-',%4)")
            .arg(key1, name, ordner)
            .arg(platz));
    wurzel.schreibe(QString(ordner).replace(u'\\', u'/') + u'/' + name + QStringLiteral(".jpg"), "bild");
  }
  /// What the dialog leaves of a new picture: blank keys.
  void neues(clsBildZuordnungen& bilder, const QString& name, bool mit_Datei = true) {
    bilder.FKT_NeuesBild({}, {}, {}, {}, name, QStringLiteral("jpg"), QStringLiteral("BEL"), QStringLiteral("-"));
    bilder.Bild_Pfad(QStringLiteral("Belege\\1"));
    bilder.Bild_SortIndex(bilder.AnzahlPos() - 1);
    if (mit_Datei) wurzel.schreibe(datei(name), "bild");
  }
  static void aendere(clsBildZuordnungen& bilder, std::int32_t zeile, const QString& text) {
    bilder.AktInd(zeile);
    bilder.Bild_Beschreibung(text);
    bilder.Bild_SortIndex(zeile);
    bilder.Bild_Changeflag(true);
  }
  static void entferne(clsBildZuordnungen& bilder, std::int32_t zeile) {
    bilder.AktInd(zeile);
    bilder.Bild_Delete(true);
    bilder.Bild_Changeflag(true);
  }
  /// The trace of a dialog whose strip is the collection.
  static Dialogspur& lege_Spur(clsBildZuordnungen& bilder) {
    auto& spur = Sammlungszugriff::spur(bilder);
    spur = std::make_shared<Dialogspur>();
    for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
      bilder.AktInd(i);
      spur->bilder.emplace_back();
      spur->bilder.back().satz = bilder.AktBildObj;
    }
    return *spur;
  }
  /// A new picture whose copy failed, at the end of the strip.
  Bildspur& lege_Spur_ohne_Datei(Dialogspur& spur, const QString& name, const QString& quelle) const {
    Bildspur bild;
    bild.ohne_Datei = std::make_shared<clsBilderSpeicher>();
    bild.ohne_Datei->Bild_Bildname = name;
    bild.ohne_Datei->Bild_BildExt = QStringLiteral("jpg");
    bild.ohne_Datei->Bild_Typ1 = QStringLiteral("BEL");
    bild.ohne_Datei->Bild_Pfad = QStringLiteral("Belege\\1");
    bild.ohne_Datei->Bild_Grafik_Ursprung = QStringLiteral("-");
    bild.ohne_Datei->Bild_SortIndex = static_cast<std::int16_t>(spur.bilder.size());
    bild.quelle = quelle;
    bild.kopie = {Dateischritt::Stand::Gescheitert, QStringLiteral("Der Datenträger ist voll")};
    spur.bilder.push_back(bild);
    return spur.bilder.back();
  }

  /// All rows as "Bildname|BildPfad|Beschreibung|SortIndex" in their order.
  QStringList zeilen(const QString& where = QStringLiteral("Key1 = 'AB'")) {
    QStringList liste;
    for (const QStringList& zeile :
        db.zeilen(QStringLiteral("Select Bildname, BildPfad, Beschreibung, SortIndex from Bild_Zuordnungen where %1 "
                                 "order by SortIndex, Bildname")
                      .arg(where)))
      liste.append(zeile.join(u'|'));
    return liste;
  }
  QStringList anweisungen(const QString& anfang) {
    QStringList liste;
    for (const auto& eintrag : db.mitschrift().eintraege())
      if (eintrag.text.startsWith(anfang, Qt::CaseInsensitive)) liste.append(eintrag.text);
    return liste;
  }

  void erwarte_Frage(
      const QString& zahlen, const QString& zeilen, oberflaeche::Antwort antwort, std::function<void()> dabei = {}) {
    meldungen.erwarte(
        {zahlen + QStringLiteral(" Bildern sind nicht gespeichert:\r\n\r\n") + zeilen +
                QStringLiteral("\r\n\r\nNoch einmal versuchen?"),
            QStringLiteral("Bildzuordnung"), oberflaeche::Symbol::Ausrufezeichen, oberflaeche::Knoepfe::JaNein},
        antwort, std::move(dabei));
  }
  void erwarte_Hinweis(const QString& zeilen) {
    meldungen.erwarte({QStringLiteral("Nicht alles ist so gespeichert, wie es im Dialog stand:\r\n\r\n") + zeilen,
        QStringLiteral("Bildzuordnung"), oberflaeche::Symbol::Ausrufezeichen, oberflaeche::Knoepfe::OK});
  }

  MeldungsDoppel meldungen;
  CoreDoppel core;
  Bildwurzel wurzel;
  Pruefdatenbank db;
  std::size_t geoeffnet = 0;
  std::shared_ptr<clsBildZuordnungen> sammlung;
};

/// The words of a statement that the test's driver refuses.
inline const QString Verweigert = QStringLiteral("Die Anweisung sollte scheitern");
