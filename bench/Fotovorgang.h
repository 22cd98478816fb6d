#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <chrono>
#include <cstdint>

#include "bench/Turbojpeg.h"
#include "platform/files/Pfadkarte.h"

/// A record of a hundred photos of 12 megapixels, made of those of grosse_fotos.sh.
namespace fotovorgang {

inline constexpr int Anzahl = 100;
inline const QString Unterordner = QStringLiteral("Artikel\\Allg");

/// The copies are minutes old in real life; a cache that waits for a file to rest must not wait in a benchmark.
inline std::int64_t in_einer_Stunde() {
  const auto spaeter = std::chrono::system_clock::now() + std::chrono::hours(1);
  return std::chrono::duration_cast<std::chrono::nanoseconds>(spaeter.time_since_epoch()).count();
}

inline QString name(int nummer) {
  return QStringLiteral("bild%1.jpg").arg(nummer);
}

/// Path of a picture on this machine.
inline QString datei(const QString& fotos, int nummer) {
  return fotos + QStringLiteral("/streifen/Artikel/Allg/") + name(nummer);
}

inline QByteArray lies(const QString& pfad) {
  QFile datei(pfad);
  messung::verlange(datei.open(QIODevice::ReadOnly), "photo missing: run grosse_fotos.sh first");
  return datei.readAll();
}

/// Makes the files in `fotos`/streifen, as far as they are missing, and maps that folder as drive P:. What lies behind
/// the end of a picture does not count, but makes each content its own.
inline void mache(const QString& fotos) {
  const QList<QByteArray> vorlagen{lies(fotos + QStringLiteral("/foto1_4032x3024_420.jpg")),
      lies(fotos + QStringLiteral("/foto1_4031x3021_420.jpg"))};
  messung::verlange(QDir().mkpath(fotos + QStringLiteral("/streifen/Artikel/Allg")), "folder for the copies");
  for (int i = 0; i < Anzahl; ++i) {
    const QByteArray inhalt = vorlagen[i % vorlagen.size()] + QByteArray::number(i);
    QFile kopie(datei(fotos, i));
    if (kopie.size() == inhalt.size()) continue;
    messung::verlange(kopie.open(QIODevice::WriteOnly) && kopie.write(inhalt) == inhalt.size(), "copy of a photo");
  }
  Pfadkarte::aktuell().setze(QStringLiteral("P:"), fotos + QStringLiteral("/streifen"));
}

}  // namespace fotovorgang
