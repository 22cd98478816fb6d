#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "host/bericht/ausgabe/Ausgabebild.h"
#include "host/bericht/ausgabe/Bildleser.h"
#include "store/clsBildZuordnungen.h"

/// A folder that takes pictures. What is not kept until the end of its life is taken back: what was written, and the
/// folders that were made for it.
class Ordnerziel {
 public:
  /// A path of the table. Nothing is touched yet.
  Ordnerziel(clsBildZuordnungen& store, QString ordner) : store_(store), ordner_(std::move(ordner)) {}
  ~Ordnerziel();
  Q_DISABLE_COPY_MOVE(Ordnerziel)

  /// Nothing has one of the names already, and the folder is none or a folder. Ends with Abbruch, Ausgang::Datei.
  void pruefe(const std::vector<Ausgabebild>& bilder) const;
  /// Writes what the reader gives, until it is stopped. A failure ends with Abbruch, Ausgang::Datei.
  void schreibe(const std::vector<Ausgabebild>& bilder, Bildleser& leser);
  void behalte();

 private:
  void pruefe_Namen(const QString& name) const;
  void mache_Ordner();
  void schreibe_Datei(const QString& name, const QByteArray& bytes, const QString& vorbild);

  clsBildZuordnungen& store_;
  QString ordner_;
  QStringList neue_Dateien_;
  /// The lowest one first.
  QStringList neue_Ordner_;
};
