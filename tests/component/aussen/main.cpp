// aussen DATABASE: makes the table with the installed script, writes an assignment and reads it back.
#include <QCoreApplication>
#include <cstdio>

#include "component/Registrierung.h"
#include "dialogs/assignment/clsDialoge.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/files/Dateien.h"
#include "platform/host/Komponenten.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString verbindung;

std::shared_ptr<clsBildZuordnungen> sammlung(const std::shared_ptr<adodb::Connection>& offene) {
  auto neue = komponenten::erzeuge<clsBildZuordnungen>(u"KVOBildZuordnung.clsBildZuordnungen"_s);
  neue->Init(verbindung, offene, {});
  return neue;
}

int laufe() {
  const auto offene = std::make_shared<adodb::Connection>();
  offene->Open(verbindung + u";Mode=ReadWriteCreate"_s);
  for (const QString& anweisung : adodb::zerlege_skript(QString::fromUtf8(dateien::lies_alles(SKRIPT))))
    offene->Execute(anweisung);
  const auto geschrieben = sammlung(offene);
  geschrieben->FKT_NeuesBild(u"AB"_s, u"24-1001"_s, {}, {}, u"kessel"_s, u"jpg"_s, u"BEL"_s, {});
  geschrieben->FKT_SpeichernBilder();
  const auto gelesen = sammlung(offene);
  gelesen->FKT_LeseBilder(u"AB"_s, u"24-1001"_s, {}, {}, {}, {}, u"BEL"_s, {}, {});
  const auto dialoge = komponenten::erzeuge<clsDialoge>(u"KVOBildZuordnung.clsDialoge"_s);
  std::printf("%d Zeile: %s, Dialoge: %s\n", gelesen->AnzahlPos(), qPrintable(gelesen->Bild_Bildname()),
      dialoge ? "ja" : "nein");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication programm(argc, argv);
  DllRegisterServer();
  verbindung = u"Provider=SQLite;Data Source="_s + QCoreApplication::arguments().value(1);
  try {
    return laufe();
  } catch (const Laufzeitfehler& fehler) {
    std::fprintf(stderr, "%s\n", fehler.what());
    return 1;
  }
}
