#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QString>
#include <functional>
#include <memory>

/// Something that a program without a user does and sees: what is done, what is then to be seen, and what is looked at
/// once it is.
struct Schritt {
  QString text;
  std::function<void()> tun;
  /// Asked again and again between the program's events; a control that is missing (an exception) counts as not yet.
  std::function<bool()> bis;
  std::function<void()> danach;
};

/// Walks steps one after the other inside the program's event loops, those of its modal windows too, and keeps the
/// account of what was expected. Prints a line for each step, and more where something is wrong.
class Schrittfolge {
 public:
  /// Waits for an effect as long as `geduld`, in milliseconds.
  explicit Schrittfolge(int geduld = 60'000);
  ~Schrittfolge();
  Schrittfolge(const Schrittfolge&) = delete;
  Schrittfolge& operator=(const Schrittfolge&) = delete;

  void plane(Schritt schritt) { schritte_.append(std::move(schritt)); }
  /// Starts with the next event; `am_Ende` runs after the last step, or after the first one whose effect did not come.
  void beginne(std::function<void()> am_Ende);

  /// Compares what is seen with what should be.
  void erwarte(const QString& was, const QString& ist, const QString& soll);
  void erwarte(const QString& was, bool stimmt);
  /// Something that no step expected.
  void fehler(const QString& text);
  static void sage(const QString& zeile);

  /// Every step had its effect.
  bool durchlaufen() const noexcept { return durchlaufen_; }
  int pruefungen() const noexcept { return pruefungen_; }
  int fehlerzahl() const noexcept { return fehler_; }

 private:
  class Pumpenwache;
  void tue_naechsten();
  void sieh_nach();
  bool ist_soweit() const;
  template <class Anweisung>
  bool geschuetzt(Anweisung&& anweisung);

  const int geduld_;
  QList<Schritt> schritte_;
  qsizetype stelle_ = 0;
  bool schon_gesehen_ = false;
  QElapsedTimer uhr_;
  std::function<void()> am_Ende_;
  std::shared_ptr<Pumpenwache> wache_;
  bool durchlaufen_ = false;
  int pruefungen_ = 0;
  int fehler_ = 0;
};
