#pragma once

#include <QColor>
#include <QSize>
#include <QString>
#include <memory>

#include "platform/gdiplus/Bild.h"

/// A drawing from a resource on a sheet of that colour; the sheet alone without the SVG plugin.
std::shared_ptr<const Bild> gezeichnetes_Blatt(const QString& svg, QSize groesse, const QColor& grund);

/// The drawing that stands for a picture that can't be read, 96 pixels wide and high; drawn once for all.
const std::shared_ptr<const Bild>& ersatzbild();
