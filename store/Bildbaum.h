#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "store/Aufraeumliste.h"

/// What the clearing asks of a folder tree and does to it. Folders are paths of the table; failures are those of the
/// FileSystemObject.
class Bildbaum {
 public:
  Bildbaum() = default;
  virtual ~Bildbaum();
  Bildbaum(const Bildbaum&) = delete;
  Bildbaum& operator=(const Bildbaum&) = delete;

  /// Names of a folder's files, in their order.
  virtual QStringList Files(const QString& ordner);
  virtual bool FileExists(const QString& ordner, const QString& name);
  /// The folder holds nothing at all. Links to folders, and what no path of the table can name, are something.
  virtual bool ist_leer(const QString& ordner);
  /// Deletes a read-only file too.
  virtual void DeleteFile(const QString& ordner, const QString& name, Aufraeumposten::Grund grund);
  virtual void DeleteFolder(const QString& ordner);
  /// The next file of the tree is looked at; false where the walk is to end.
  virtual bool naechste_Datei() { return true; }
  /// A walk was to end.
  virtual bool angehalten() const { return false; }
};

/// The same tree, in which deleting only notes what would go: later questions are answered as if it were gone. What the
/// user has no right to delete stays, as it would.
class Gedachter_Bildbaum final : public Bildbaum {
 public:
  /// `weiter` is asked before each file, with the number of those before it; without one the walk goes to its end.
  explicit Gedachter_Bildbaum(std::function<bool(std::size_t)> weiter = {}) : weiter_(std::move(weiter)) {}

  const std::vector<Aufraeumposten>& Posten() const noexcept { return posten_; }

  QStringList Files(const QString& ordner) override;
  /// Only for the folder whose Files were asked for last.
  bool FileExists(const QString& ordner, const QString& name) override;
  bool ist_leer(const QString& ordner) override;
  void DeleteFile(const QString& ordner, const QString& name, Aufraeumposten::Grund grund) override;
  void DeleteFolder(const QString& ordner) override;
  bool naechste_Datei() override;
  bool angehalten() const override { return angehalten_; }

 private:
  void merke(const QString& ordner, const QString& name, Aufraeumposten::Grund grund);

  std::function<bool(std::size_t)> weiter_;
  std::size_t dateien_ = 0;
  bool angehalten_ = false;
  std::vector<Aufraeumposten> posten_;
  /// Places on this machine of all that would be gone, and how many of them each folder held.
  QSet<QByteArray> weg_;
  QHash<QString, std::int64_t> weg_im_Ordner_;
  /// How many files of a name, in whatever case, the folder asked for last would still hold.
  QHash<QString, int> uebrige_;
};
