#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <functional>
#include <optional>

#include "host/betrieb/aufraeumen/Aufraeumplan.h"

/// Takes off a clearing's list what is to stay, and with it what hangs on that: the text of a picture that stays, and
/// the folders around it.
class Schonung {
 public:
  /// Why a file or folder of the list is to stay, or none. Texts that a picture keeps, and folders that something in
  /// them keeps, are none of its business.
  using Frage = std::function<std::optional<Bleibendes::Grund>(const Aufraeumposten&)>;

  explicit Schonung(Frage frage) : frage_(std::move(frage)) {}
  /// The list as it is to be; its order stays. What the question raises flies on, and nothing is changed then.
  Aufraeumplan angewandt(const Aufraeumplan& plan);

 private:
  std::optional<Bleibendes::Grund> grund(const Aufraeumposten& posten);
  bool hat_Bild(const QString& pfad);
  void lies_Bilder(const QString& ordner);

  Frage frage_;
  /// Folders that something stays in, and those above them.
  QSet<QString> bewohnt_;
  /// What goes, as far as the list is gone through.
  QSet<QString> gehende_;
  /// Names of the text files, in lower case, that pictures of this folder have which stay.
  QString gelesen_;
  QSet<QString> texte_;
};
