#include "component/weg/Gruppen.h"

#include "store/BasZuordnungen.h"
#include "store/Bildereignis.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;

namespace weg {
namespace {

QString literal(QString text) {
  return u'\'' + text.replace(u'\'', u"''"_s) + u'\'';
}

/// Deletes and inserts; False at the first statement that fails.
bool tausche_aus(clsBildZuordnungen& hilfe, const clsBilderSpeicher& einer, std::vector<clsBilderSpeicher> zeilen) {
  if (!hilfe.FKT_DeleteBilder(einer.Bild_Key1, einer.Bild_Key2, einer.Bild_Key3, einer.Bild_Key4, einer.Bild_Bildname,
          einer.Bild_BildExt, einer.Bild_Typ1, einer.Bild_Typ2, {}))
    return false;
  for (clsBilderSpeicher& zeile : zeilen)
    Sammlungszugriff::haenge_an(hilfe, std::make_shared<clsBilderSpeicher>(std::move(zeile)));
  hilfe.FKT_SpeichernBilder();
  for (std::int32_t i = 0; i < hilfe.AnzahlPos(); ++i) {
    hilfe.AktInd(i);
    if (hilfe.Bild_Changeflag()) return false;
  }
  return true;
}

}  // namespace

QString ersetze_Gruppe(
    const Verbindungen& verbindungen, const clsBilderSpeicher& einer, const std::vector<clsBilderSpeicher>& zeilen) {
  if (!hat_ganze_Kennung(einer)) return u"Der Zeile fehlt ein Teil ihres Schlüssels."_s;
  const Berichtsfang fang;
  // What stays is written anew with the rest; whoever asked for it tells what it means.
  const bildereignis::Ruhe ruhe;
  const auto fuehre_aus = [&](const QString& anweisung) {
    return BasZuordnungen::CmdSql(anweisung, verbindungen.zeichenfolge(), true);
  };
  clsBildZuordnungen hilfe;
  hilfe.Init(verbindungen.zeichenfolge(), verbindungen.lesende(), {});
  if (!fuehre_aus(u"BEGIN TRANSACTION"_s)) return fang.erster();
  if (tausche_aus(hilfe, einer, zeilen) && fuehre_aus(u"COMMIT TRANSACTION"_s)) return {};
  const QString grund = fang.erster();
  fuehre_aus(u"ROLLBACK TRANSACTION"_s);
  // Whatever the rollback said, nothing of the transaction outlives its connection.
  BasZuordnungen::verwirf_Verbindung();
  return grund;
}

QString benenne_in_Tabelle_um(const Verbindungen& verbindungen, const clsBilderSpeicher& alt,
    const clsBilderSpeicher& neu, const Zuordnungsweg::Vorgang* nur_von) {
  const Berichtsfang fang;
  QString anweisung =
      u"Update Bild_Zuordnungen SET Bildname = %1, BildPfad = %2 WHERE Bildname = %3 and BildExt = %4 "
      "and BildPfad = %5"_s.arg(literal(neu.Bild_Bildname), literal(neu.Bild_Pfad), literal(alt.Bild_Bildname),
          literal(alt.Bild_BildExt), literal(alt.Bild_Pfad));
  if (nur_von)
    anweisung += u" and Key1 = %1 and Key2 = %2 and Key3 = %3 and key4 = %4 and Typ1 = %5 and Typ2 = %6"_s.arg(
        literal(nur_von->Key1), literal(nur_von->Key2), literal(nur_von->Key3), literal(nur_von->Key4),
        literal(nur_von->Typ1), literal(nur_von->Typ2));
  BasZuordnungen::CmdSql(anweisung, verbindungen.zeichenfolge(), true);
  return fang.erster();
}

}  // namespace weg
