#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/fenster/Arbeitsplatz.h"
#include "host/fenster/Vorgang.h"
#include "platform/host/KVOCore.h"
#include "store/clsBildZuordnungen.h"

/// Takes the reports of the component for as long as it lives, where the caller puts them in words of its own.
class Berichtsfang {
 public:
  Berichtsfang();
  ~Berichtsfang();
  Berichtsfang(const Berichtsfang&) = delete;
  Berichtsfang& operator=(const Berichtsfang&) = delete;
  bool leer() const noexcept;
  /// What was reported first: later failures mostly follow from it.
  QString erster() const;

 private:
  class Core;
  std::shared_ptr<Core> core_;
  std::shared_ptr<KVOCore> vorher_;
};

/// The assignments of one record as the component has them, with the order that the table holds.
struct Bildsammlung {
  std::shared_ptr<clsBildZuordnungen> store;
  /// Stored SortIndex of each row.
  std::vector<std::int64_t> reihenfolge;
};

/// Reads a record's assignments. Failures end with Abbruch and words.
Bildsammlung lies_Bildsammlung(const Arbeitsplatz& platz, const Vorgang& vorgang);
