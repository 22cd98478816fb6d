// The one table of what is published as a class: GroessenTest finds one that is missing here.
#include "tests/component/Groessen.h"

#include "component/Bibliotheken.h"
#include "component/Zuordnungsweg.h"
#include "dialogs/assignment/clsDialoge.h"
#include "exif/Dateibytes.h"
#include "exif/clsExifInfo.h"
#include "imaging/Aufrichtung.h"
#include "platform/adodb/Connection.h"
#include "platform/adodb/Leitungsschutz.h"
#include "platform/adodb/Recordset.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Treiber.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/adodb/Werte.h"
#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Variant.h"
#include "platform/basic/XArrayDBObject.h"
#include "platform/files/Binaerdatei.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/wirt/Namenswechsel.h"
#include "platform/gdiplus/Bild.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/gdiplus/vorlauf/Vorlauf.h"
#include "platform/host/Anwendungsobjekt.h"
#include "platform/host/Artikel.h"
#include "platform/host/Auskunft.h"
#include "platform/host/KVOCore.h"
#include "platform/host/Komponenten.h"
#include "platform/host/Oberflaeche.h"
#include "store/Aufraeumliste.h"
#include "store/Bilddatei.h"
#include "store/Bildereignis.h"
#include "store/Felder.h"
#include "store/clsBildZuordnungen.h"
#include "store/clsBilderSpeicher.h"

#define GROESSE(klasse) \
  { QStringLiteral(#klasse), static_cast<qint64>(sizeof(klasse)) }

QMap<QString, qint64> klassengroessen() {
  return {
      GROESSE(adodb::Connection),
      GROESSE(adodb::Datenbankfehler),
      GROESSE(adodb::Ergebnis),
      GROESSE(adodb::Field),
      GROESSE(adodb::Leitungsschutz),
      GROESSE(adodb::Recordset),
      GROESSE(adodb::Sqlstueck),
      GROESSE(adodb::SqlZerleger),
      GROESSE(adodb::Treiber),
      GROESSE(adodb::Verbindungszeichenfolge),
      GROESSE(adodb::Verbindungszeichenfolge::Paar),
      GROESSE(adodb::Werte),
      GROESSE(Anwendungsobjekt),
      GROESSE(Aufraeumliste),
      GROESSE(Aufraeumposten),
      GROESSE(aufrichtung::Ergebnis),
      GROESSE(Auskunftsempfaenger),
      GROESSE(Bild),
      GROESSE(Bilddatei),
      GROESSE(Bildereignis),
      GROESSE(bildereignis::Ruhe),
      GROESSE(bibliotheken::Bibliothek),
      GROESSE(bildlader::NurKopf),
      GROESSE(bildvorlauf::Vorlauf),
      GROESSE(bildvorlauf::Vorlauf::Wunsch),
      GROESSE(Binaerdatei),
      GROESSE(clsArtikelManagerSQL),
      GROESSE(clsAuskunft),
      GROESSE(clsBilderSpeicher),
      GROESSE(clsBildZuordnungen),
      GROESSE(clsDialoge),
      GROESSE(clsExifInfo),
      GROESSE(Dateibytes),
      GROESSE(dateien::Fundstelle),
      GROESSE(dateien::Kennung),
      GROESSE(Einstellungen),
      GROESSE(Empty),
      GROESSE(Exif_Entry),
      GROESSE(felder::Feld),
      GROESSE(Fensterlage),
      GROESSE(Fensterplatz),
      GROESSE(FileSystemObject),
      GROESSE(Folder),
      GROESSE(KeyHandler),
      GROESSE(komponenten::Komponente),
      GROESSE(komponenten::Traeger<clsDialoge>),
      GROESSE(KVFileFunctions),
      GROESSE(KVOCore),
      GROESSE(Laufzeitfehler),
      GROESSE(Namenswechsel),
      GROESSE(Null),
      GROESSE(oberflaeche::Ereignispumpe),
      GROESSE(oberflaeche::Mauszeiger),
      GROESSE(oberflaeche::Meldung),
      GROESSE(oberflaeche::Meldungsfenster),
      GROESSE(Pfadkarte),
      GROESSE(XArrayDBObject),
      GROESSE(Zuordnungsweg),
      GROESSE(Zuordnungsweg::Bild),
      GROESSE(Zuordnungsweg::Ergebnis),
      GROESSE(Zuordnungsweg::Lesung),
      GROESSE(Zuordnungsweg::Vorgang),
  };
}
