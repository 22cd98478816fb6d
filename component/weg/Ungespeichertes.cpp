#include "component/weg/Ungespeichertes.h"

#include <QStringList>

#include "component/weg/Meldung.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/XArrayDBObject.h"
#include "store/Dialogspur.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg::ungespeichertes {
namespace {

// Columns of the dialog's working table.
constexpr std::int32_t Name = 4;
constexpr std::int32_t Endung = 5;
constexpr std::int32_t Geaendert = 19;

/// The pictures with changes that are not in the collection.
QStringList namen(const Dialogspur& spur) {
  QStringList liste;
  if (!spur.stand || !spur.stand->tabelle) return liste;
  const XArrayDBObject& tabelle = *spur.stand->tabelle;
  fehler::Weiter weiter;
  using Dimension = XArrayDBObject::Dimension;
  for (std::int32_t i = tabelle.LowerBound(Dimension::Zeilen); i <= tabelle.UpperBound(Dimension::Zeilen); ++i)
    weiter([&] {
      if (ist_True(tabelle.Value(i, Geaendert)))
        liste.append(text::Trim(mit_Leertext(tabelle.Value(i, Name))) + u'.' +
                     text::Trim(mit_Leertext(tabelle.Value(i, Endung))));
    });
  return liste;
}

}  // namespace

bool soll_wieder_oeffnen(clsBildZuordnungen& bilder) {
  const auto& spur = Sammlungszugriff::spur(bilder);
  if (!spur || !spur->ungespeichert) return false;
  const QStringList betroffene = namen(*spur);
  const QString was = betroffene.isEmpty()
                          ? u"Der Dialog ist geschlossen, aber Ihre Änderungen sind nicht gespeichert."_s
                          : u"Der Dialog ist geschlossen, aber nicht alles ist gespeichert: "_s +
                                meldung::aufzaehlung(betroffene) + u'.';
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
    ergebnis.bilder.push_back({name, Zuordnungsweg::Verbleib::Nicht_gespeichert, u"Im Dialog nicht gespeichert."_s});
    ++ergebnis.nicht_geschrieben;
  }
}

}  // namespace weg::ungespeichertes
