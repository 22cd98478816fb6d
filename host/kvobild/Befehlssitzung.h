#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/befehl/Befehlszeile.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "host/betrieb/vorgang/Datensatz.h"
#include "platform/adodb/Connection.h"
#include "platform/host/KVOCore.h"
#include "store/clsBildZuordnungen.h"

/// Makes the picture root of the call drive P: of the path map, since a dot anywhere in a root's path would hide every
/// text file below it. A missing folder ends with Ausgang::Datei. Gives the root for the store.
QString bildwurzel(const Aufruf& aufruf);
/// The same where the call names a root at all; none otherwise.
std::optional<QString> bildwurzel_wenn_genannt(const Aufruf& aufruf);
/// The connect string of the call; a bare file name means a SQLite file. Missing ends with Ausgang::Aufruf.
QString verbindungszeichenfolge(const Aufruf& aufruf);

/// The data folder of this user, whether it is there or not; none for a script without a home.
QString eigener_Datenordner();
/// The data folder whose journal the call is about: that of the database which it names, otherwise this user's.
QString protokollordner(const Aufruf& aufruf);

/// The path in the table's form of a file to be written. A folder of that name ends with Ausgang::Datei.
QString zieldatei(const QString& angabe);

/// Opens a database for reading. A missing SQLite file is not made but refused; failures end with Ausgang::Datenbank.
std::shared_ptr<adodb::Connection> oeffne_vorhandene(const QString& verbindung);

/// The database of one call and the store over it. Failures that the store reports go to standard error as they come.
class Befehlssitzung {
 public:
  /// Opens the database of the call. A missing SQLite file is not made but refused.
  explicit Befehlssitzung(const Aufruf& aufruf);
  ~Befehlssitzung();
  Q_DISABLE_COPY_MOVE(Befehlssitzung)

  clsBildZuordnungen& store() noexcept { return *store_; }
  /// The open connection that the store reads over.
  const std::shared_ptr<adodb::Connection>& verbindung() const noexcept { return verbindung_; }

  /// Reads the assignments that match in their stored order, and their stored SortIndex with them, which the store
  /// itself leaves at 0: a row that is saved then keeps its place. True when there is any.
  bool lies(const Datensatz& satz) { return lies_mit(satz, {}, {}); }
  /// Reads what the table holds of a picture file, whichever record it belongs to.
  bool lies(const QString& pfad, const namen::Bilddatei& bild) { return lies_mit({}, bild, pfad); }
  /// Rows of the last reading whose picture has that name.
  std::vector<std::int32_t> zeilen_von(const namen::Bilddatei& bild);
  /// Stored SortIndex of a row of the last reading, as the table has it.
  std::int64_t sortindex(std::int32_t zeile) const { return sortindex_.at(static_cast<std::size_t>(zeile)); }
  /// Name and extension of the row under the cursor.
  namen::Bilddatei aktuelles_Bild() const { return {store_->Bild_Bildname(), store_->Bild_BildExt()}; }

  /// Writes what is flagged of a record and asks the table what became of it; what is to be said of single pictures
  /// goes to standard error. Where a flagged row holds an apostrophe that would stand in a statement as it is, nothing
  /// is sent and it ends with Abbruch, Ausgang::Datenbank.
  Zuordnungsweg::Ergebnis speichere(const Datensatz& satz);
  /// The same; what is not written whole ends with Ausgang::Datenbank and `sonst`.
  void speichere_ganz(const Datensatz& satz, const QString& sonst);

 private:
  class Core;
  class Anwendung;
  bool lies_mit(const Datensatz& satz, const namen::Bilddatei& bild, const QString& pfad);
  void pruefe_gekennzeichnete();
  std::int32_t berichte() const;

  std::shared_ptr<Core> core_;
  std::shared_ptr<KVOCore> vorher_;
  QString zeichenfolge_;
  Protokoll protokoll_;
  std::shared_ptr<adodb::Connection> verbindung_;
  std::shared_ptr<clsBildZuordnungen> store_;
  std::vector<std::int64_t> sortindex_;
};
