#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <memory>

#include "platform/host/KVOCore.h"
#include "platform/host/Oberflaeche.h"

/// Records what was reported to the host's core component, for as long as it lives. A report that the test has not
/// fetched by then fails the test.
class CoreDoppel {
 public:
  struct Bericht {
    QString Modul;
    QString Prozedur;
    std::int32_t Nummer = 0;
    QString Beschreibung;
    bool MitMeldung = false;
  };
  CoreDoppel();
  ~CoreDoppel();
  CoreDoppel(const CoreDoppel&) = delete;
  CoreDoppel& operator=(const CoreDoppel&) = delete;
  /// All reports since the last fetch, oldest first.
  QList<Bericht> hole();

 private:
  class Core;
  std::shared_ptr<Core> core_;
  std::shared_ptr<KVOCore> vorher_;
};

/// Answers message boxes. A box that was not announced fails the test, and so does an announced one that never came.
class MeldungsDoppel {
 public:
  MeldungsDoppel();
  ~MeldungsDoppel();
  MeldungsDoppel(const MeldungsDoppel&) = delete;
  MeldungsDoppel& operator=(const MeldungsDoppel&) = delete;
  /// The next box must be this one; it gets that answer. `dabei` runs while the box shows.
  void erwarte(const oberflaeche::Meldung& meldung, oberflaeche::Antwort antwort = oberflaeche::Antwort::OK,
      std::function<void()> dabei = {});

 private:
  class Fenster;
  std::shared_ptr<Fenster> fenster_;
  std::shared_ptr<oberflaeche::Meldungsfenster> vorher_;
};
