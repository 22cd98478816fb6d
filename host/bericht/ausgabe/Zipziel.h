#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "host/bericht/ausgabe/Ausgabebild.h"
#include "host/bericht/ausgabe/Bildleser.h"

/// A ZIP file that takes pictures. It is written beside its name, under a hidden one, and gets it when it is whole;
/// nothing is replaced.
class Zipziel {
 public:
  /// A path of the table. Nothing is touched yet.
  explicit Zipziel(QString datei);
  /// What has not got its name is gone.
  ~Zipziel();
  Q_DISABLE_COPY_MOVE(Zipziel)

  /// The name ends so that it means a ZIP file.
  static bool ist_gemeint(const QString& ziel) { return ziel.endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive); }

  /// Nothing has the name yet, and its folder is there. Ends with Abbruch, Ausgang::Datei.
  void pruefe() const;
  /// Writes what the reader gives, until it is stopped. A failure ends with Abbruch, Ausgang::Datei.
  void schreibe(const std::vector<Ausgabebild>& bilder, Bildleser& leser);
  /// Gives it its name. A failure ends with Abbruch, Ausgang::Datei.
  void behalte();

 private:
  QString datei_;
  /// What is written stands there until it is kept.
  QString daneben_;
};
