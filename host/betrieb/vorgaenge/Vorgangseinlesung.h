#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

#include "host/betrieb/vorgaenge/Listenleser.h"
#include "host/betrieb/vorgaenge/Spaltenwahl.h"
#include "platform/adodb/Connection.h"

/// What a line of a list does to the table.
enum class Zeilenart { Neu = 0, Geaendert = 1, Gleich = 2, Falsch = 3 };

/// How many lines do what.
struct Einlesebefund {
  qint64 neu = 0;
  qint64 geaendert = 0;
  qint64 gleich = 0;
  qint64 falsch = 0;
  qint64 neue_Kunden = 0;
  qint64 geaenderte_Kunden = 0;
  qint64 zeilen() const { return neu + geaendert + gleich + falsch; }
  friend bool operator==(const Einlesebefund&, const Einlesebefund&) = default;
};

/// A line of the list as it was understood.
struct Zeilenbefund {
  /// Place among the lines that were read, from 1; for asking on behind it.
  qint64 folge = 0;
  /// The line of the file on which it begins.
  qint64 zeile = 0;
  Zeilenart art = Zeilenart::Gleich;
  QString typ1;
  QString nummer;
  QString text;
  /// Why the line is wrong, without a full stop; empty where it is not.
  QString grund;
};

/// Takes a list of records into the embedded database: it is read into temporary tables, compared with what is there,
/// and written in one transaction, all or nothing. The columns of a record that the list does not name stay. A record
/// without a column for its time was touched this moment. Owns its temporary tables, no more than one such object on a
/// connection. Failures end with Abbruch and words; nothing is changed then.
class Vorgangseinlesung {
 public:
  enum class Schritt { Lesen, Vergleichen, Schreiben };
  /// Told how far a step is; false gives up, which ends the step with Abbruch, Ausgang::Teilweise.
  using Fortschritt = std::function<bool(Schritt schritt, qint64 getan, qint64 ganz)>;

  /// A connection that nobody else uses meanwhile.
  explicit Vorgangseinlesung(adodb::Connection& verbindung, Fortschritt fortschritt = {});
  ~Vorgangseinlesung();
  Q_DISABLE_COPY_MOVE(Vorgangseinlesung)

  /// Reads the list from its beginning, in place of one that was read before.
  void lies(Listenleser& liste, const Spaltenwahl& wahl);
  /// Compares what was read with the table as it stands.
  Einlesebefund vergleiche();
  /// Lines behind the given place, in their order; of one kind or of all.
  QList<Zeilenbefund> zeilen(std::optional<Zeilenart> art, qint64 hinter, int hoechstens);
  /// Compares once more where the database has changed since, and writes. Where a line is wrong, nothing is written
  /// unless `fehlerhafte_auslassen`; what it gives tells by `falsch`.
  Einlesebefund uebernimm(bool fehlerhafte_auslassen);

 private:
  class Worte_der_Zeilen;
  void lege_an();
  void lies_Zeilen(Listenleser& liste, const Spaltenwahl& wahl);
  void finde_Doppelte();
  void finde_Vorhandene();
  void ordne_ein();
  void sammle_Kunden();
  Einlesebefund zaehle();

  void schreibe(const Einlesebefund& befund);
  void schreibe_Kunden();
  void sammle_Beruehrte();
  void nimm_aus_dem_Index();
  void schreibe_Geaenderte();
  void schreibe_Neue();
  void nimm_in_den_Index();
  /// Runs statements over the touched records, a part of them at a time; their two values are the part's bounds.
  void je_Teil_der_Beruehrten(const QList<QString>& anweisungen);
  /// The same over the lines; its first value is this moment, the other two are the part's bounds.
  void je_Teil_der_Zeilen(const QString& anweisung);

  void melde(Schritt schritt, qint64 getan, qint64 ganz);
  qint64 zahl(const QString& abfrage);
  QString datenversion();

  adodb::Connection& verbindung_;
  Fortschritt fortschritt_;
  /// The state of the database that was compared.
  QString verglichen_;
  qint64 getan_ = 0;
  qint64 ganz_ = 0;
};
