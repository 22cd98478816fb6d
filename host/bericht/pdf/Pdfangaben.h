#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// What a PDF file tells of itself, in its properties and once more, with the same words, in its XMP packet (ISO
/// 16684-1; ISO 19005-1, 6.7).
struct Pdfangaben {
  QString titel;
  QString verfasser;
  QString thema;
  QDateTime zeit;

  static QString programm() { return QStringLiteral("bildzuordnung"); }
  static QString erzeuger();
  /// "D:20261122143000+01'00'".
  QByteArray pdf_zeit() const;
  QByteArray xmp() const;
};
