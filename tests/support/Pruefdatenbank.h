#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/adodb/Connection.h"
#include "platform/adodb/sqlite/SqliteTreiber.h"
#include "tests/support/Pruefziel.h"
#include "tests/support/Umgebung.h"

/// What passes to a database, in order, and which of it is to fail. Shared by the connections of one test.
class Mitschrift {
 public:
  /// Side that sent a text: the host's connection, or one that the system opened itself.
  enum class Seite { Wirt, System };
  struct Eintrag {
    Seite seite = Seite::Wirt;
    QString text;
    bool gescheitert = false;
    /// The values of its markers.
    std::vector<adodb::Wert> werte = {};
  };

  /// All texts since the last fetch, oldest first, those that failed too; the list is empty afterwards.
  QStringList hole();
  /// The same for one side only; the other side's texts are dropped.
  QStringList hole(Seite seite);
  /// All since the last fetch with side and outcome; they stay.
  const std::vector<Eintrag>& eintraege() const noexcept { return eintraege_; }

  /// The text that is sent as the `n`-th from now on (1 is the next one) fails with that number, and only that one.
  void scheitere_am(int n, std::int32_t nummer = fehlernummer::Anweisung);
  void scheitere_am_naechsten(std::int32_t nummer = fehlernummer::Anweisung) { scheitere_am(1, nummer); }
  /// Every text that begins so fails, without regard to case.
  void scheitere_bei_Beginn(const QString& anfang, std::int32_t nummer = fehlernummer::Anweisung);
  /// Every text fails.
  void scheitere_immer(std::int32_t nummer = fehlernummer::Anweisung) { scheitere_bei_Beginn(QString(), nummer); }
  /// Every opening fails.
  void scheitere_beim_Oeffnen(std::int32_t nummer = fehlernummer::Verbindung) { beim_Oeffnen_ = nummer; }
  /// Takes back all failures that are still to come.
  void heile();
  /// Runs at each text, before the database gets it.
  void bei_jedem(std::function<void(const QString&)> dabei) { dabei_ = std::move(dabei); }
  /// All texts that were passed on to the database, since the beginning: not those that failed by plan.
  const QStringList& weitergegeben() const noexcept { return weitergegeben_; }
  /// Lets them go. For runs of thousands, where no server's own record is compared with them.
  void vergiss_Weitergegebenes() { weitergegeben_.clear(); }

 private:
  friend class Aufzeichner;
  struct Fehlerplan {
    int n = 0;  ///< counts down to the text that fails; 0 for a plan by beginning
    QString anfang;
    std::int32_t nummer = 0;
  };
  void pruefe_Oeffnen() const;
  /// Notes the text and the values of its markers; raises when it is to fail.
  void nimm(Seite seite, const QString& text, const std::vector<adodb::Wert>& werte);

  std::vector<Eintrag> eintraege_;
  QStringList weitergegeben_;
  std::vector<Fehlerplan> plaene_;
  std::function<void(const QString&)> dabei_;
  std::int32_t beim_Oeffnen_ = 0;
};

/// A driver that notes every text it is given, fails where the test wants it, and passes the rest on to the driver of
/// the database under test. The texts are noted above that driver and its dialect: as they were sent, and those that
/// fail as well.
class Aufzeichner final : public adodb::Treiber {
 public:
  Aufzeichner(std::shared_ptr<Mitschrift> mitschrift, Mitschrift::Seite seite, std::unique_ptr<adodb::Treiber> innen);
  void oeffne(const QString& verbindungszeichenfolge) override;
  void schliesse() noexcept override { innen_->schliesse(); }
  bool ist_offen() const noexcept override { return innen_->ist_offen(); }
  adodb::Ergebnis fuehre_aus(const QString& text) override { return fuehre_aus(text, {}); }
  adodb::Ergebnis fuehre_aus(const QString& text, const std::vector<adodb::Wert>& werte) override;
  void gib_auf() noexcept override { innen_->gib_auf(); }

 private:
  std::shared_ptr<Mitschrift> mitschrift_;
  Mitschrift::Seite seite_;
  std::unique_ptr<adodb::Treiber> innen_;
};

/// A database of the test's own with the empty tables Bild_Zuordnungen and BelegKopfZunft, made from the scripts in
/// sql/: an SQLite file, or on the program's server where KVO_PRUEFDATENBANK says so. While it lives the provider
/// "Pruefling" opens recording connections that write to its Mitschrift; only one lives at a time. Connections that the
/// system keeps for its thread must be reset by the test.
class Pruefdatenbank {
 public:
  /// `wartegrenze` is the bound of waiting for a transaction of the same thread, for the recording connections on
  /// SQLite.
  explicit Pruefdatenbank(std::chrono::milliseconds wartegrenze = adodb::SqliteTreiber::Wartegrenze);
  ~Pruefdatenbank();
  Pruefdatenbank(const Pruefdatenbank&) = delete;
  Pruefdatenbank& operator=(const Pruefdatenbank&) = delete;

  /// "Provider=Pruefling;Data Source=…": what the system opens its own connection from. Recorded as Seite::System.
  QString verbindungszeichenfolge() const { return QStringLiteral("Provider=Pruefling;") + angaben_; }
  /// The host's open connection. Recorded as Seite::Wirt.
  const std::shared_ptr<adodb::Connection>& verbindung() const noexcept { return verbindung_; }
  Mitschrift& mitschrift() noexcept { return *mitschrift_; }

  /// Runs a text beside all recording, to set up or to look at the tables; a failure fails the test. It must be one
  /// that every database takes. On a server the columns have no names but "1", "2" ….
  std::shared_ptr<adodb::Recordset> fuehre_aus(const QString& text);
  /// All rows of a query as texts, NULL as "<NULL>", beside all recording.
  std::vector<QStringList> zeilen(const QString& abfrage);
  /// Number of rows of Bild_Zuordnungen; `where` is a condition without the word, or empty.
  int anzahl(const QString& where = {});

  /// What came to the server since the last question, letter by letter, with anything that is no statement in angle
  /// brackets; on SQLite what was passed on to it.
  QStringList angekommen();
  /// Where there is a server: what came to it is what was passed on, letter by letter and in that order, and nothing
  /// besides.
  void pruefe_Ankunft() const;

 private:
  std::unique_ptr<adodb::Treiber> treiber() const;
  void lege_Datei_an();

  Testordner ordner_;
  std::chrono::milliseconds wartegrenze_;
  QString angaben_;
  std::shared_ptr<Mitschrift> mitschrift_;
  std::shared_ptr<adodb::Connection> verbindung_;
  /// On SQLite; a server is asked by its control channel.
  std::unique_ptr<adodb::Connection> daneben_;
  bool umgebaut_ = false;
  qsizetype gesehen_ = 0;
};

/// The text of a file below the project's own folder.
QString projektdatei(const QString& name);
