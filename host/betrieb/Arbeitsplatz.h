#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "platform/adodb/Connection.h"
#include "platform/host/Anwendungsobjekt.h"

/// What the program works on: its database and its picture tree. The picture tree is drive P: of the path map, since a
/// dot anywhere in a root's path would hide every text file below it.
class Arbeitsplatz {
 public:
  explicit Arbeitsplatz(Wirtsoptionen optionen) : optionen_(std::move(optionen)) {}

  const Wirtsoptionen& optionen() const noexcept { return optionen_; }
  /// Opening makes the data folder first, which takes its time.
  bool erster_Start() const;
  /// Opening brings an older data folder to the state of today first, which takes its time with many records.
  bool uebernimmt() const;
  /// The first start, and the user is to say with what to begin.
  bool fragt_Anfang() const { return optionen_.anfang == Anfangsbestand::Fragen && erster_Start(); }
  /// With what a data folder begins that is made now.
  void anfang(Anfangsbestand wert) { optionen_.anfang = wert; }
  /// Opening may wait for a server.
  bool wartet_auf_Server() const;
  /// The connection names a user, and neither the call nor the user has given the password yet, or the server has
  /// refused it.
  bool braucht_Kennwort() const;
  /// The password that the user gave; kept in memory for as long as the server takes it.
  void kennwort(const QString& wert) {
    kennwort_ = wert;
    verbindungszeichenfolge_.clear();
  }
  /// Why the last opening failed, and Anderer where it did not.
  Datenbankgrund ausfallgrund() const noexcept { return ausfallgrund_; }
  /// Makes what the database needs before it can be opened, by whomever: the data folder where it is needed and
  /// missing, today's tables in an older one, and the connect string. Closes the connection. A failure ends with
  /// Abbruch and words for the user.
  void bereite_vor();
  /// Opens the database, anew where it was open; prepares it first where that was not done. A failure ends with Abbruch
  /// and words for the user; nothing is open then. From now on the journal of this database is written.
  void oeffne();
  /// Somebody else has tried to open the database and could not.
  void merke_Ausfall(Datenbankgrund grund);

  /// The database's connect string; empty until it was prepared once.
  const QString& verbindungszeichenfolge() const noexcept { return verbindungszeichenfolge_; }
  /// The open connection, or none.
  const std::shared_ptr<adodb::Connection>& verbindung() const noexcept { return verbindung_; }
  /// What the dialogs get of this program.
  std::shared_ptr<Anwendungsobjekt> anwendungsobjekt() const;
  /// The picture root for the component, without a closing backslash.
  QString wurzel() const { return QStringLiteral("P:"); }
  /// Why the pictures can't be reached at this moment, in words for the user, or none.
  std::optional<QString> wurzel_fehlt();
  /// The root is there but holds nothing at all, as the place does where a drive is not mounted.
  bool wurzel_leer() const;

 private:
  QString angabe_der_Wurzel() const;
  void binde_Wurzel();

  Wirtsoptionen optionen_;
  std::optional<QString> kennwort_;
  Datenbankgrund ausfallgrund_ = Datenbankgrund::Anderer;
  QString verbindungszeichenfolge_;
  std::shared_ptr<adodb::Connection> verbindung_;
  bool wurzel_gebunden_ = false;
  std::shared_ptr<Protokoll> protokoll_;
};
