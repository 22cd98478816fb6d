#include "platform/basic/Laufzeitfehler.h"

#include "platform/basic/Nachschlagen.h"

namespace {

using namespace fehlernummer;

constexpr std::pair<std::int32_t, QStringView> Worte[] = {
    {UngueltigerAufruf, u"Ungültiger Prozeduraufruf oder ungültiges Argument"},
    {Ueberlauf, u"Überlauf"},
    {SpeicherErschoepft, u"Nicht genügend Speicher"},
    {IndexAusserhalb, u"Index außerhalb des gültigen Bereichs"},
    {TypenUnvertraeglich, u"Typen unverträglich"},
    {UngueltigerDateiname, u"Dateiname oder -nummer falsch"},
    {DateiNichtGefunden, u"Datei nicht gefunden"},
    {EinAusgabeFehler, u"E/A-Fehler auf dem Datenträger"},
    {DateiVorhanden, u"Datei existiert bereits"},
    {DatentraegerVoll, u"Datenträger voll"},
    {ZugriffVerweigert, u"Zugriff verweigert"},
    {PfadZugriff, u"Fehler beim Zugriff auf Pfad/Datei"},
    {PfadNichtGefunden, u"Pfad nicht gefunden"},
    {ObjektNichtGesetzt, u"Objektvariable nicht festgelegt"},
    {NullUngueltig, u"Unzulässige Verwendung von Null"},
    {ElementFehlt, u"Das Steuerelementfeld hat dieses Element nicht"},
    {BereitsGeladen, u"Das Objekt ist bereits geladen"},
    {NichtEntladbar, u"Ein zur Entwurfszeit angelegtes Steuerelement kann nicht entladen werden"},
    {UngueltigerEigenschaftswert, u"Ungültiger Eigenschaftswert"},
    {ObjektNichtErstellbar, u"Objekterstellung durch Komponente nicht möglich"},
    {UngueltigesBild, u"Ungültiges Bild"},
    {SpalteFehlt, u"Die Spalte ist in der Auflistung nicht vorhanden"},
    {ObjektGeschlossen, u"Der Vorgang ist für ein geschlossenes Objekt nicht zugelassen"},
    {VerbindungGeschlossen, u"Die Verbindung ist geschlossen oder für diesen Vorgang nicht geeignet"},
    {Anweisung, u"Die Anweisung ist fehlgeschlagen"},
    {Verbindung, u"Die Verbindung zur Datenbank ist fehlgeschlagen"},
};

}  // namespace

Laufzeitfehler::Laufzeitfehler(std::int32_t nummer, QString beschreibung)
    : nummer_(nummer),
      beschreibung_(beschreibung.isEmpty()
              ? nachgeschlagen<std::int32_t, QStringView>(Worte, nummer, u"Anwendungs- oder objektdefinierter Fehler")
                    .toString()
              : std::move(beschreibung)),
      utf8_(beschreibung_.toUtf8()) {}

Laufzeitfehler::~Laufzeitfehler() = default;
