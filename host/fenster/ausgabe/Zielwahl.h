#pragma once

#include <QString>
#include <functional>

class QWidget;

/// Asks where pictures are to go, beginning at a path; empty where the user gives up. Paths of this machine.
struct Zielwahl {
  using Frage = std::function<QString(QWidget* ueber, const QString& anfang)>;

  /// A folder that is there.
  Frage ordner;
  /// A file that need not be.
  Frage zip;

  /// By the toolkit's windows for files.
  static Zielwahl fragende();
};
