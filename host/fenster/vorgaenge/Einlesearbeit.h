#pragma once

#include <QObject>
#include <QString>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

#include "host/betrieb/vorgaenge/Vorgangseinlesung.h"

/// Takes in a list on a thread and a connection of its own, so that the window stays alive whatever file and database
/// do. One job at a time; what it gives comes on the thread of the window.
class Einlesearbeit final : public QObject {
 public:
  explicit Einlesearbeit(QString verbindung) : verbindungszeichenfolge_(std::move(verbindung)) {}
  /// Gives up what runs and waits for it.
  ~Einlesearbeit() override;
  Q_DISABLE_COPY_MOVE(Einlesearbeit)

  /// What is known of a file before its lines are compared.
  struct Ansicht {
    QString form;
    Spaltenwahl wahl;
    /// The form itself names the columns.
    bool fest = false;
    /// The first lines as they were read.
    QList<Listenzeile> zeilen;
  };
  /// What a list does to the table, and its first lines.
  struct Vorschau {
    Einlesebefund befund;
    QList<Zeilenbefund> falsche;
    QList<Zeilenbefund> erste;
  };

  /// Opens a file and suggests what its columns mean.
  void oeffne(const QString& datei, std::function<void(const Ansicht&)> fertig);
  /// Reads the opened file and compares it.
  void pruefe(const Spaltenwahl& wahl, std::function<void(const Vorschau&)> fertig);
  /// Writes what was compared.
  void uebernimm(bool fehlerhafte_auslassen, std::function<void(const Einlesebefund&)> fertig);
  void gib_auf();
  bool laeuft() const noexcept { return faden_ != nullptr; }

  std::function<void(Vorgangseinlesung::Schritt schritt, qint64 getan, qint64 ganz)> bei_Fortschritt;
  /// A job ended with words in place of a result; after `gib_auf` they say that.
  std::function<void(const QString& worte)> bei_Ausfall;

 private:
  void starte(const std::function<std::function<void()>()>& arbeit);
  bool melde(Vorgangseinlesung::Schritt schritt, qint64 getan, qint64 ganz);
  Vorgangseinlesung& einlesung();

  const QString verbindungszeichenfolge_;
  std::shared_ptr<adodb::Connection> verbindung_;
  std::unique_ptr<Listenleser> liste_;
  std::unique_ptr<Vorgangseinlesung> einlesung_;
  std::unique_ptr<QThread> faden_;
  std::atomic<bool> aufgegeben_ = false;
  /// When progress was told last, in milliseconds.
  qint64 zuletzt_ = 0;
};
