#include "component/weg/Verbindungen.h"

#include <QDate>

#include "platform/basic/Fehlerbehandlung.h"
#include "store/BasZuordnungen.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg {

class Berichtsfang::Core final : public KVOCore {
 public:
  Core(Berichtsfang& fang, bool weitergeben) : fang_(fang), weitergeben_(weitergeben) {}
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool mitMeldung) override {
    fang_.texte_.append(beschreibung);
    if (weitergeben_ && fang_.vorher_) fang_.vorher_->FehlerMelden(modul, prozedur, nummer, beschreibung, mitMeldung);
  }

 private:
  Berichtsfang& fang_;
  bool weitergeben_;
};

Berichtsfang::Berichtsfang(bool weitergeben) : vorher_(KVOCore::setze(std::make_shared<Core>(*this, weitergeben))) {}

Verbindungen::Verbindungen(const Anwendungsobjekt& anwendung)
    : zeichenfolge_(anwendung.ConnectStringDB()), lesende_(anwendung.ConnectionDB()) {
  if (!lesende_) lesende_ = BasZuordnungen::oeffne_Verbindung(zeichenfolge_);
}

QString Verbindungen::erneuere() {
  BasZuordnungen::verwirf_Verbindung();
  if (!lesende_) return {};
  fehler::Weiter weiter;
  if (weiter([&] { lesende_->Execute(u"Select Top 1 Key1 from Bild_Zuordnungen"_s); })) return {};
  // The same object is opened anew, since the host and the collection hold it too.
  weiter([&] { lesende_->Close(); });
  QString grund;
  fehler::melden_und_enden(
      [&](const Laufzeitfehler& f) { grund = f.Beschreibung(); }, [&] { lesende_->Open(zeichenfolge_); });
  return grund;
}

QString Verbindungen::lies(clsBildZuordnungen& bilder, const Zuordnungsweg::Vorgang& vorgang, bool weitergeben) const {
  const Berichtsfang fang(weitergeben);
  bilder.Init(zeichenfolge_, lesende_, QDate::currentDate().toString(u"yyyyMMdd"_s));
  bilder.FKT_LeseBilder(vorgang.Key1, vorgang.Key2, vorgang.Key3, vorgang.Key4, {}, {}, vorgang.Typ1, vorgang.Typ2, {});
  return fang.erster();
}

std::optional<std::vector<Stand>> Verbindungen::lies_Staende(
    const Zuordnungsweg::Vorgang& vorgang, QString& grund) const {
  clsBildZuordnungen bilder;
  grund = lies(bilder, vorgang);
  if (!grund.isEmpty()) return std::nullopt;
  const std::vector<std::int64_t> plaetze = Sammlungszugriff::gespeicherte_Reihenfolge(bilder);
  std::vector<Stand> staende;
  for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
    bilder.AktInd(i);
    staende.push_back({*bilder.AktBildObj, plaetze[static_cast<std::size_t>(i)]});
  }
  return staende;
}

}  // namespace weg
