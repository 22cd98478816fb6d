#include "host/betrieb/Fassung.h"

#include "component/Bibliotheken.h"
#include "host/betrieb/aufnahme/Heifleser.h"

using namespace Qt::Literals::StringLiterals;

QString fassung::nummer() {
  return KVO_FASSUNG;
}

QStringList fassung::angaben() {
  QStringList zeilen;
  for (const bibliotheken::Bibliothek& eine : bibliotheken::benutzte()) zeilen.append(eine.name + u' ' + eine.fassung);
  const QString heif = heifleser::fassung();
  zeilen.append(u"libheif "_s + (heif.isEmpty() ? u"nicht gefunden; HEIC und AVIF werden nicht gelesen"_s : heif));
  const QStringList treiber = bibliotheken::odbc_Treiber();
  zeilen.append(u"ODBC-Treiber: "_s +
      (treiber.isEmpty() ? u"keiner gefunden; Datenbanken auf einem Server sind nicht zu erreichen"_s
                         : treiber.join(u", "_s)));
  return zeilen;
}

QString fassung::text(const QString& programm) {
  return programm + u' ' + nummer() + u'\n' + angaben().join(u'\n');
}
