#include <QHash>
#include <vector>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "host/kvobild/Druckangaben.h"
#include "platform/basic/Text.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString im_Ordner(const QString& ordner, const QString& datei) {
  return ordner.isEmpty() ? datei : ordner + u'\\' + datei;
}

/// What stands in the picture tree for the current record.
struct Ablage {
  bool bild = false;
  bool textdatei = false;
  QString text;
};

Ablage ablage_von(Befehlssitzung& sitzung, const QString& wurzel) {
  clsBildZuordnungen& store = sitzung.store();
  if (!Bilddatei::liegt_unter_Wurzel(*store.AktBildObj)) return {};
  const QString ordner = im_Ordner(wurzel, store.Bild_Pfad()) + u'\\';
  const namen::Bilddatei bild = sitzung.aktuelles_Bild();
  Ablage ablage{store.Fkt_FileExists(ordner + bild.datei()), store.Fkt_FileExists(ordner + bild.textdatei()), {}};
  if (ablage.textdatei) ablage.text = text::Trim(store.Fkt_ReadFile(ordner + bild.textdatei()));
  return ablage;
}

QJsonObject als_Json(const clsBildZuordnungen& store, std::int64_t sortindex) {
  return {{u"key1"_s, store.Bild_Key1()}, {u"key2"_s, store.Bild_Key2()}, {u"key3"_s, store.Bild_Key3()},
      {u"key4"_s, store.Bild_Key4()}, {u"typ1"_s, store.Bild_Typ1()}, {u"typ2"_s, store.Bild_Typ2()},
      {u"bildname"_s, store.Bild_Bildname()}, {u"bildext"_s, store.Bild_BildExt()}, {u"bildpfad"_s, store.Bild_Pfad()},
      {u"beschreibung"_s, store.Bild_Beschreibung()}, {u"drucken"_s, store.Bild_Drucken()},
      {u"neue_seite"_s, store.Bild_NeueSeite()}, {u"anhang"_s, store.Bild_AlsAnhang()},
      {u"ganze_seite"_s, store.Bild_DruckGesamteSeite()}, {u"grafik_ursprung"_s, store.Bild_Grafik_Ursprung()},
      {u"grafikanbnr"_s, store.Bild_GrafikAnbNr()}, {u"sortindex"_s, static_cast<qint64>(sortindex)}};
}

QString vorgang(const clsBildZuordnungen& store) {
  QStringList teile{
      store.Bild_Typ1(), store.Bild_Typ2(), store.Bild_Key1(), store.Bild_Key2(), store.Bild_Key3(), store.Bild_Key4()};
  teile.removeAll(u"-"_s);
  teile.removeAll(QString());
  return teile.join(u' ');
}

/// The rows with those of one record together, the records in the order of their first row.
std::vector<std::int32_t> nach_Vorgang(clsBildZuordnungen& store) {
  QHash<QString, std::size_t> nummern;
  std::vector<std::vector<std::int32_t>> gruppen;
  for (std::int32_t zeile = 0; zeile < store.AnzahlPos(); ++zeile) {
    store.AktInd(zeile);
    const QString gruppe = text::UCase(vorgang(store));
    if (!nummern.contains(gruppe)) {
      nummern.insert(gruppe, gruppen.size());
      gruppen.emplace_back();
    }
    gruppen[nummern[gruppe]].push_back(zeile);
  }
  std::vector<std::int32_t> folge;
  for (const auto& gruppe : gruppen) folge.insert(folge.end(), gruppe.begin(), gruppe.end());
  return folge;
}

void zeige_Json(Befehlssitzung& sitzung, std::int32_t zeile, const std::optional<QString>& wurzel) {
  QJsonObject objekt = als_Json(sitzung.store(), sitzung.sortindex(zeile));
  if (wurzel) {
    const Ablage ablage = ablage_von(sitzung, *wurzel);
    objekt.insert(u"vorhanden"_s, ablage.bild);
    objekt.insert(u"text"_s, ablage.textdatei ? QJsonValue(ablage.text) : QJsonValue());
  }
  ausgabe::json(objekt);
}

void zeige(Befehlssitzung& sitzung, std::int32_t zeile, const std::optional<QString>& wurzel) {
  const clsBildZuordnungen& store = sitzung.store();
  ausgabe::zeile(
      u"%1  "_s.arg(sitzung.sortindex(zeile), 4) + im_Ordner(store.Bild_Pfad(), sitzung.aktuelles_Bild().datei()));
  const QString druck = druckangaben::text(store);
  ausgabe::zeile(u"      "_s + (druck.isEmpty() ? u"kein Druck"_s : druck) +
      (store.Bild_Beschreibung().isEmpty() ? QString() : u"; "_s + store.Bild_Beschreibung()));
  if (!wurzel) return;
  const Ablage ablage = ablage_von(sitzung, *wurzel);
  if (!ablage.bild) ausgabe::zeile(u"      Die Bilddatei fehlt in der Ablage."_s);
  if (ablage.textdatei)
    ausgabe::zeile(u"      Text: "_s + QString(ablage.text).replace(u"\r\n"_s, u" "_s).replace(u'\n', u' '));
}

Ausgang lies(const Aufruf& aufruf) {
  const Datensatz filter = datensatzangaben::filter(aufruf);
  const std::optional<QString> wurzel = bildwurzel_wenn_genannt(aufruf);
  Befehlssitzung sitzung(aufruf);
  if (!sitzung.lies(filter)) {
    ausgabe::meldung(u"Keine Zuordnung gefunden."_s);
    return Ausgang::Teilweise;
  }
  QString letzter;
  for (const std::int32_t zeile : nach_Vorgang(sitzung.store())) {
    sitzung.store().AktInd(zeile);
    if (aufruf.gesetzt(u"json"_s)) {
      zeige_Json(sitzung, zeile, wurzel);
      continue;
    }
    const QString dieser = vorgang(sitzung.store());
    if (dieser != letzter) ausgabe::zeile(dieser);
    letzter = dieser;
    zeige(sitzung, zeile, wurzel);
  }
  return Ausgang::Erledigt;
}

}  // namespace

Befehl befehle::lesen() {
  return {u"lesen"_s, u"zeigt die Zuordnungen eines Vorgangs"_s, {},
      uR"(Zeigt die Zuordnungen in ihrer Reihenfolge. Die Angaben zum Vorgang engen die Liste ein;
ohne jede Angabe ist es die ganze Tabelle, ein leerer Wert meint „-“. Mit --bilder steht
dabei, ob die Datei in der Ablage liegt und was in ihrer Textdatei steht.)"_s,
      befehlszeile::datensatz_Optionen() +
          QList<Option>{befehlszeile::verbindung_Option(), befehlszeile::bilder_Option(), befehlszeile::json_Option()},
      0, 0, lies};
}
