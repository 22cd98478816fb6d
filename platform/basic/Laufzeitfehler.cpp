#include "platform/basic/Laufzeitfehler.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString uebliche_Worte(std::int32_t nummer) {
  switch (nummer) {
    case fehlernummer::UngueltigerAufruf:
      return u"Ungültiger Prozeduraufruf oder ungültiges Argument"_s;
    case fehlernummer::Ueberlauf:
      return u"Überlauf"_s;
    case fehlernummer::SpeicherErschoepft:
      return u"Nicht genügend Speicher"_s;
    case fehlernummer::IndexAusserhalb:
      return u"Index außerhalb des gültigen Bereichs"_s;
    case fehlernummer::TypenUnvertraeglich:
      return u"Typen unverträglich"_s;
    case fehlernummer::UngueltigerDateiname:
      return u"Dateiname oder -nummer falsch"_s;
    case fehlernummer::DateiNichtGefunden:
      return u"Datei nicht gefunden"_s;
    case fehlernummer::EinAusgabeFehler:
      return u"E/A-Fehler auf dem Datenträger"_s;
    case fehlernummer::DateiVorhanden:
      return u"Datei existiert bereits"_s;
    case fehlernummer::DatentraegerVoll:
      return u"Datenträger voll"_s;
    case fehlernummer::ZugriffVerweigert:
      return u"Zugriff verweigert"_s;
    case fehlernummer::PfadZugriff:
      return u"Fehler beim Zugriff auf Pfad/Datei"_s;
    case fehlernummer::PfadNichtGefunden:
      return u"Pfad nicht gefunden"_s;
    case fehlernummer::ObjektNichtGesetzt:
      return u"Objektvariable nicht festgelegt"_s;
    case fehlernummer::NullUngueltig:
      return u"Unzulässige Verwendung von Null"_s;
    case fehlernummer::ElementFehlt:
      return u"Das Steuerelementfeld hat dieses Element nicht"_s;
    case fehlernummer::BereitsGeladen:
      return u"Das Objekt ist bereits geladen"_s;
    case fehlernummer::NichtEntladbar:
      return u"Ein zur Entwurfszeit angelegtes Steuerelement kann nicht entladen werden"_s;
    case fehlernummer::UngueltigerEigenschaftswert:
      return u"Ungültiger Eigenschaftswert"_s;
    case fehlernummer::ObjektNichtErstellbar:
      return u"Objekterstellung durch Komponente nicht möglich"_s;
    case fehlernummer::UngueltigesBild:
      return u"Ungültiges Bild"_s;
    case fehlernummer::SpalteFehlt:
      return u"Die Spalte ist in der Auflistung nicht vorhanden"_s;
    case fehlernummer::ObjektGeschlossen:
      return u"Der Vorgang ist für ein geschlossenes Objekt nicht zugelassen"_s;
    case fehlernummer::VerbindungGeschlossen:
      return u"Die Verbindung ist geschlossen oder für diesen Vorgang nicht geeignet"_s;
    case fehlernummer::Anweisung:
      return u"Die Anweisung ist fehlgeschlagen"_s;
    case fehlernummer::Verbindung:
      return u"Die Verbindung zur Datenbank ist fehlgeschlagen"_s;
    default:
      return u"Anwendungs- oder objektdefinierter Fehler"_s;
  }
}

}  // namespace

Laufzeitfehler::Laufzeitfehler(std::int32_t nummer, QString beschreibung)
    : nummer_(nummer),
      beschreibung_(beschreibung.isEmpty() ? uebliche_Worte(nummer) : std::move(beschreibung)),
      utf8_(beschreibung_.toUtf8()) {}

Laufzeitfehler::~Laufzeitfehler() = default;
