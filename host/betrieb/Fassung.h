#pragma once

#include <QString>
#include <QStringList>

/// Which version this is, and of what.
namespace fassung {

/// The product's version, as "1.0.0".
QString nummer();

/// One line each: the libraries that are used with their versions, and the drivers for a database server.
QStringList angaben();

/// All of it, as `programm` says it on the command line.
QString text(const QString& programm);

}  // namespace fassung
