// The store over TDS against a plain program on ODBC's C interface: 10,000 rows into the collection, on the server of
// tests/tds, which gives the same prepared answer to both from its memory. Usage: bench_odbc.

#include <sqlext.h>
#include <sqlucode.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "bench/Messung.h"
#include "platform/basic/Laufzeitfehler.h"
#include "store/clsBildZuordnungen.h"
#include "tests/support/Tdsserver.h"

using namespace Qt::Literals::StringLiterals;
using messung::verlange;

namespace {

constexpr int Zeilen = 10'000;
constexpr int Laeufe = 31;
const QString Anweisung = u"Select * from Bild_Zuordnungen  where Key1 = 'RE'order by SortIndex"_s;

QString odbc_Form(int port) {
  return u"Driver={FreeTDS};Server=127.0.0.1;Port=%1;Database=bilder;UID=sa;PWD=Geheim-1;TDS_Version=7.4"_s.arg(port);
}

SQLWCHAR* zeichen(const QString& text) {
  return const_cast<SQLWCHAR*>(reinterpret_cast<const SQLWCHAR*>(text.utf16()));
}

/// What a sober program on ODBC does: one statement, all columns bound once as texts of their full width, the number as
/// a number, one SQLFetch a row. Kept rows have one piece of memory each, as long as their values.
class Peer {
 public:
  explicit Peer(int port) {
    verlange(SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &umgebung_)), "environment");
    SQLSetEnvAttr(umgebung_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    verlange(SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, umgebung_, &verbindung_)), "connection");
    const QString form = odbc_Form(port);
    verlange(SQL_SUCCEEDED(SQLDriverConnectW(
                 verbindung_, nullptr, zeichen(form), SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)),
        "connect");
  }
  ~Peer() {
    SQLDisconnect(verbindung_);
    SQLFreeHandle(SQL_HANDLE_DBC, verbindung_);
    SQLFreeHandle(SQL_HANDLE_ENV, umgebung_);
  }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  /// Reads all rows and gives their number. `behalten`: they are in memory afterwards, and those read before are gone;
  /// otherwise only the length of every value is looked at.
  int lies(bool behalten) {
    satz_.clear();
    SQLHSTMT anweisung = SQL_NULL_HSTMT;
    verlange(SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, verbindung_, &anweisung)), "statement");
    verlange(SQL_SUCCEEDED(SQLExecDirectW(anweisung, zeichen(Anweisung), SQL_NTS)), "execute");
    SQLSMALLINT spalten = 0;
    SQLNumResultCols(anweisung, &spalten);
    std::vector<Spalte> gebundene(static_cast<std::size_t>(spalten));
    for (SQLUSMALLINT i = 1; i <= gebundene.size(); ++i) gebundene[i - 1u].binde(anweisung, i);
    int zeilen = 0;
    for (; SQL_SUCCEEDED(SQLFetch(anweisung)); ++zeilen) {
      std::size_t bytes = 0;
      for (const Spalte& spalte : gebundene)
        if (spalte.laenge != SQL_NULL_DATA) bytes += static_cast<std::size_t>(spalte.laenge);
      bytes_ += bytes;
      if (behalten) satz_.push_back(kopie(gebundene, bytes));
    }
    SQLFreeHandle(SQL_HANDLE_STMT, anweisung);
    return zeilen;
  }

 private:
  struct Spalte {
    std::vector<SQLWCHAR> text;
    SQLINTEGER zahl = 0;
    SQLLEN laenge = 0;
    void binde(SQLHSTMT anweisung, SQLUSMALLINT nummer) {
      SQLSMALLINT typ = 0;
      SQLULEN breite = 0;
      SQLDescribeColW(anweisung, nummer, nullptr, 0, nullptr, &typ, &breite, nullptr, nullptr);
      if (typ == SQL_SMALLINT) {
        SQLBindCol(anweisung, nummer, SQL_C_SLONG, &zahl, sizeof zahl, &laenge);
        return;
      }
      text.resize(breite + 1);
      SQLBindCol(
          anweisung, nummer, SQL_C_WCHAR, text.data(), static_cast<SQLLEN>(text.size() * sizeof(SQLWCHAR)), &laenge);
    }
  };

  /// A row's lengths and, behind them, its values.
  static std::unique_ptr<char[]> kopie(const std::vector<Spalte>& spalten, std::size_t bytes) {
    std::unique_ptr<char[]> zeile(new char[spalten.size() * sizeof(SQLLEN) + bytes]);
    char* ziel = zeile.get();
    for (const Spalte& spalte : spalten) {
      std::memcpy(ziel, &spalte.laenge, sizeof(SQLLEN));
      ziel += sizeof(SQLLEN);
    }
    for (const Spalte& spalte : spalten) {
      if (spalte.laenge == SQL_NULL_DATA) continue;
      const void* wert = spalte.text.empty() ? static_cast<const void*>(&spalte.zahl) : spalte.text.data();
      std::memcpy(ziel, wert, static_cast<std::size_t>(spalte.laenge));
      ziel += spalte.laenge;
    }
    return zeile;
  }

  SQLHENV umgebung_ = SQL_NULL_HENV;
  SQLHDBC verbindung_ = SQL_NULL_HDBC;
  std::size_t bytes_ = 0;
  std::vector<std::unique_ptr<char[]>> satz_;
};

void fuelle(Tdsserver& server) {
  server.steuere(
      u"sql WITH RECURSIVE b(j) AS (SELECT 0 UNION ALL SELECT j + 1 FROM b WHERE j + 1 < %1) INSERT INTO "
      "Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Beschreibung, "
      "Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) SELECT 'RE', '0000000', '-', '-', "
      "printf('Heizkessel_0_20250314_0815%05d', j), 'jpg', 'Bel', '-', 'Belege\\RE\\2025', "
      "printf('Anschluß der Heizung im Keller, Bild %d', j), '0001' || printf('%46s', ''), NULL, '-', j FROM b"_s
          .replace(u"%1"_s, QString::number(Zeilen)));
  server.steuere(u"merke */Select"_s);
}

/// Processor time of this process, in and for it, in seconds.
double prozessorzeit() {
  rusage stand{};
  getrusage(RUSAGE_SELF, &stand);
  const auto sekunden = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
  };
  return sekunden(stand.ru_utime) + sekunden(stand.ru_stime);
}

struct Zeiten {
  std::vector<double> uhr;
  std::vector<double> prozessor;
  void miss(const std::function<void()>& arbeit) {
    const double vorher = prozessorzeit();
    uhr.push_back(messung::sekunden(arbeit));
    prozessor.push_back(prozessorzeit() - vorher);
  }
};

class Leser {
 public:
  explicit Leser(int port) {
    auto verbindung = std::make_shared<adodb::Connection>();
    verbindung->Open(odbc_Form(port));
    store_.Init(odbc_Form(port), verbindung, {});
  }
  void lies() {
    const bool gelesen = store_.FKT_LeseBilder(u"RE"_s, {}, {}, {}, {}, {}, {}, {}, {});
    verlange(gelesen && store_.AnzahlPos() == Zeilen, "read");
  }

 private:
  clsBildZuordnungen store_;
};

void messe_Zeit(int port) {
  Leser leser(port);
  Peer behaltender(port);
  Peer zaehlender(port);
  const auto unsere = [&] { leser.lies(); };
  const auto behalte = [&] { verlange(behaltender.lies(true) == Zeilen, "the peer's read"); };
  const auto zaehle = [&] { verlange(zaehlender.lies(false) == Zeilen, "the peer's read"); };
  Zeiten a;
  Zeiten b;
  Zeiten c;
  unsere();
  behalte();
  zaehle();
  for (int i = 0; i < Laeufe; ++i) {
    a.miss(unsere);
    b.miss(behalte);
    c.miss(zaehle);
  }
  messung::zeile("10,000 rows over TDS, by the clock / rows kept by the peer", a.uhr, b.uhr, 1.3);
  messung::zeile("the same, processor time of the reading process", a.prozessor, b.prozessor, messung::Ohne_Ziel);
  messung::zeile("by the clock / rows only fetched by the peer", a.uhr, c.uhr, messung::Ohne_Ziel);
  messung::zeile("the same, processor time of the reading process", a.prozessor, c.prozessor, messung::Ohne_Ziel);
}

/// Peak of a process that does only this, in MB.
double speicher(const std::function<void()>& arbeit) {
  int rohr[2];
  verlange(pipe(rohr) == 0, "pipe");
  const pid_t kind = fork();
  if (kind == 0) {
    arbeit();
    const double mb = messung::groesster_Speicher();
    _exit(write(rohr[1], &mb, sizeof mb) == sizeof mb ? 0 : 1);
  }
  double mb = 0;
  verlange(read(rohr[0], &mb, sizeof mb) == sizeof mb, "memory");
  waitpid(kind, nullptr, 0);
  close(rohr[0]);
  close(rohr[1]);
  return mb;
}

void messe_Speicher(int port) {
  const double leer = speicher([&] { const Leser leser(port); });
  const double voll = speicher([&] { Leser(port).lies(); });
  const double peer = speicher([&] { Peer(port).lies(true); });
  std::printf("%-58s %10.1f MB %10.1f MB   (%.1f MB without the rows)\n", "peak of a process that reads them once",
      voll, peer, leer);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  if (const QString grund = Tdsserver::hindernis(); !grund.isEmpty()) {
    std::fprintf(stderr, "bench_odbc: %s\n", qPrintable(grund));
    return 2;
  }
  Tdsserver server(u"sa"_s, u"Geheim-1"_s);
  verlange(server.laeuft(), "server");
  try {
    fuelle(server);
    messe_Speicher(server.port());
    messe_Zeit(server.port());
  } catch (const Laufzeitfehler& fehler) {
    verlange(false, fehler.what());
  }
  return messung::urteil();
}
