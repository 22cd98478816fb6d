// Ein vollständiger Wirt: Der Benutzer bearbeitet die Bilder zum Beleg AB 24-1001.
// Aufruf: minimaler_wirt DATENBANK BILDABLAGE SKRIPT (sql/sqlite/Bild_Zuordnungen.sql)
#include <QApplication>

#include "component/Registrierung.h"
#include "dialogs/assignment/clsDialoge.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/files/Dateien.h"
#include "platform/files/Pfadkarte.h"
#include "platform/forms/Fensterdienste.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// Was die Dialoge vom Wirt erfahren: die Verbindung. Einstellungen und Namen hat dieser hier keine.
class Betrieb final : public Anwendungsobjekt {
 public:
  Betrieb(const QString& datenbank, const QString& skript)
      : zeichenfolge_(u"Provider=SQLite;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(datenbank)) {
    verbindung_->Open(zeichenfolge_ + u";Mode=ReadWriteCreate"_s);  // wirft Laufzeitfehler, wie auch Execute
    for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf8(dateien::lies_alles(skript))))
      verbindung_->Execute(anweisung);
  }
  QString ConnectStringDB() const override { return zeichenfolge_; }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return verbindung_; }

 private:
  QString zeichenfolge_;
  std::shared_ptr<adodb::Connection> verbindung_ = std::make_shared<adodb::Connection>();
};

// Neu ist, was nicht gelesen wurde; es hat noch keine Schlüssel. Ein Kennzeichen, das bleibt: nicht geschrieben.
void speichere(clsBildZuordnungen& bilder, std::int32_t gelesen) {
  for (bilder.AktInd(gelesen); bilder.AktInd() < bilder.AnzahlPos(); bilder.AktInd(bilder.AktInd() + 1))
    bilder.Bild_Neu(true);
  bilder.fkt_Korr_Key1(u"AB"_s);
  bilder.fkt_Korr_Key2(u"24-1001"_s);
  bilder.FKT_SpeichernBilder();
  for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
    bilder.AktInd(i);
    if (bilder.Bild_Changeflag() || bilder.Bild_Delete())
      throw Laufzeitfehler(fehlernummer::Anweisung, u"Nicht gespeichert: "_s + bilder.Bild_Bildname());
  }
}

bool bearbeite(const std::shared_ptr<Betrieb>& betrieb) {
  const auto bilder = komponenten::erzeuge<clsBildZuordnungen>(u"KVOBildZuordnung.clsBildZuordnungen"_s);
  const auto dialoge = komponenten::erzeuge<clsDialoge>(u"KVOBildZuordnung.clsDialoge"_s);
  if (!bilder->Init(betrieb->ConnectStringDB(), betrieb->ConnectionDB(), {})) return false;  // schon gemeldet
  if (!bilder->Fkt_DirExists(u"P:"_s)) throw Laufzeitfehler(fehlernummer::PfadNichtGefunden);
  bilder->FKT_LeseBilder(u"AB"_s, u"24-1001"_s, {}, {}, {}, {}, u"BEL"_s, {}, {});
  const std::int32_t gelesen = bilder->AnzahlPos();
  const bool erledigt = dialoge->Fkt_Aufruf_Dialog_Zuordnung(betrieb, u"P:"_s, u"Belege\\24-1001"_s, bilder, u"BEL"_s,
                                                             {}, u"Beleg AB 24-1001, Familie Muster"_s);
  speichere(*bilder, gelesen);  // auch nach False: Was der Benutzer im Dialog gespeichert hat, steht in der Sammlung
  return erledigt;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication programm(argc, argv);
  fensterdienste::richte_ein();
  DllRegisterServer();
  const QStringList angaben = QApplication::arguments();
  try {
    if (angaben.size() != 4) throw Laufzeitfehler(fehlernummer::UngueltigerAufruf, u"Drei Angaben fehlen."_s);
    Pfadkarte::aktuell().setze(u"P:"_s, angaben[2]);
    return bearbeite(std::make_shared<Betrieb>(angaben[1], angaben[3])) ? 0 : 1;
  } catch (const Laufzeitfehler& fehler) {
    oberflaeche::MsgBox(fehler.Beschreibung(), oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Kritisch, u"Wirt"_s);
    return 1;
  }
}
