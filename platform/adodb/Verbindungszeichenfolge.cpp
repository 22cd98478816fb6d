#include "platform/adodb/Verbindungszeichenfolge.h"

#include <algorithm>

#include "platform/adodb/Treiber.h"
#include "platform/adodb/Verbindungsworte.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace adodb {
namespace {

[[noreturn]] void keine_Paare() {
  throw Datenbankfehler(fehlernummer::Verbindung,
      u"Die Verbindungszeichenfolge ist keine Folge von Paaren Schlüsselwort=Wert"_s, u"08001"_s, 0);
}

/// Reads one connect string from its beginning to its end.
class Leser {
 public:
  explicit Leser(QStringView text) : text_(text) {}

  bool am_Ende() const { return stelle_ >= text_.size(); }

  /// Passes over blanks and separators between two pairs.
  void naechstes_Paar() {
    while (!am_Ende() && (text_[stelle_] == u' ' || text_[stelle_] == u';')) ++stelle_;
  }

  QString wort() {
    const qsizetype gleich = text_.indexOf(u'=', stelle_);
    const qsizetype trenner = text_.indexOf(u';', stelle_);
    if (gleich < 0 || (trenner >= 0 && trenner < gleich)) keine_Paare();
    const QString wort = text::Trim(text_.sliced(stelle_, gleich - stelle_));
    if (wort.isEmpty()) keine_Paare();
    stelle_ = gleich + 1;
    return wort;
  }

  QString wert() {
    blanks();
    if (am_Ende()) return {};
    switch (text_[stelle_].unicode()) {
      case u'"':
        return zwischen_Marken(u'"');
      case u'\'':
        return zwischen_Marken(u'\'');
      case u'{':
        return zwischen_Marken(u'}');
      default:
        return freier_Wert();
    }
  }

 private:
  void blanks() {
    while (!am_Ende() && text_[stelle_] == u' ') ++stelle_;
  }

  QString freier_Wert() {
    qsizetype ende = text_.indexOf(u';', stelle_);
    if (ende < 0) ende = text_.size();
    const QString wert = text::Trim(text_.sliced(stelle_, ende - stelle_));
    stelle_ = ende;
    return wert;
  }

  QString zwischen_Marken(QChar schluss) {
    QString wert;
    for (++stelle_; !am_Ende(); ++stelle_) {
      const QChar zeichen = text_[stelle_];
      if (zeichen == schluss) {
        if (stelle_ + 1 >= text_.size() || text_[stelle_ + 1] != schluss) return nach_Marke(wert);
        ++stelle_;
      }
      wert += zeichen;
    }
    keine_Paare();
  }

  QString nach_Marke(const QString& wert) {
    ++stelle_;
    blanks();
    if (!am_Ende() && text_[stelle_] != u';') keine_Paare();
    return wert;
  }

  QStringView text_;
  qsizetype stelle_ = 0;
};

}  // namespace

Verbindungszeichenfolge::Verbindungszeichenfolge(const QString& text) {
  Leser leser(text);
  for (leser.naechstes_Paar(); !leser.am_Ende(); leser.naechstes_Paar()) {
    Paar paar;
    paar.wort = leser.wort();
    paar.wert = leser.wert();
    paare_.append(paar);
  }
}

std::optional<QString> Verbindungszeichenfolge::wert(const QString& schluesselwort) const {
  // The last of several counts.
  std::optional<QString> letzter;
  for (const Paar& paar : paare_)
    if (paar.wort.compare(schluesselwort, Qt::CaseInsensitive) == 0) letzter = paar.wert;
  return letzter;
}

QStringList Verbindungszeichenfolge::schluesselworte() const {
  QStringList worte;
  for (const Paar& paar : paare_)
    if (!worte.contains(paar.wort, Qt::CaseInsensitive)) worte.append(paar.wort);
  return worte;
}

QString schlichtes_Wort(QString wort) {
  return wort.remove(u' ').remove(u'_').toLower();
}

bool steht_in(QStringView liste, const QString& wort) {
  const auto worte = liste.split(u'|', Qt::SkipEmptyParts);
  return std::any_of(
      worte.begin(), worte.end(), [&](QStringView w) { return w.compare(wort, Qt::CaseInsensitive) == 0; });
}

const Verbindungswort* verbindungswort(const QString& wort) {
  const QString name = schlichtes_Wort(wort);
  for (const Verbindungswort& eines : Verbindungsworte)
    if (steht_in(eines.namen, name)) return &eines;
  return nullptr;
}

Wortsinn Verbindungszeichenfolge::sinn(const QString& schluesselwort) {
  const Verbindungswort* wort = verbindungswort(schluesselwort);
  return wort ? wort->sinn : Wortsinn::Unbekannt;
}

QString Verbindungszeichenfolge::wert_zu(std::initializer_list<Wortsinn> sinne) const {
  QString letzter;
  for (const Paar& paar : paare_)
    if (!paar.wert.isEmpty() && std::find(sinne.begin(), sinne.end(), sinn(paar.wort)) != sinne.end())
      letzter = paar.wert;
  return letzter;
}

QString Verbindungszeichenfolge::genannt(const QString& wert) {
  const QString zu_zeigen = zeigbar(wert);
  return zu_zeigen.isEmpty() ? QString() : u" „"_s + zu_zeigen + u"“"_s;
}

QString Verbindungszeichenfolge::als_wert(const QString& wert) {
  QString innen = wert;
  return u'"' + innen.replace(u"\""_s, u"\"\""_s) + u'"';
}

}  // namespace adodb
