// The command line: assigns picture files to business records without a window.

#include <langinfo.h>

#include <QGuiApplication>
#include <clocale>
#include <cstring>

#include "host/betrieb/befehl/Ausgabe.h"
#include "host/kvobild/Befehle.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/gdiplus/miniatur/Miniaturen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A bare container has the locale "C", of which Qt complains on standard error at every start.
void setze_Utf8() {
  static_cast<void>(std::setlocale(LC_ALL, ""));
  if (std::strcmp(::nl_langinfo(CODESET), "UTF-8") != 0) qputenv("LC_ALL", "C.UTF-8");
}

const Befehlsprogramm Kvobild{u"kvobild"_s, u"kvobild ordnet Bilddateien den Vorgängen eines Betriebs zu.\n"_s,
    u"Ergebnisse stehen auf der Standardausgabe, Meldungen auf der Fehlerausgabe.\n"
    "Fehlt --verbindung oder --bilder, gilt KVOBILD_VERBINDUNG oder KVOBILD_BILDER aus der Umgebung;\n"
    "nennt die Verbindung einen Benutzer ohne Kennwort, gilt KVOBILD_KENNWORT."_s};

Ausgang laufe(const QStringList& argumente) {
  // What a command writes comes from the files themselves, and a script leaves nothing in its user's cache.
  miniaturen::an(false);
  try {
    const Ausgang ausgang = befehlszeile::fuehre_aus(Kvobild,
        {befehle::anlegen(), befehle::zuordnen(), befehle::lesen(), befehle::aendern(), befehle::umbenennen(),
            befehle::entfernen(), befehle::aufraeumen(), befehle::ausgeben(), befehle::exif(), befehle::drehen(),
            befehle::thumbnail(), befehle::bericht(), befehle::beispieldaten(), befehle::datenbank_anlegen(),
            befehle::datenbank_pruefen(), befehle::vorgaenge_einlesen(), befehle::vorgaenge_liste(),
            befehle::protokoll()},
        argumente);
    if (ausgabe::abgeschlossen()) return ausgang;
    throw Abbruch(Ausgang::Datei, u"Die Ausgabe ist nicht vollständig zu schreiben."_s);
  } catch (const Abbruch& abbruch) {
    ausgabe::meldung(abbruch.text());
    return abbruch.ausgang();
  } catch (const Laufzeitfehler& fehler) {
    ausgabe::meldung(u"%1 (Fehler %2)"_s.arg(fehler.Beschreibung(), QString::number(fehler.Nummer())));
    return ausgang_von(fehler);
  } catch (const std::bad_alloc&) {
    ausgabe::meldung(u"Der Speicher reicht nicht."_s);
    return Ausgang::Datei;
  }
}

/// Drawing pictures needs Qt's platform, though no window ever shows. Nobody needs what Qt then says of a missing
/// session folder.
int laufe_mit_zeichnen(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QtMessageHandler vorher = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  const QGuiApplication programm(argc, argv);
  qInstallMessageHandler(vorher);
  return static_cast<int>(laufe(QCoreApplication::arguments().mid(1)));
}

}  // namespace

int main(int argc, char** argv) {
  setze_Utf8();
  for (const char* zeichnender : {"beispieldaten", "bericht", "thumbnail"})
    if (argc > 1 && std::strcmp(argv[1], zeichnender) == 0) return laufe_mit_zeichnen(argc, argv);
  const QCoreApplication programm(argc, argv);
  return static_cast<int>(laufe(QCoreApplication::arguments().mid(1)));
}
