#include "host/betrieb/Artikelstamm.h"

#include "host/betrieb/Datenbank.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What is a pattern to LIKE stands for itself.
QString als_Teil(QString text) {
  for (const QString& zeichen : {u"\\"_s, u"%"_s, u"_"_s, u"["_s}) text.replace(zeichen, u'\\' + zeichen);
  return literal(u'%' + text + u'%') + u" Escape '\\'"_s;
}

}  // namespace

void Artikelstamm::Init(
    std::int32_t /*pArt*/, const QString& /*pConnectString*/, const std::shared_ptr<adodb::Connection>& pConnection) {
  verbindung_ = pConnection;
}

bool Artikelstamm::fktLeseArtikel(const QString& pArtikelnummer, bool /*pSchalter1*/, bool /*pSchalter2*/,
    bool /*pSchalter3*/, bool /*pSchalter4*/, bool /*pSchalter5*/, bool /*pSchalter6*/) {
  const QString nummer = text::Trim(pArtikelnummer);
  return !nummer.isEmpty() && lies(u"Artikelnummer = "_s + literal(nummer));
}

bool Artikelstamm::fktLeseArtikel_TeilArtikel(const QString& pTeil) {
  const QString teil = text::Trim(pTeil);
  return !teil.isEmpty() && lies(u"Artikelnummer Like "_s + als_Teil(teil));
}

bool Artikelstamm::lies(const QString& bedingung) {
  if (!verbindung_) throw Laufzeitfehler(fehlernummer::ObjektNichtGesetzt);
  const auto satz = verbindung_->Execute(
      u"Select Top 1 Artikelnummer, Bezeichnung, Bezeichnung3, Hauptlieferant from %1 where %2 "
      "order by Artikelnummer"_s.arg(tabelle_, bedingung));
  if (satz->Eof()) return false;
  nummer_ = satz->Text(0);
  bez_ = satz->Value(1);
  bez3_ = satz->Value(2);
  lieferant_ = satz->Value(3);
  return true;
}
