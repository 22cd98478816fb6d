// The store against SQLite's own C interface: reading a large record, saving many rows, and a record's read in a small
// and in a large table. Usage: bench_store [FOLDER]; the databases are made in a new folder below FOLDER (default ".").

#include <sqlite3.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "bench/Messung.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/sqlite/SqliteKollation.h"
#include "platform/adodb/sqlite/SqliteTreiber.h"
#include "platform/basic/Laufzeitfehler.h"
#include "store/BasZuordnungen.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void pruefe(bool gut, const char* was) {
  if (gut) return;
  std::fprintf(stderr, "bench_store: %s\n", was);
  std::exit(1);
}

/// An open connection of the peer, with the schema's collation and the same durability as the store's.
class Peer {
 public:
  explicit Peer(const QString& datei) {
    pruefe(sqlite3_open(datei.toUtf8().constData(), &db_) == SQLITE_OK, "open");
    pruefe(adodb::richte_Servertext_ein(db_) == SQLITE_OK, "collation");
    exec("PRAGMA journal_mode=WAL");
    exec("PRAGMA synchronous=FULL");
  }
  ~Peer() { sqlite3_close(db_); }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  void exec(const QByteArray& text) {
    pruefe(sqlite3_exec(db_, text.constData(), nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(db_));
  }
  /// Steps through all rows and takes every column as text; gives the number of bytes.
  std::size_t lies(const QByteArray& text) {
    sqlite3_stmt* anweisung = nullptr;
    pruefe(sqlite3_prepare_v2(db_, text.constData(), -1, &anweisung, nullptr) == SQLITE_OK, "prepare");
    std::size_t bytes = 0;
    const int spalten = sqlite3_column_count(anweisung);
    while (sqlite3_step(anweisung) == SQLITE_ROW)
      for (int i = 0; i < spalten; ++i)
        if (const auto* wert = sqlite3_column_text(anweisung, i))
          bytes += std::char_traits<char>::length(reinterpret_cast<const char*>(wert));
    sqlite3_finalize(anweisung);
    return bytes;
  }

 private:
  sqlite3* db_ = nullptr;
};

QString lege_an(const QTemporaryDir& ordner, const QString& name) {
  const QString datei = ordner.filePath(name);
  QFile schema(QStringLiteral(KVO_QUELLORDNER "/sql/sqlite/Bild_Zuordnungen.sql"));
  pruefe(schema.open(QIODevice::ReadOnly), "schema");
  Peer peer(datei);
  for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf8(schema.readAll())))
    peer.exec(anweisung.toUtf8());
  return datei;
}

/// `saetze` records of `bilder` pictures each, with texts as a firm has them.
void fuelle(const QString& datei, int saetze, int bilder) {
  Peer peer(datei);
  peer.exec("BEGIN");
  peer.exec(QByteArray("WITH RECURSIVE s(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM s WHERE i + 1 < ") +
      QByteArray::number(saetze) + "), b(j) AS (SELECT 0 UNION ALL SELECT j + 1 FROM b WHERE j + 1 < " +
      QByteArray::number(bilder) +
      ") INSERT INTO Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
      "Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) "
      "SELECT 'RE', printf('%07d', i), '-', '-', printf('Heizkessel_%d_20250314_0815%05d', i, j), 'jpg', 'Bel', '-', "
      "'Belege\\RE\\2025', printf('Anschluß der Heizung im Keller, Bild %d', j), '0001' || printf('%46s', ''), NULL, "
      "'-', j FROM s, b");
  peer.exec("COMMIT");
  peer.exec("ANALYZE");
}

QString zeichenfolge(const QString& datei) {
  return u"Provider=SQLite;Data Source=\""_s + datei + u'"';
}

std::shared_ptr<adodb::Connection> oeffne(const QString& datei) {
  auto verbindung = std::make_shared<adodb::Connection>();
  verbindung->Open(zeichenfolge(datei));
  return verbindung;
}

void messe_Lesen(const QTemporaryDir& ordner) {
  const QString datei = lege_an(ordner, u"lesen.db"_s);
  fuelle(datei, 1, 10'000);
  clsBildZuordnungen store;
  store.Init(zeichenfolge(datei), oeffne(datei), {});
  Peer peer(datei);
  messung::vergleiche(
      "read 10,000 rows into the collection / step them", 21, 4.0,
      [&] { pruefe(store.FKT_LeseBilder(u"RE"_s, u"0000000"_s, {}, {}, {}, {}, u"Bel"_s, {}, {}), "read"); },
      [&] {
    pruefe(peer.lies("Select * from Bild_Zuordnungen  where Key1 = 'RE' and Key2 = '0000000' and Typ1 = 'Bel' order by "
                     "SortIndex") > 0,
        "step");
      });
}

/// Passes every text on to SQLite and keeps it for the peer.
class Mitschrift final : public adodb::Treiber {
 public:
  static inline QList<QByteArray> texte;
  void oeffne(const QString& verbindungszeichenfolge) override {
    QString s = verbindungszeichenfolge;
    innen_.oeffne(s.replace(u"Provider=Mitschrift"_s, u"Provider=SQLite"_s));
  }
  void schliesse() noexcept override { innen_.schliesse(); }
  bool ist_offen() const noexcept override { return innen_.ist_offen(); }
  using adodb::Treiber::fuehre_aus;
  adodb::Ergebnis fuehre_aus(const QString& text) override {
    texte.append(text.toUtf8());
    return innen_.fuehre_aus(text);
  }

 private:
  adodb::SqliteTreiber innen_;
};

void messe_Speichern(const QTemporaryDir& ordner) {
  adodb::registriere_treiber(u"Mitschrift"_s, [] { return std::make_unique<Mitschrift>(); });
  const QString datei = lege_an(ordner, u"speichern.db"_s);
  fuelle(datei, 1, 1'000);
  clsBildZuordnungen store;
  const auto lies_und_markiere = [&] {
    pruefe(store.FKT_LeseBilder(u"RE"_s, u"0000000"_s, {}, {}, {}, {}, u"Bel"_s, {}, {}), "read");
    for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
      store.AktInd(i);
      store.Bild_SortIndex(i);
      store.Bild_Changeflag(true);
    }
  };
  store.Init(u"Provider=Mitschrift;Data Source=\""_s + datei + u'"', oeffne(datei), {});
  lies_und_markiere();
  pruefe(store.FKT_SpeichernBilder() && Mitschrift::texte.size() == 1'000, "save");
  BasZuordnungen::gConnection().reset();

  store.Init(zeichenfolge(datei), oeffne(datei), {});
  Peer peer(datei);
  std::vector<double> unser;
  std::vector<double> ihrer;
  for (int lauf = 0; lauf < 11; ++lauf) {
    lies_und_markiere();
    unser.push_back(messung::sekunden([&] { pruefe(store.FKT_SpeichernBilder(), "save"); }));
    store.AktInd(999);
    pruefe(!store.Bild_Changeflag(), "a row was not written");
    ihrer.push_back(messung::sekunden([&] {
      for (const QByteArray& text : Mitschrift::texte) peer.exec(text);
    }));
  }
  messung::zeile("save 1,000 changed rows / the same texts by exec", unser, ihrer, 1.3);
}

void messe_Groesse(const QTemporaryDir& ordner) {
  const QString klein = lege_an(ordner, u"klein.db"_s);
  const QString gross = lege_an(ordner, u"gross.db"_s);
  fuelle(klein, 100, 10);
  fuelle(gross, 100'000, 10);
  clsBildZuordnungen im_kleinen;
  clsBildZuordnungen im_grossen;
  im_kleinen.Init(zeichenfolge(klein), oeffne(klein), {});
  im_grossen.Init(zeichenfolge(gross), oeffne(gross), {});
  int nummer = 0;
  const auto lies = [&nummer](clsBildZuordnungen& store, int saetze) {
    for (int i = 0; i < 200; ++i) {
      nummer = (nummer + 7919) % saetze;
      pruefe(store.FKT_LeseBilder(u"RE"_s, u"%1"_s.arg(nummer, 7, 10, QChar(u'0')), {}, {}, {}, {}, u"Bel"_s, {}, {}),
          "read");
    }
  };
  messung::vergleiche(
      "read 200 records of 10 in 1,000,000 rows / in 1,000", 21, 2.0, [&] { lies(im_grossen, 100'000); },
      [&] { lies(im_kleinen, 100); });
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  const QTemporaryDir ordner((argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s) + u"/bench-XXXXXX"_s);
  pruefe(ordner.isValid(), "folder");
  try {
    messe_Lesen(ordner);
    messe_Speichern(ordner);
    messe_Groesse(ordner);
  } catch (const Laufzeitfehler& fehler) {
    pruefe(false, fehler.what());
  }
  return messung::urteil();
}
