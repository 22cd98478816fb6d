#pragma once

#include <cstdint>

namespace adodb {

/// What a driver knows of an open connection's encryption, from what was demanded of it.
struct Leitungsschutz {
  /// Ganz: everything, or there would be no connection. Keiner: nothing, the login neither. Offen: as the server likes.
  enum class Umfang : std::uint8_t { Offen, Keiner, Ganz };
  /// What is checked of the certificate, wherever one is shown: nothing; its authority and its dates; its name as well.
  enum class Pruefung : std::uint8_t { Unbekannt, Keine, Ohne_Namen, Ganz };

  Umfang umfang = Umfang::Offen;
  Pruefung pruefung = Pruefung::Unbekannt;
  friend bool operator==(const Leitungsschutz&, const Leitungsschutz&) = default;
};

}  // namespace adodb
