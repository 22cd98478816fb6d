#pragma once

#include <QByteArray>
#include <functional>
#include <optional>
#include <vector>

#include "host/bericht/ausgabe/Ausgabebild.h"

/// Reads the pictures that are handed out, one at a time, without their place data, and keeps the account of those that
/// can't be.
class Bildleser {
 public:
  /// Asked before each picture with the number of those that are done and of all; false stops.
  using Fortschritt = std::function<bool(int fertige, int alle)>;

  Bildleser(bool mit_Ort, Fortschritt fortschritt, int alle)
      : mit_Ort_(mit_Ort), fortschritt_(std::move(fortschritt)), alle_(alle) {}

  /// What the target is to hold; none where the picture is left out, or where the user has stopped it. Nothing flies
  /// but what the question raises.
  std::optional<QByteArray> lies(const Ausgabebild& bild);

  bool angehalten() const noexcept { return angehalten_; }
  const std::vector<Ausgelassenes>& ausgelassene() const noexcept { return ausgelassene_; }
  /// So many were read.
  int gelesene() const noexcept { return fertige_ - static_cast<int>(ausgelassene_.size()); }

 private:
  QString lies(const QString& quelle, QByteArray& bytes) const;

  bool mit_Ort_;
  Fortschritt fortschritt_;
  int alle_;
  int fertige_ = 0;
  bool angehalten_ = false;
  std::vector<Ausgelassenes> ausgelassene_;
};
