#pragma once

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QString>

/// Where a file for the user goes when nothing else is known: his documents, or his home where there is no such folder.
inline QString zielordner() {
  const QString dokumente = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(dokumente).isDir() ? dokumente : QDir::homePath();
}
