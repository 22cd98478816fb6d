#pragma once

#include <QString>
#include <cstdint>
#include <exception>

#include "platform/basic/kvo_export.h"

/// Numbers of the failures that the platform raises.
namespace fehlernummer {
inline constexpr std::int32_t UngueltigerAufruf = 5;
inline constexpr std::int32_t Ueberlauf = 6;
inline constexpr std::int32_t SpeicherErschoepft = 7;
inline constexpr std::int32_t IndexAusserhalb = 9;
inline constexpr std::int32_t TypenUnvertraeglich = 13;
inline constexpr std::int32_t Intern = 51;
inline constexpr std::int32_t DateiNichtGefunden = 53;
inline constexpr std::int32_t EinAusgabeFehler = 57;
inline constexpr std::int32_t DateiVorhanden = 58;
inline constexpr std::int32_t DatentraegerVoll = 61;
inline constexpr std::int32_t UngueltigerDateiname = 52;
inline constexpr std::int32_t ZugriffVerweigert = 70;
inline constexpr std::int32_t PfadZugriff = 75;
inline constexpr std::int32_t PfadNichtGefunden = 76;
inline constexpr std::int32_t ObjektNichtGesetzt = 91;
inline constexpr std::int32_t NullUngueltig = 94;
inline constexpr std::int32_t ElementFehlt = 340;
inline constexpr std::int32_t BereitsGeladen = 360;
inline constexpr std::int32_t NichtEntladbar = 362;
inline constexpr std::int32_t UngueltigerEigenschaftswert = 380;
inline constexpr std::int32_t ObjektNichtErstellbar = 429;
inline constexpr std::int32_t UngueltigesBild = 481;
inline constexpr std::int32_t SpalteFehlt = 3265;
inline constexpr std::int32_t ObjektGeschlossen = 3704;
inline constexpr std::int32_t VerbindungGeschlossen = 3709;
inline constexpr std::int32_t Anweisung = -2147217900;
inline constexpr std::int32_t Verbindung = -2147467259;
}  // namespace fehlernummer

/// A failure with its number and a German description. The only exception that leaves a procedure of this system.
class KVO_EXPORT Laufzeitfehler : public std::exception {
 public:
  /// An empty description is filled in with the usual words of the number.
  explicit Laufzeitfehler(std::int32_t nummer, QString beschreibung = {});
  ~Laufzeitfehler() override;

  std::int32_t Nummer() const noexcept { return nummer_; }
  const QString& Beschreibung() const noexcept { return beschreibung_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  std::int32_t nummer_;
  QString beschreibung_;
  QByteArray utf8_;
};
