#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

#include "platform/basic/kvo_export.h"

namespace adodb {

/// One piece of a statement text; `beginn` and `ende` count 16-bit characters from the text's start.
struct Sqlstueck {
  enum class Art {
    Leer,       ///< blanks and line ends
    Kommentar,  ///< "-- …" or "/* … */"
    Literal,    ///< '…', a doubled quote inside
    Name,       ///< "…", […] or `…`
    Wort,       ///< a keyword or a plain name
    Zahl,       ///< 12, 1.5e3, 0x1F
    Zeichen     ///< any other single character
  };
  Art art = Art::Zeichen;
  qsizetype beginn = 0;
  qsizetype ende = 0;
};

/// Cuts a statement text into its pieces, so that nothing inside a literal, a quoted name or a comment is taken for
/// anything else. Pieces follow each other without a gap. What has no closing mark reaches to the end of the text.
class SqlZerleger {
 public:
  /// The text must outlive this object.
  explicit SqlZerleger(QStringView text) : text_(text) {}

  /// The next piece, or none behind the last.
  std::optional<Sqlstueck> naechstes();

 private:
  qsizetype ende_ab(qsizetype stelle, Sqlstueck::Art& art) const;
  qsizetype ende_der_Marke(qsizetype stelle, QChar schluss) const;
  qsizetype ende_der_Zahl(qsizetype stelle) const;

  QStringView text_;
  qsizetype stelle_ = 0;
};

/// The text holds nothing but blanks, comments and semicolons.
bool ist_leere_Anweisung(QStringView text);

/// The single statements of a script, without their semicolons and trimmed; statements that are empty or hold only a
/// comment are left out. A line that holds nothing but the word GO ends a statement as well. The body of a CREATE
/// TRIGGER belongs to it up to the END behind its last semicolon; no other statement may have semicolons of its own.
KVO_EXPORT QStringList zerlege_skript(const QString& skript);

}  // namespace adodb
