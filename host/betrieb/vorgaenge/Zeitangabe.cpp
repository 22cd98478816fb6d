#include "host/betrieb/vorgaenge/Zeitangabe.h"

#include <QDateTime>
#include <QRegularExpression>

#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Form = u"yyyy-MM-dd HH:mm:ss"_s;

/// Parts of a spelling: year, month, day, hour, minute, second and what stands behind, in this order of names.
std::optional<QDateTime> zeit_aus(const QRegularExpressionMatch& treffer) {
  const auto zahl = [&](const QString& name) { return treffer.captured(name).toInt(); };
  int jahr = zahl(u"jahr"_s);
  // Two digits mean this century: records of a firm that are older come with four.
  if (treffer.captured(u"jahr"_s).size() == 2) jahr += 2000;
  const QDate datum(jahr, zahl(u"monat"_s), zahl(u"tag"_s));
  const QTime uhr(zahl(u"stunde"_s), zahl(u"minute"_s), zahl(u"sekunde"_s));
  if (!datum.isValid() || !uhr.isValid()) return std::nullopt;
  const QString zone = treffer.captured(u"zone"_s);
  if (zone.isEmpty()) return QDateTime(datum, uhr);
  const int vorzeichen = zone.startsWith(u'-') ? -1 : 1;
  const int sekunden = zone == "Z"_L1 ? 0 : vorzeichen * (zone.mid(1, 2).toInt() * 3600 + zone.right(2).toInt() * 60);
  return QDateTime(datum, uhr, Qt::OffsetFromUTC, sekunden).toLocalTime();
}

}  // namespace

std::optional<QString> als_Stand(const QString& angabe) {
  static const QRegularExpression Iso(
      u"^(?<jahr>\\d{4})-(?<monat>\\d{2})-(?<tag>\\d{2})(?:[ T](?<stunde>\\d{2}):(?<minute>\\d{2})"
      "(?::(?<sekunde>\\d{2})(?:[.,]\\d+)?)?(?<zone>Z|[+-]\\d{2}:?\\d{2})?)?$"_s);
  static const QRegularExpression Deutsch(
      u"^(?<tag>\\d{1,2})\\.\\s?(?<monat>\\d{1,2})\\.\\s?(?<jahr>\\d{4}|\\d{2})"
      "(?:,?\\s+(?<stunde>\\d{1,2}):(?<minute>\\d{2})(?::(?<sekunde>\\d{2}))?(?:\\s*Uhr)?)?(?<zone>)$"_s);
  static const QRegularExpression Ziffern(
      u"^(?<jahr>\\d{4})(?<monat>\\d{2})(?<tag>\\d{2})"
      "(?:[T ]?(?<stunde>\\d{2})(?<minute>\\d{2})(?<sekunde>\\d{2}))?(?<zone>)$"_s);
  const QString wort = text::Trim(angabe);
  for (const QRegularExpression* schreibweise : {&Iso, &Deutsch, &Ziffern}) {
    const QRegularExpressionMatch treffer = schreibweise->match(wort);
    if (!treffer.hasMatch()) continue;
    const auto zeit = zeit_aus(treffer);
    return zeit ? std::optional(zeit->toString(Form)) : std::nullopt;
  }
  return std::nullopt;
}

QString Stand_jetzt() {
  return QDateTime::currentDateTime().toString(Form);
}
