#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

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
};

/// The same tree, in which deleting only notes what would go: later questions are answered as if it were gone. What the
/// user has no right to delete stays, as it would.
class Gedachter_Bildbaum final : public Bildbaum {
 public:
  const std::vector<Aufraeumposten>& Posten() const noexcept { return posten_; }

  QStringList Files(const QString& ordner) override;
  /// Only for the folder whose Files were asked for last.
  bool FileExists(const QString& ordner, const QString& name) override;
  bool ist_leer(const QString& ordner) override;
  void DeleteFile(const QString& ordner, const QString& name, Aufraeumposten::Grund grund) override;
  void DeleteFolder(const QString& ordner) override;

 private:
  void merke(const QString& ordner, const QString& name, Aufraeumposten::Grund grund);

  std::vector<Aufraeumposten> posten_;
  /// Places on this machine of all that would be gone, and how many of them each folder held.
  QSet<QByteArray> weg_;
  QHash<QString, std::int64_t> weg_im_Ordner_;
  /// How many files of a name, in whatever case, the folder asked for last would still hold.
  QHash<QString, int> uebrige_;
};
