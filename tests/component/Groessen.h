#pragma once

#include <QMap>
#include <QString>

/// The size of every published class, as this program was compiled.
QMap<QString, qint64> klassengroessen();
