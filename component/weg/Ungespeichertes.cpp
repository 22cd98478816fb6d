#include "component/weg/Ungespeichertes.h"

#include <QStringList>
#include <algorithm>

#include "component/weg/Meldung.h"
#include "store/Dialogspur.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg::ungespeichertes {
namespace {

/// The pictures with changes that are not in the collection; none where only the order differs.
QStringList namen(const Dialogspur& spur) {
  return spur.stand ? spur.stand->betroffene : QStringList();
}

}  // namespace

bool soll_wieder_oeffnen(clsBildZuordnungen& bilder) {
  const auto& spur = Sammlungszugriff::spur(bilder);
  if (!spur || !spur->ungespeichert) return false;
  const QStringList betroffene = namen(*spur);
  const QString was = betroffene.isEmpty()
      ? u"Der Dialog ist geschlossen, aber Ihre Änderungen sind nicht gespeichert."_s
      : u"Der Dialog ist geschlossen, aber nicht alles ist gespeichert: "_s + meldung::aufzaehlung(betroffene) + u'.';
  if (spur->stand)
    return meldung::bejaht(was + u"\r\n\r\nDen Dialog mit diesen Änderungen noch einmal öffnen?"_s, true);
  meldung::warne(was + u"\r\n\r\nBearbeiten Sie den Vorgang noch einmal."_s);
  return false;
}

void trage_ein(clsBildZuordnungen& bilder, Zuordnungsweg::Ergebnis& ergebnis) {
  const auto& spur = Sammlungszugriff::spur(bilder);
  if (!spur || !spur->ungespeichert) return;
  QStringList betroffene = namen(*spur);
  if (betroffene.isEmpty()) betroffene.append(QString());
  for (const QString& name : betroffene) {
    // A new picture whose copy failed is counted already, for that.
    const bool genannt = std::any_of(ergebnis.bilder.begin(), ergebnis.bilder.end(),
        [&](const Zuordnungsweg::Bild& bild) { return bild.name == name; });
    if (genannt) continue;
    ergebnis.bilder.push_back({name, Zuordnungsweg::Verbleib::Nicht_gespeichert, u"Im Dialog nicht gespeichert."_s});
    ++ergebnis.nicht_geschrieben;
  }
}

}  // namespace weg::ungespeichertes
