#pragma once

#include <QDateTime>
#include <QImage>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/aufnahme/Aufnahmeergebnis.h"
#include "host/betrieb/aufnahme/Aufnahmeinhalt.h"
#include "host/betrieb/aufnahme/Bildkopien.h"
#include "host/betrieb/aufnahme/Bildzeilen.h"
#include "host/betrieb/aufnahme/Inhaltsvergleich.h"

/// Takes pictures into a record: copies them into its folder of the picture tree, as they came or set upright and made
/// into JPEG, and writes their rows over the road of a host, which checks them. What has no row in the end has no copy.
class Aufnahme {
 public:
  /// Asked before each picture with the number of those that are done and of all; false stops.
  using Fortschritt = std::function<bool(int fertige, int alle)>;
  /// Asked once, when the first picture comes that the record has already: whether such ones are taken in again.
  using Frage = std::function<bool(const QString& name)>;

  struct Regeln {
    bool aufrecht = true;
    Fortschritt fortschritt;
    Frage doppelte;
  };

  /// So many copies are written to the table at a time: what is copied when the user stops or the database fails is
  /// attached all the same, or copied in vain no more often than that.
  static constexpr std::size_t Portion = 25;

  /// `vorgang` names the folder too.
  Aufnahme(const Arbeitsplatz& platz, Zuordnungsweg::Vorgang vorgang, Regeln regeln);
  ~Aufnahme();
  Q_DISABLE_COPY_MOVE(Aufnahme)

  /// Takes in files of this machine, then pixels. Nothing flies: what fails stands in the result, and the pictures
  /// before it are attached.
  Aufnahmeergebnis nimm_auf(const QStringList& dateien, const QList<QImage>& pixel = {});

 private:
  struct Wartendes {
    Aufgenommenes aufgenommen;
    namen::Bilddatei alt;
  };
  void beginne();
  void lies();
  void nimm_auf(const QString& ort);
  void nimm_auf(const QImage& pixel);
  void nimm_auf(const Aufnahmequelle& quelle, const Aufnahmeinhalt& inhalt);
  bool ist_unerwuenscht(const QString& name, const QByteArray& bytes);
  void speichere();
  void uebernimm(const Zuordnungsweg::Ergebnis& ergebnis);
  void raeume_Ordner_weg() const;
  /// Runs a step of one picture; a failure becomes a problem.
  template <class Schritt>
  bool geht(const QString& name, Schritt&& schritt);

  const Arbeitsplatz& platz_;
  const Zuordnungsweg::Vorgang vorgang_;
  const Regeln regeln_;
  const QString ordner_;
  const QString stempel_ = Bilddatei::Stempel(QDateTime::currentDateTime());
  std::shared_ptr<clsBildZuordnungen> store_;
  std::unique_ptr<Inhaltsvergleich> vergleich_;
  std::unique_ptr<bildzeilen::Vergebene> vergebene_;
  std::optional<bool> doppelte_nehmen_;
  std::unique_ptr<Bildkopien> kopien_;
  std::vector<Wartendes> wartende_;
  bool Ordner_war_da_ = true;
  /// The database refused: nothing more is tried.
  bool zu_Ende_ = false;
  Aufnahmeergebnis ergebnis_;
};
