// A desk: saves to one business record again and again, through the store, as plan::zeilen tells.
//   schreibtisch VERBINDUNG NAME RUNDEN frei|reihum   says "bereit", waits for a line, and says each round that is
//   saved;
//                                                     with "reihum" it waits for a line before each round
//   schreibtisch VERBINDUNG NAME 0 halte              begins a transaction, adds a row in it, says "bereit" and waits
// Failures of the store stand on standard error.

#include <QCoreApplication>
#include <QStringList>
#include <cstdio>
#include <iostream>

#include "platform/basic/Laufzeitfehler.h"
#include "store/clsBildZuordnungen.h"
#include "tests/plaetze/Plan.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void sage(const QString& wort) {
  std::cout << wort.toStdString() << '\n' << std::flush;
}

void warte() {
  std::string zeile;
  // Nobody is there any more who could want the rest.
  if (!std::getline(std::cin, zeile)) std::_Exit(4);
}

class Platz {
 public:
  Platz(const QString& verbindung, QString name) : name_(std::move(name)) {
    store_.Init(verbindung, nullptr, {});
    pruefer_.Init(verbindung, nullptr, {});
  }

  void speichere(int runde) {
    store_.FKT_NeuesBild(plan::Belegart, plan::Belegnummer, {}, {}, plan::name(name_, runde), u"jpg"_s, u"Bel"_s, {});
    store_.Bild_Beschreibung(plan::text_neu(runde));
    store_.Bild_SortIndex(runde);
    if (waehle(runde - 1)) {
      store_.Bild_Beschreibung(plan::text_geaendert(runde - 1));
      store_.Bild_Changeflag(true);
    }
    if (plan::wird_geloescht(runde - 3) && waehle(runde - 3)) store_.Bild_Delete(true);
    store_.FKT_SpeichernBilder();
    for (std::int32_t i = 0; i < store_.AnzahlPos(); ++i) {
      store_.AktInd(i);
      if (store_.Bild_Changeflag() || store_.Bild_Delete()) std::cerr << "a row was not written\n";
    }
  }

  /// The table holds this desk's rows as they were saved last, whatever the others do meanwhile.
  void pruefe(int runde) {
    pruefer_.FKT_LeseBilder(plan::Belegart, plan::Belegnummer, {}, {}, {}, {}, u"Bel"_s, {}, {});
    QMap<QString, QString> eigene;
    for (std::int32_t i = 0; i < pruefer_.AnzahlPos(); ++i) {
      pruefer_.AktInd(i);
      const QString name = pruefer_.Bild_Bildname();
      if (!name.startsWith(name_ + u'_')) continue;
      if (eigene.contains(name)) std::cerr << "doubled: " << name.toStdString() << '\n';
      eigene.insert(name, pruefer_.Bild_Beschreibung());
    }
    if (eigene != plan::zeilen(name_, runde)) std::cerr << "round " << runde << " reads back otherwise\n";
  }

 private:
  bool waehle(int runde) {
    if (runde < 1) return false;
    const QString gesuchter = plan::name(name_, runde);
    for (std::int32_t i = store_.AnzahlPos() - 1; i >= 0; --i) {
      store_.AktInd(i);
      if (store_.Bild_Bildname() == gesuchter) return true;
    }
    return false;
  }

  QString name_;
  clsBildZuordnungen store_;
  clsBildZuordnungen pruefer_;
};

void halte(const QString& verbindung, const QString& name) {
  adodb::Connection eigene;
  eigene.Open(verbindung);
  eigene.Execute(verbindung.contains("SQLite"_L1) ? u"BEGIN IMMEDIATE"_s : u"BEGIN TRANSACTION"_s);
  eigene.Execute(u"insert into Bild_Zuordnungen (Key1, Bildname) Values ('RE', '%1')"_s.arg(name));
  sage(u"bereit"_s);
  warte();
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  const QStringList worte = QCoreApplication::arguments();
  if (worte.size() != 5) return 2;
  try {
    if (worte[4] == "halte"_L1) {
      halte(worte[1], worte[2]);
      return 0;
    }
    const bool reihum = worte[4] == "reihum"_L1;
    const int runden = worte[3].toInt();
    Platz platz(worte[1], worte[2]);
    sage(u"bereit"_s);
    if (!reihum) warte();
    for (int runde = 1; runde <= runden; ++runde) {
      if (reihum) warte();
      platz.speichere(runde);
      if (runde % 250 == 0) platz.pruefe(runde);
      sage(QString::number(runde));
    }
  } catch (const Laufzeitfehler& fehler) {
    std::cerr << fehler.what() << '\n';
    return 3;
  }
  return 0;
}
