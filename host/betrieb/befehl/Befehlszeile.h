#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "host/betrieb/Ausgang.h"

/// One option of a command: its long name, the name of its value (empty for a switch) and its words in the help.
struct Option {
  QString name;
  QString wert;
  QString hilfe;
  /// The values that it takes, where these can be counted.
  QStringList werte = {};
};

/// What was called: the values of the options and the arguments that are no options.
class Aufruf {
 public:
  /// `programm` is how the program is called, for what is told of a wrong call.
  Aufruf(QString programm, QMap<QString, QString> werte, QStringList argumente)
      : programm_(std::move(programm)), werte_(std::move(werte)), argumente_(std::move(argumente)) {}

  bool gesetzt(const QString& option) const { return werte_.contains(option); }
  /// The value of an option, or none when it was not given.
  std::optional<QString> wert(const QString& option) const;
  /// The value of an option that the command can't do without.
  QString noetig(const QString& option) const;
  /// The value of an option that is "ja" or "nein", or none when it was not given.
  std::optional<bool> ja_nein(const QString& option) const;
  const QStringList& argumente() const noexcept { return argumente_; }

 private:
  QString programm_;
  QMap<QString, QString> werte_;
  QStringList argumente_;
};

/// A program as its help names it: how it is called, what it is for (with a line end behind it), and what stands behind
/// the list of its commands.
struct Befehlsprogramm {
  QString name;
  QString zweck;
  QString schluss;
};

/// A command of the program with all that its help says.
struct Befehl {
  QString name;
  /// One line for the list of commands.
  QString kurz;
  /// The arguments in the call's form, as "BILD…".
  QString argumente;
  QString erklaerung;
  QList<Option> optionen;
  int argumente_mindestens = 0;
  int argumente_hoechstens = 0;
  std::function<Ausgang(const Aufruf&)> fuehre_aus;
};

namespace befehlszeile {

/// The options that say which business record is meant.
QList<Option> datensatz_Optionen();
Option verbindung_Option();
Option bilder_Option();
Option json_Option();
/// The one that every command has.
Option hilfe_Option();
/// Those that a program has without a command.
QList<Option> programm_Optionen();

/// As the help lists options, each line with its end.
QString optionszeilen(const QList<Option>& optionen);
/// What the numbers mean with which commands end.
QString ausgangstext();

/// Finds the command of `argumente` (without the program's own name), prints the help that was asked for, or runs it.
/// A wrong call ends with Abbruch.
Ausgang fuehre_aus(const Befehlsprogramm& programm, const QList<Befehl>& befehle, const QStringList& argumente);

}  // namespace befehlszeile
