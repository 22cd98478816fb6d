#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/basic/kvo_export.h"

namespace adodb {

/// The keyword and value pairs of a connect string in OLE DB form ("Provider=SQLite;Data Source=…").
/// Keywords are compared without regard to case, blanks around `=` and `;` do not count, a value may stand in
/// double or single quotes or in braces, a doubled closing mark stands for the mark itself. Of a keyword that
/// stands twice the last value counts. Empty pairs (";;") do not count.
class KVO_EXPORT Verbindungszeichenfolge {
 public:
  /// A text that is no list of pairs raises -2147467259; the words never repeat a value.
  explicit Verbindungszeichenfolge(const QString& text);

  /// The value of a keyword, or none.
  std::optional<QString> wert(const QString& schluesselwort) const;
  /// All keywords in the order of their first standing, as written.
  QStringList schluesselworte() const;

  struct Paar {
    QString wort;
    QString wert;
  };
  /// All pairs as they stand, doubled ones too.
  const QList<Paar>& paare() const noexcept { return paare_; }

  /// A value in the form that stands in a connect string whatever it holds: in double quotes.
  static QString als_wert(const QString& wert);

 private:
  QList<Paar> paare_;
};

}  // namespace adodb
