#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "component/weg/Satz.h"
#include "platform/adodb/Connection.h"
#include "platform/host/KVOCore.h"
#include "store/clsBildZuordnungen.h"

namespace weg {

/// Takes the reports of the store for as long as it lives, where the caller puts them in words of its own; with
/// `weitergeben` the host's core gets them all the same.
class Berichtsfang {
 public:
  explicit Berichtsfang(bool weitergeben = false);
  ~Berichtsfang() { KVOCore::setze(vorher_); }
  Q_DISABLE_COPY_MOVE(Berichtsfang)
  bool leer() const noexcept { return texte_.isEmpty(); }
  /// What was reported first: later failures mostly follow from it.
  QString erster() const { return texte_.value(0); }

 private:
  class Core;
  QStringList texte_;
  std::shared_ptr<KVOCore> vorher_;
};

/// The two connections of a road: the host's, to read over, and the store's own, to write with.
class Verbindungen {
 public:
  explicit Verbindungen(const Anwendungsobjekt& anwendung);

  const QString& zeichenfolge() const noexcept { return zeichenfolge_; }
  const std::shared_ptr<adodb::Connection>& lesende() const noexcept { return lesende_; }

  /// Gives up the writing connection, so that the next statement opens one anew, and opens the reading one anew in its
  /// place where it does not answer any more. Why it could not be opened, or empty.
  QString erneuere();
  /// Binds a collection to the connections and reads a record's rows into it. Why it can't be read, or empty.
  QString lies(clsBildZuordnungen& bilder, const Zuordnungsweg::Vorgang& vorgang, bool weitergeben = false) const;
  /// All rows of a record as the table holds them, or none with the reason in `grund`.
  std::optional<std::vector<Stand>> lies_Staende(const Zuordnungsweg::Vorgang& vorgang, QString& grund) const;

 private:
  QString zeichenfolge_;
  std::shared_ptr<adodb::Connection> lesende_;
};

}  // namespace weg
