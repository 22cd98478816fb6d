// The user's manual holds every text that a user can be told, letter by letter, and every picture that it shows.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QRegularExpression>

#include "tests/docs/Quelltext.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the program puts in stands in the manual between these.
const QString Eingesetztes = u"‹[^›]*›"_s;

/// The manual as one line, in which a break within a message is a blank.
const QString& handbuch() {
  static const QString Text = projekt::lies(u"docs/HANDBUCH.md"_s).replace(u"<br>"_s, u" "_s).simplified();
  return Text;
}

bool im_Handbuch(const QString& text) {
  static const QRegularExpression Platzhalter(u"%[1-9]"_s);
  QStringList teile;
  for (const QString& teil : text.simplified().split(Platzhalter)) teile.append(QRegularExpression::escape(teil));
  return QRegularExpression(teile.join(Eingesetztes)).match(handbuch()).hasMatch();
}

bool hat_Buchstaben(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

/// A statement for the database, or a piece of one, may end with a marker for a value or with a dot.
bool ist_Anweisung(const QString& text) {
  static const QRegularExpression Anfang(u"^(SELECT|INSERT|UPDATE|DELETE|DROP|CREATE|FROM|WHERE)\\b"_s);
  return text.contains(Anfang);
}

bool ist_Satz(const QString& text) {
  const QString t = text.trimmed();
  if (ist_Anweisung(t)) return false;
  return t.contains(u' ') && (t.endsWith(u'.') || t.endsWith(u'!') || t.endsWith(u'?'));
}

/// The tour speaks to developers, and the samples hold texts of the pictures.
QStringList quellen() {
  QStringList liste;
  for (const QString& ordner :
      {u"dialogs"_s, u"store"_s, u"imaging"_s, u"component"_s, u"host"_s, u"platform/shell"_s, u"platform/forms"_s})
    liste += projekt::dateien(ordner, {u"*.cpp"_s});
  static const QRegularExpression Andere(u"/(Rundgang|Schrittfolge|Beispieltabelle)"_s);
  liste.removeIf([](const QString& datei) { return datei.contains(Andere); });
  return liste;
}

/// The literals that a message box gets: its own, or those of the variable that is its text.
QStringList texte_der_Meldung(const Quelltext& quelle, const Quelltext::Aufruf& aufruf) {
  QStringList texte = quelle.texte_in(aufruf.argumente);
  static const QRegularExpression Name(u"^\\s*(\\w+)\\s*(?:,|$)"_s);
  const QRegularExpressionMatch variable = Name.match(aufruf.argumente);
  if (!variable.hasMatch()) return texte;
  const QRegularExpression zuweisung(u"\\b"_s + variable.captured(1) + u"\\s*=([^;]*);"_s);
  QString letzte;
  for (auto lauf = zuweisung.globalMatch(aufruf.davor); lauf.hasNext();) letzte = lauf.next().captured(1);
  return texte + quelle.texte_in(letzte);
}

void erwarte_im_Handbuch(const QStringList& texte, const QString& datei) {
  for (const QString& text : texte)
    EXPECT_TRUE(!hat_Buchstaben(text) || im_Handbuch(text)) << datei.toStdString() << ": " << text.toStdString();
}

}  // namespace

TEST(Handbuch, EveryTextOfAMessageBoxStandsInIt) {
  int meldungen = 0;
  for (const QString& datei : quellen()) {
    const Quelltext quelle(projekt::lies(datei));
    for (const Quelltext::Aufruf& aufruf : quelle.aufrufe(u"MsgBox"_s)) {
      ++meldungen;
      erwarte_im_Handbuch(texte_der_Meldung(quelle, aufruf), datei);
    }
  }
  EXPECT_GT(meldungen, 30);
}

TEST(Handbuch, EverySentenceThatAUserCanReadStandsInIt) {
  int saetze = 0;
  for (const QString& datei : quellen()) {
    // What commands say of themselves goes over several lines.
    const bool hilfe = datei.startsWith(u"host/kvobild/Befehl"_s) || datei.startsWith(u"host/betrieb/befehl/"_s) ||
        datei.endsWith(u"/Dialogprogramm.cpp"_s) || datei == "host/kvobild.cpp"_L1 ||
        datei.endsWith(u"/Wirtsoptionen.cpp"_s);
    const Quelltext quelle(projekt::lies(datei));
    for (const QString& text : quelle.texte_in(quelle.code())) {
      if (!ist_Satz(text) || (hilfe && text.contains(u'\n'))) continue;
      ++saetze;
      erwarte_im_Handbuch({text}, datei);
    }
  }
  EXPECT_GT(saetze, 120);
}

TEST(Handbuch, EveryFailureOfThePlatformStandsInIt) {
  const Quelltext quelle(projekt::lies(u"platform/basic/Laufzeitfehler.cpp"_s));
  const QStringList worte = quelle.texte_in(quelle.code());
  EXPECT_GT(worte.size(), 25);
  for (const QString& text : worte)
    if (text.contains(u' ') && !text.contains(u'/')) erwarte_im_Handbuch({text}, u"Laufzeitfehler.cpp"_s);
}

TEST(Handbuch, ATextThatIsNotThereIsMissed) {
  EXPECT_TRUE(im_Handbuch(u"Die Datei „%1“ gibt es nicht."_s));
  EXPECT_FALSE(im_Handbuch(u"Die Datei „%1“ gibt es nie."_s));
  EXPECT_FALSE(im_Handbuch(u"Die %1 „%2“ gibt es nicht."_s));
}

TEST(Handbuch, EveryPictureOfTheDocumentsExists) {
  static const QRegularExpression Bild(u"!\\[[^\\]]*\\]\\(([^)]+)\\)"_s);
  int bilder = 0;
  for (const QString& dokument : {u"README.md"_s, u"docs/HANDBUCH.md"_s, u"docs/EINBETTEN.md"_s}) {
    const QString text = projekt::lies(dokument);
    const QString ordner = QFileInfo(QStringLiteral(KVO_QUELLORDNER "/") + dokument).path() + u'/';
    for (auto lauf = Bild.globalMatch(text); lauf.hasNext(); ++bilder) {
      const QString bild = lauf.next().captured(1);
      EXPECT_TRUE(QFileInfo::exists(ordner + bild)) << dokument.toStdString() << ": " << bild.toStdString();
    }
  }
  EXPECT_GT(bilder, 15);
}
