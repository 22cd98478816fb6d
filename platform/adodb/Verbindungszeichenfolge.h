#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <initializer_list>
#include <optional>

#include "platform/basic/kvo_export.h"

namespace adodb {

/// What a keyword of a connect string is about. Wirkungslos asks for what happens in any case.
enum class Wortsinn {
  Unbekannt,
  Anbieter,
  Treiber,
  Datenquelle,
  Abschnitt,
  Server,
  Port,
  Datenbank,
  Benutzer,
  Kennwort,
  Vertraut,
  Verschluesselung,
  FreeTdsVerschluesselung,
  Vertrauen,
  Zertifikatsname,
  Zertifikat,
  Dienstname,
  Bereich,
  Ntlm2,
  Programm,
  Arbeitsplatz,
  Sprache,
  Absicht,
  Netze,
  Protokoll,
  Paketgroesse,
  Anmeldezeit,
  Wirkungslos,
  Protokolldatei,
};

/// The keyword and value pairs of a connect string in OLE DB form ("Provider=SQLite;Data Source=…"). Keywords are
/// compared without regard to case, blanks around `=` and `;` do not count, a value may stand in double or single
/// quotes or in braces, a doubled closing mark stands for the mark itself. The last value of a repeated keyword counts.
/// Empty pairs (";;") do not count.
class KVO_EXPORT Verbindungszeichenfolge {
 public:
  /// A text that is no list of pairs raises -2147467259; the words never repeat a value.
  explicit Verbindungszeichenfolge(const QString& text);

  /// The value of a keyword, or none.
  std::optional<QString> wert(const QString& schluesselwort) const;
  /// All keywords as written, in the order in which each first occurs.
  QStringList schluesselworte() const;

  struct Paar {
    QString wort;
    QString wert;
  };
  /// All pairs as they stand, doubled ones too.
  const QList<Paar>& paare() const noexcept { return paare_; }

  /// What a keyword is about in all the ways to write it: here blanks and underscores don't count either.
  static Wortsinn sinn(const QString& schluesselwort);
  /// The last value that is not empty of the keywords about one of these, or an empty one.
  QString wert_zu(std::initializer_list<Wortsinn> sinne) const;

  /// A value for the eyes of a user: empty where a forgotten semicolon may have put the next pair, perhaps a password,
  /// into it.
  static QString zeigbar(const QString& wert) { return wert.contains(u'=') ? QString() : wert; }
  /// The same in German quotes with a blank before it, for an error's words; an empty value stays empty.
  static QString genannt(const QString& wert);
  /// A value in double quotes, the form that a connect string takes whatever the value holds.
  static QString als_wert(const QString& wert);

 private:
  QList<Paar> paare_;
};

}  // namespace adodb
