#include "tests/docs/Quelltext.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char16_t Erstes_Zeichen = 0xE000;  // private use

const QString Wurzel = QStringLiteral(KVO_QUELLORDNER "/");

QString entschluesselt(QChar zeichen) {
  if (zeichen == u'n') return u"\n"_s;
  if (zeichen == u'r' || zeichen == u't') return u" "_s;
  return zeichen;
}

bool ist_Wort(QChar c) {
  return c.isLetterOrNumber() || c == u'_';
}

qsizetype hinter_Zeichen(const QString& quelle, qsizetype ab) {
  qsizetype i = ab + 1;
  while (i < quelle.size() && quelle[i] != u'\'') i += quelle[i] == u'\\' ? 2 : 1;
  return i + 1;
}

}  // namespace

Quelltext::Quelltext(const QString& quelle) {
  for (qsizetype i = 0; i < quelle.size();) {
    const QStringView rest = QStringView(quelle).mid(i);
    if (rest.startsWith(u"//")) {
      const qsizetype ende = quelle.indexOf(u'\n', i);
      i = ende < 0 ? quelle.size() : ende;
    } else if (rest.startsWith(u"/*")) {
      i = quelle.indexOf(u"*/"_s, i) + 2;
    } else if (rest.startsWith(u"R\"(")) {
      i = lies_rohen_Text(quelle, i);
    } else if (rest.front() == u'"') {
      i = lies_Text(quelle, i);
    } else if (rest.front() == u'\'' && (i == 0 || !quelle[i - 1].isDigit())) {
      beende_Text();
      code_ += u'0';
      i = hinter_Zeichen(quelle, i);
    } else {
      // The prefix of a literal that goes on belongs to it.
      if (!(ist_offen_ && rest.startsWith(u"u\""))) {
        if (ist_offen_ && !rest.front().isSpace()) beende_Text();
        (ist_offen_ ? dahinter_ : code_) += rest.front();
      }
      ++i;
    }
  }
  beende_Text();
}

void Quelltext::oeffne_Text() {
  if (!ist_offen_ && code_.endsWith(u'u') && (code_.size() < 2 || !ist_Wort(code_[code_.size() - 2]))) code_.chop(1);
  ist_offen_ = true;
}

qsizetype Quelltext::lies_rohen_Text(const QString& quelle, qsizetype ab) {
  oeffne_Text();
  const qsizetype ende = quelle.indexOf(u")\""_s, ab);
  offener_ += QStringView(quelle).sliced(ab + 3, ende - ab - 3);
  qsizetype i = ende + 2;
  while (i < quelle.size() && ist_Wort(quelle[i])) ++i;
  return i;
}

qsizetype Quelltext::lies_Text(const QString& quelle, qsizetype ab) {
  oeffne_Text();
  qsizetype i = ab + 1;
  for (; i < quelle.size() && quelle[i] != u'"'; ++i)
    offener_ += quelle[i] == u'\\' ? entschluesselt(quelle[++i]) : QString(quelle[i]);
  ++i;
  while (i < quelle.size() && ist_Wort(quelle[i])) ++i;
  return i;
}

void Quelltext::beende_Text() {
  if (!ist_offen_) return;
  code_ += QChar(static_cast<char16_t>(Erstes_Zeichen + texte_.size()));
  code_ += dahinter_;
  texte_.append(offener_);
  offener_.clear();
  dahinter_.clear();
  ist_offen_ = false;
}

QStringList Quelltext::texte_in(const QString& stueck) const {
  QStringList liste;
  for (const QChar c : stueck)
    if (const qsizetype nummer = c.unicode() - Erstes_Zeichen; nummer >= 0 && nummer < texte_.size())
      liste.append(texte_[nummer]);
  return liste;
}

QList<Quelltext::Aufruf> Quelltext::aufrufe(const QString& name) const {
  QList<Aufruf> liste;
  const QRegularExpression anfang(u"\\b"_s + name + u"\\("_s);
  for (auto lauf = anfang.globalMatch(code_); lauf.hasNext();) {
    const QRegularExpressionMatch fund = lauf.next();
    qsizetype i = fund.capturedEnd();
    for (int tiefe = 1; i < code_.size() && tiefe > 0; ++i) {
      if (u"([{"_s.contains(code_[i])) ++tiefe;
      if (u")]}"_s.contains(code_[i])) --tiefe;
    }
    liste.append({code_.left(fund.capturedStart()), code_.mid(fund.capturedEnd(), i - 1 - fund.capturedEnd())});
  }
  return liste;
}

// The house's form is enough to go by: members stand two columns in, what they go on with stands further in.
QSet<QString> Quelltext::oeffentliche_Namen(const QString& klasse) const {
  static const QRegularExpression Funktion(u"^  (?=\\w)(?!return|using|friend|typedef)[^(=;\\n]*[ &*>](\\w+)\\("_s);
  static const QRegularExpression Variable(
      u"^  (?=\\w)(?!return|using|friend|struct|enum)[^(=;\\n]+?[ &>]"
      "(\\w+(?:, \\w+)*)(?: = [^;(]*)?;"_s);
  // A control stands with its container and its name.
  static const QRegularExpression Steuerelement(u"^  (?=\\w)[^({=;\\n]+?[ >](\\w+)\\{"_s);
  QSet<QString> namen;
  const QRegularExpression kopf(u"\\b(?:class|struct) (?:KVO_[A-Z]+ )?"_s + klasse + u"\\b[^;{]*\\{"_s);
  const QRegularExpressionMatch fund = kopf.match(code_);
  EXPECT_TRUE(fund.hasMatch()) << klasse.toStdString();
  bool oeffentlich = fund.captured().startsWith(u"struct"_s);
  for (const QString& zeile : code_.mid(fund.capturedEnd()).split(u'\n')) {
    if (zeile.startsWith(u"};"_s)) break;
    if (zeile.startsWith(u" p"_s)) oeffentlich = zeile == " public:"_L1;
    if (!oeffentlich) continue;
    if (const auto s = Steuerelement.match(zeile); s.hasMatch())
      namen.insert(s.captured(1));
    else if (const auto f = Funktion.match(zeile); f.hasMatch())
      namen.insert(f.captured(1));
    else if (const auto v = Variable.match(zeile); v.hasMatch())
      for (const QString& name : v.captured(1).split(u", "_s)) namen.insert(name);
  }
  namen.remove(klasse);
  namen.removeIf([](const QString& name) { return name.startsWith(u"operator"_s); });
  return namen;
}

QSet<QString> Quelltext::freie_Funktionen() const {
  static const QRegularExpression Funktion(u"^(?=\\w)(?!return)[^(=;\\n]*[ &*>](\\w+)\\("_s,
      QRegularExpression::MultilineOption | QRegularExpression::UseUnicodePropertiesOption);
  QSet<QString> namen;
  for (auto lauf = Funktion.globalMatch(code_); lauf.hasNext();) namen.insert(lauf.next().captured(1));
  return namen;
}

QString projekt::lies(const QString& pfad) {
  QFile datei(Wurzel + pfad);
  EXPECT_TRUE(datei.open(QIODevice::ReadOnly)) << pfad.toStdString();
  return QString::fromUtf8(datei.readAll());
}

QStringList projekt::dateien(const QString& ordner, const QStringList& muster) {
  QStringList liste;
  for (QDirIterator lauf(Wurzel + ordner, muster, QDir::Files, QDirIterator::Subdirectories); lauf.hasNext();)
    liste.append(lauf.next().mid(Wurzel.size()));
  liste.sort();
  return liste;
}
