// Ein vollständiger Wirt: Der Benutzer bearbeitet die Bilder zum Beleg AB 24-1001.
// Aufruf: minimaler_wirt DATENBANK BILDABLAGE SKRIPT (sql/sqlite/Bild_Zuordnungen.sql)
#include <QApplication>

#include "component/Zuordnungsweg.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/files/Dateien.h"
#include "platform/files/Pfadkarte.h"
#include "platform/forms/Fensterdienste.h"
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

// Lesen, Dialog, Schreiben, Nachprüfen: alles gesagt, wenn es zurückkommt. True, wenn nichts offen blieb.
bool bearbeite(const std::shared_ptr<Betrieb>& betrieb) {
  Zuordnungsweg::Vorgang beleg;
  beleg.Key1 = u"AB"_s;
  beleg.Key2 = u"24-1001"_s;
  beleg.Typ1 = u"BEL"_s;
  beleg.Bildpfad = u"Belege\\24-1001"_s;
  beleg.Infozeile = u"Beleg AB 24-1001, Familie Muster"_s;
  const Zuordnungsweg::Ergebnis ergebnis = Zuordnungsweg(betrieb, u"P:"_s).gehe(beleg);
  return ergebnis.geoeffnet && ergebnis.vollstaendig();
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication programm(argc, argv);
  fensterdienste::richte_ein();
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
