#include "host/betrieb/vorgang/Verwendung.h"

#include <QHash>
#include <array>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "platform/basic/Text.h"
#include "platform/basic/Variant.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// All pictures of a record that others use, with the number of these.
QString frage(const clsBilderSpeicher& einer) {
  const std::array<std::pair<QString, QString>, 6> Teile{
      {{u"Key1"_s, einer.Bild_Key1}, {u"Key2"_s, einer.Bild_Key2}, {u"Key3"_s, einer.Bild_Key3},
          {u"key4"_s, einer.Bild_Key4}, {u"Typ1"_s, einer.Bild_Typ1}, {u"Typ2"_s, einer.Bild_Typ2}}};
  QStringList dieser;
  QStringList gleich;
  QStringList spalten;
  for (const auto& [spalte, wert] : Teile) {
    dieser.append(u"a.%1 = %2"_s.arg(spalte, literal(wert)));
    gleich.append(u"b.%1 = a.%1"_s.arg(spalte));
    spalten.append(u"b."_s + spalte);
  }
  return u"select Bildname, BildExt, BildPfad, count(*) as Anzahl from (select distinct b.Bildname, b.BildExt, "
         "b.BildPfad, %1 from Bild_Zuordnungen a, Bild_Zuordnungen b where %2 and b.Bildname = a.Bildname and "
         "b.BildExt = a.BildExt and b.BildPfad = a.BildPfad and not (%3)) andere group by Bildname, BildExt, "
         "BildPfad"_s.arg(spalten.join(u", "_s), dieser.join(u" and "_s), gleich.join(u" and "_s));
}

/// As the table compares.
QString kennung(const QString& pfad, const QString& name, const QString& ext) {
  return text::UCase(pfad + u'\\' + name + u'.' + ext);
}

QHash<QString, int> andere_Vorgaenge(adodb::Connection& verbindung, const clsBilderSpeicher& einer) {
  QHash<QString, int> anzahl;
  const auto antwort = verbindung.Execute(frage(einer));
  for (; !antwort->Eof(); antwort->MoveNext()) {
    const auto text = [&](const QString& spalte) { return mit_Leertext(antwort->Fields(spalte).Value()); };
    anzahl.insert(kennung(text(u"BildPfad"_s), text(u"Bildname"_s), text(u"BildExt"_s)), text(u"Anzahl"_s).toInt());
  }
  return anzahl;
}

QString satz(const QString& datei, int andere) {
  if (andere == 1) return u"Das Bild „%1“ wird noch in einem anderen Vorgang verwendet."_s.arg(datei);
  return u"Das Bild „%1“ wird noch in %2 anderen Vorgängen verwendet."_s.arg(datei, QString::number(andere));
}

}  // namespace

QStringList verwendung::saetze(adodb::Connection& verbindung, clsBildZuordnungen& bilder) {
  QStringList alle;
  const std::int32_t vorher = bilder.AktInd();
  static_cast<void>(gelingt([&] {
    QHash<QString, int> andere;
    bool gefragt = false;
    for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
      bilder.AktInd(i);
      if (!bilder.Bild_Delete() || bilder.Bild_Neu()) continue;
      if (!std::exchange(gefragt, true)) andere = andere_Vorgaenge(verbindung, *bilder.AktBildObj);
      const clsBilderSpeicher& b = *bilder.AktBildObj;
      const int anzahl = andere.value(kennung(b.Bild_Pfad, b.Bild_Bildname, b.Bild_BildExt));
      if (anzahl > 0) alle.append(satz(Bilddatei::von(b).datei(), anzahl));
    }
  }));
  bilder.AktInd(vorher);
  return alle;
}
