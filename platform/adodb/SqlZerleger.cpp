#include "platform/adodb/SqlZerleger.h"

namespace adodb {
namespace {

using Art = Sqlstueck::Art;

bool ist_leer(QChar z) {
  return z == u' ' || (z >= u'\t' && z <= u'\r');
}
bool ist_Ziffer(QChar z) {
  return z >= u'0' && z <= u'9';
}
bool ist_Hexziffer(QChar z) {
  return ist_Ziffer(z) || (z >= u'a' && z <= u'f') || (z >= u'A' && z <= u'F');
}
bool beginnt_Wort(QChar z) {
  return (z >= u'a' && z <= u'z') || (z >= u'A' && z <= u'Z') || z == u'_' || z == u'@' || z == u'#' || z == u'$' ||
      z.unicode() >= 0x80;
}

template <class Praedikat>
qsizetype solange(QStringView text, qsizetype stelle, Praedikat passt) {
  while (stelle < text.size() && passt(text[stelle])) ++stelle;
  return stelle;
}

}  // namespace

std::optional<Sqlstueck> SqlZerleger::naechstes() {
  if (stelle_ >= text_.size()) return std::nullopt;
  Sqlstueck stueck;
  stueck.beginn = stelle_;
  stueck.ende = ende_ab(stelle_, stueck.art);
  stelle_ = stueck.ende;
  return stueck;
}

qsizetype SqlZerleger::ende_ab(qsizetype stelle, Art& art) const {
  const QChar zeichen = text_[stelle];
  const QStringView rest = text_.sliced(stelle);
  const auto setze = [&art](Art neue, qsizetype ende) {
    art = neue;
    return ende;
  };
  if (ist_leer(zeichen)) return setze(Art::Leer, solange(text_, stelle, ist_leer));
  if (beginnt_Wort(zeichen))
    return setze(Art::Wort, solange(text_, stelle, [](QChar z) { return beginnt_Wort(z) || ist_Ziffer(z); }));
  if (ist_Ziffer(zeichen)) return setze(Art::Zahl, ende_der_Zahl(stelle));
  if (zeichen == u'\'') return setze(Art::Literal, ende_der_Marke(stelle, u'\''));
  if (zeichen == u'"' || zeichen == u'`') return setze(Art::Name, ende_der_Marke(stelle, zeichen));
  if (zeichen == u'[') return setze(Art::Name, ende_der_Marke(stelle, u']'));
  if (rest.startsWith(u"--")) return setze(Art::Kommentar, solange(text_, stelle, [](QChar z) { return z != u'\n'; }));
  if (rest.startsWith(u"/*")) {
    const qsizetype schluss = text_.indexOf(u"*/", stelle + 2);
    return setze(Art::Kommentar, schluss < 0 ? text_.size() : schluss + 2);
  }
  return setze(Art::Zeichen, stelle + 1);
}

qsizetype SqlZerleger::ende_der_Marke(qsizetype stelle, QChar schluss) const {
  for (qsizetype i = stelle + 1; i < text_.size(); ++i) {
    if (text_[i] != schluss) continue;
    // A doubled mark stands for itself, except "]]", which SQLite does not know.
    if (schluss == u']' || i + 1 >= text_.size() || text_[i + 1] != schluss) return i + 1;
    ++i;
  }
  return text_.size();
}

qsizetype SqlZerleger::ende_der_Zahl(qsizetype stelle) const {
  const auto zeichen = [this](qsizetype i) { return i < text_.size() ? text_[i] : QChar(); };
  if (text_[stelle] == u'0' && (zeichen(stelle + 1) == u'x' || zeichen(stelle + 1) == u'X'))
    return solange(text_, stelle + 2, ist_Hexziffer);
  qsizetype ende = solange(text_, stelle, ist_Ziffer);
  if (zeichen(ende) == u'.') ende = solange(text_, ende + 1, ist_Ziffer);
  if (zeichen(ende) != u'e' && zeichen(ende) != u'E') return ende;
  // "1e5" and "1e-5" carry an exponent; the e of "1else" belongs to the word.
  const bool vorzeichen = zeichen(ende + 1) == u'+' || zeichen(ende + 1) == u'-';
  const qsizetype exponent = ende + (vorzeichen ? 2 : 1);
  return ist_Ziffer(zeichen(exponent)) ? solange(text_, exponent, ist_Ziffer) : ende;
}

bool ist_leere_Anweisung(QStringView text) {
  SqlZerleger zerleger(text);
  while (const auto stueck = zerleger.naechstes()) {
    if (stueck->art == Art::Leer || stueck->art == Art::Kommentar) continue;
    if (text[stueck->beginn] != u';') return false;
  }
  return true;
}

namespace {

bool ist_GO_Zeile(QStringView text, const Sqlstueck& wort) {
  if (text.sliced(wort.beginn, wort.ende - wort.beginn).compare(u"GO", Qt::CaseInsensitive) != 0) return false;
  const qsizetype anfang = wort.beginn == 0 ? 0 : text.lastIndexOf(u'\n', wort.beginn - 1) + 1;
  qsizetype schluss = text.indexOf(u'\n', wort.ende);
  if (schluss < 0) schluss = text.size();
  return text.sliced(anfang, schluss - anfang).trimmed().size() == 2;
}

void nimm_Anweisung(QStringList& anweisungen, QStringView text) {
  if (!ist_leere_Anweisung(text)) anweisungen.append(text.trimmed().toString());
}

/// Follows a statement to its end: tells which semicolons part a trigger's body instead of ending it.
class Triggerwache {
 public:
  /// A piece that is neither blank nor comment.
  void sieh_an(QStringView text, const Sqlstueck& stueck) {
    const QStringView wort = text.sliced(stueck.beginn, stueck.ende - stueck.beginn);
    const auto ist = [&](QStringView name) { return wort.compare(name, Qt::CaseInsensitive) == 0; };
    if (nummer_ == 0) erzeugt_ = ist(u"CREATE");
    // TEMP may stand between.
    if (erzeugt_ && nummer_ >= 1 && nummer_ <= 2 && ist(u"TRIGGER")) im_Trigger_ = true;
    // An END of CASE stands before the semicolon, the body's own behind it.
    if (im_Trigger_ && hinter_Semikolon_ && ist(u"END")) im_Trigger_ = false;
    hinter_Semikolon_ = wort == u";";
    ++nummer_;
  }
  bool haelt() const noexcept { return im_Trigger_; }

 private:
  int nummer_ = 0;
  bool erzeugt_ = false;
  bool im_Trigger_ = false;
  bool hinter_Semikolon_ = false;
};

}  // namespace

QStringList zerlege_skript(const QString& skript) {
  QStringList anweisungen;
  const QStringView text(skript);
  SqlZerleger zerleger(text);
  Triggerwache wache;
  qsizetype anfang = 0;
  while (const auto stueck = zerleger.naechstes()) {
    if (stueck->art != Art::Leer && stueck->art != Art::Kommentar) wache.sieh_an(text, *stueck);
    const bool semikolon = stueck->art == Art::Zeichen && text[stueck->beginn] == u';' && !wache.haelt();
    if (!semikolon && !(stueck->art == Art::Wort && ist_GO_Zeile(text, *stueck))) continue;
    nimm_Anweisung(anweisungen, text.sliced(anfang, stueck->beginn - anfang));
    anfang = stueck->ende;
    wache = Triggerwache();
  }
  nimm_Anweisung(anweisungen, text.sliced(anfang));
  return anweisungen;
}

}  // namespace adodb
