#pragma once

#include <gtest/gtest.h>

#include "tests/support/Bilddatei.h"
#include "tests/support/Bildwurzel.h"

/// A test with a picture tree of its own.
class Bildertest : public ::testing::Test {
 protected:
  /// Writes a JPEG of one colour into the tree; gives its content.
  QByteArray lege_Bild(const QString& name, QSize groesse = QSize(120, 80), const QColor& farbe = Qt::blue,
      const QString& ordner = QStringLiteral("Belege/1")) {
    const QByteArray bytes = bilddatei(groesse, farbe);
    wurzel.schreibe(ordner + u'/' + name, bytes);
    return bytes;
  }

  Bildwurzel wurzel;
};
