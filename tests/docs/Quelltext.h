#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// C++ source of this project, read for what it says and not for what it means: comments are gone, and each string
/// literal (with the ones that follow it directly) is one character of the code.
class Quelltext {
 public:
  explicit Quelltext(const QString& quelle);

  /// The code, with literals as characters that only `texte_in` reads.
  const QString& code() const noexcept { return code_; }
  /// The literals of a piece of the code; escapes are resolved, a carriage return or tab is a blank.
  QStringList texte_in(const QString& stueck) const;
  /// The argument lists of all calls of a name, with what stands in front of each.
  struct Aufruf {
    QString davor;
    QString argumente;
  };
  QList<Aufruf> aufrufe(const QString& name) const;
  /// Names that the public part of a class declares: functions and variables, no constructors and operators.
  QSet<QString> oeffentliche_Namen(const QString& klasse) const;
  /// Names of the functions that a header of free functions declares.
  QSet<QString> freie_Funktionen() const;

 private:
  void oeffne_Text();
  qsizetype lies_rohen_Text(const QString& quelle, qsizetype ab);
  qsizetype lies_Text(const QString& quelle, qsizetype ab);
  void beende_Text();

  QString code_;
  QStringList texte_;
  QString offener_;
  QString dahinter_;
  bool ist_offen_ = false;
};

namespace projekt {

/// A file of the project; fails the test when it can't be read.
QString lies(const QString& pfad);
/// Paths of a folder and the ones below it, relative to the project.
QStringList dateien(const QString& ordner, const QStringList& muster);

}  // namespace projekt
