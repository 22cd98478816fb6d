#include "host/fenster/Bildsammlung.h"

#include <QDate>
#include <QStringList>

#include "host/Ausgang.h"
#include "host/Reihenfolge.h"

using namespace Qt::Literals::StringLiterals;

class Berichtsfang::Core final : public KVOCore {
 public:
  void FehlerMelden(const QString&, const QString&, std::int32_t, const QString& beschreibung, bool) override {
    texte.append(beschreibung);
  }
  QStringList texte;
};

Berichtsfang::Berichtsfang() : core_(std::make_shared<Core>()), vorher_(KVOCore::setze(core_)) {}

Berichtsfang::~Berichtsfang() {
  KVOCore::setze(vorher_);
}

bool Berichtsfang::leer() const noexcept {
  return core_->texte.isEmpty();
}

QString Berichtsfang::erster() const {
  return core_->texte.value(0);
}

namespace {

QString bedingung(const Datensatz& satz) {
  return u" where Key1 = '%1' and Key2 = '%2' and Key3 = '%3' and key4 = '%4' and Typ1 = '%5' and Typ2 = '%6'"_s.arg(
      satz.key1, satz.key2, satz.key3, satz.key4, satz.typ1, satz.typ2);
}

void pruefe(const Vorgang& vorgang) {
  const Datensatz& satz = vorgang.satz;
  if ((satz.key1 + satz.key2 + satz.key3).contains(u'\''))
    throw Abbruch(Ausgang::Datenbank,
                  u"Die Nummer „%1“ enthält ein Hochkomma; solchen Vorgängen sind keine Bilder zuzuordnen."_s.arg(
                      vorgang.nummer));
}

Abbruch nicht_zu_lesen(const QString& grund) {
  return {Ausgang::Datenbank, u"Die Zuordnungen sind nicht zu lesen: "_s + grund};
}

}  // namespace

Bildsammlung lies_Bildsammlung(const Arbeitsplatz& platz, const Vorgang& vorgang) {
  pruefe(vorgang);
  if (!platz.verbindung()) throw nicht_zu_lesen(u"Die Datenbank ist nicht geöffnet."_s);
  Bildsammlung sammlung{std::make_shared<clsBildZuordnungen>(), {}};
  const Datensatz& satz = vorgang.satz;
  const Berichtsfang fang;
  sammlung.store->Init(platz.verbindungszeichenfolge(), platz.verbindung(),
                       QDate::currentDate().toString(u"yyyyMMdd"_s));
  sammlung.store->FKT_LeseBilder(satz.key1, satz.key2, satz.key3, satz.key4, {}, {}, satz.typ1, satz.typ2, {});
  if (!fang.leer()) throw nicht_zu_lesen(fang.erster());
  const auto grund = versuche(
      [&] { sammlung.reihenfolge = reihenfolge::lies(*platz.verbindung(), *sammlung.store, bedingung(satz)); });
  if (grund) throw nicht_zu_lesen(grund->Beschreibung());
  return sammlung;
}
