#include "host/Reihenfolge.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QChar Trenner = u'\x1f';

/// The stored numbers by the identity of their rows. Rows that share one are told apart by their order, which is the
/// same in both readings.
QHash<QString, QList<std::int64_t>> gespeicherte(adodb::Connection& verbindung, const QString& bedingung) {
  const QStringList spalten{u"Key1"_s,    u"Key2"_s, u"Key3"_s, u"key4"_s,     u"Bildname"_s,
                            u"BildExt"_s, u"Typ1"_s, u"Typ2"_s, u"SortIndex"_s};
  const auto satz = verbindung.Execute(u"Select "_s + spalten.join(u", "_s) + u" from Bild_Zuordnungen"_s + bedingung +
                                       u" order by SortIndex"_s);
  QHash<QString, QList<std::int64_t>> gefunden;
  for (; !satz->Eof(); satz->MoveNext()) {
    QStringList kennung;
    for (std::int32_t i = 0; i < 8; ++i) kennung.append(satz->Text(i));
    gefunden[kennung.join(Trenner)].append(satz->Text(8).toLongLong());
  }
  return gefunden;
}

QString kennung(const clsBilderSpeicher& b) {
  return QStringList{b.Bild_Key1,     b.Bild_Key2,    b.Bild_Key3, b.Bild_Key4,
                     b.Bild_Bildname, b.Bild_BildExt, b.Bild_Typ1, b.Bild_Typ2}
      .join(Trenner);
}

}  // namespace

std::vector<std::int64_t> reihenfolge::lies(adodb::Connection& verbindung, clsBildZuordnungen& store,
                                            const QString& bedingung) {
  QHash<QString, QList<std::int64_t>> gespeichert = gespeicherte(verbindung, bedingung);
  std::vector<std::int64_t> folge;
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    QList<std::int64_t>& werte = gespeichert[kennung(*store.AktBildObj)];
    const std::int64_t wert = werte.isEmpty() ? 0 : werte.takeFirst();
    folge.push_back(wert);
    using Grenzen = std::numeric_limits<std::int16_t>;
    store.Bild_SortIndex(static_cast<int>(std::clamp<std::int64_t>(wert, Grenzen::min(), Grenzen::max())));
  }
  return folge;
}
