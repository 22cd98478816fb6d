// Lists as other programs write them, and as they come when something went wrong on the way.
#include <functional>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/vorgaenge/Csvleser.h"
#include "host/betrieb/vorgaenge/Listenleser.h"
#include "host/betrieb/vorgaenge/Spaltenwahl.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Listen : public ::testing::Test {
 protected:
  std::unique_ptr<Listenleser> leser(const QByteArray& inhalt, const QString& name = u"liste.csv"_s) {
    return oeffne_Liste(ordner_.schreibe(name, inhalt));
  }
  QList<Listenzeile> zeilen(const QByteArray& inhalt, const QString& name = u"liste.csv"_s) {
    QList<Listenzeile> alle;
    const auto liste = leser(inhalt, name);
    for (Listenzeile zeile; liste->naechste(zeile);) alle.append(zeile);
    return alle;
  }
  /// "1: a|b" for a line that was read, NULL as ~, "2! reason" for one that was not.
  QStringList gelesen(const QByteArray& inhalt, const QString& name = u"liste.csv"_s) {
    QStringList alle;
    for (const Listenzeile& zeile : zeilen(inhalt, name)) {
      QStringList werte;
      for (const Listenwert& wert : zeile.werte) werte.append(!wert.genannt ? u"?"_s : wert.null ? u"~"_s : wert.text);
      alle.append(zeile.fehler.isEmpty() ? u"%1: %2"_s.arg(zeile.nummer).arg(werte.join(u'|'))
                                         : u"%1! %2"_s.arg(zeile.nummer).arg(zeile.fehler));
    }
    return alle;
  }
  QString form(const QByteArray& inhalt) { return leser(inhalt)->form(); }
  Testordner ordner_;
};

QString abbruch(const std::function<void()>& tat) {
  try {
    tat();
  } catch (const Abbruch& ende) {
    EXPECT_EQ(ende.ausgang(), Ausgang::Datei);
    return ende.text();
  }
  return u"kein Abbruch"_s;
}

const QString Offen = u"die Anführungszeichen gehen nicht auf"_s;

}  // namespace

TEST_F(Listen, TheSeparatorIsFoundInTheLines) {
  EXPECT_EQ(form("a;b,c;d\n1;2,2;3\n"), u"CSV mit Semikolon, UTF-8"_s);
  EXPECT_EQ(form("a,b,c\n1,2,3\n"), u"CSV mit Komma, UTF-8"_s);
  EXPECT_EQ(form("a\tb,c\td\n1\t2\t3\n"), u"CSV mit Tabulator, UTF-8"_s);
  // A comma in every text, but the semicolon stands between all values.
  EXPECT_EQ(form("a;b;Huber, Freiburg\n1;2;Maier, Ulm\n"), u"CSV mit Semikolon, UTF-8"_s);
  // Separators within quotes do not count, and a text over several lines is one record.
  EXPECT_EQ(form("a,b\n\"x;y;z\nzweite;Zeile;\",2\n"), u"CSV mit Komma, UTF-8"_s);
}

TEST_F(Listen, TheCodePageIsFoundInTheBytes) {
  EXPECT_EQ(form("Bäckerei;Straße\n"), u"CSV mit Semikolon, UTF-8"_s);
  EXPECT_EQ(form("B\xE4"
                 "ckerei;Stra\xDF"
                 "e\n"),
      u"CSV mit Semikolon, Windows-1252"_s);
  EXPECT_EQ(gelesen("B\xE4"
                    "ckerei;\x80 5\n"),
      QStringList{u"1: Bäckerei|€ 5"_s});
  EXPECT_EQ(gelesen("\xEF\xBB\xBFk\xC3\xBC;b\n"), QStringList{u"1: kü|b"_s});
}

TEST_F(Listen, AFewBrokenBytesDoNotMakeAnotherCodePage) {
  EXPECT_EQ(gelesen("Bäder;Öfen\nk\xE4put;x\nüber;ß\n"),
      (QStringList{u"1: Bäder|Öfen"_s, u"2! die Zeile ist kein gültiges UTF-8"_s, u"3: über|ß"_s}));
}

TEST_F(Listen, AHalfSurrogateIsAWrongLine) {
  EXPECT_EQ(gelesen("a;b\nx\xED\xA0\x80;y\nc;d\n"),
      (QStringList{u"1: a|b"_s, u"2! die Zeile ist kein gültiges UTF-8"_s, u"3: c|d"_s}));
}

TEST_F(Listen, AFileInUtf16IsRefusedWithAdvice) {
  const QString datei = ordner_.schreibe(u"liste.csv"_s,
      QByteArray("\xFF\xFE"
                 "a\0;\0b\0",
          8));
  EXPECT_EQ(abbruch([&] { oeffne_Liste(datei); }),
      u"Die Datei „%1“ ist in UTF-16 geschrieben; speichern Sie sie als CSV in UTF-8."_s.arg(datei));
}

TEST_F(Listen, QuotesHoldSeparatorsQuotesAndLineBreaks) {
  EXPECT_EQ(gelesen("\"a;b\";\"sagt \"\"ja\"\"\";\"zwei\nZeilen\"\r\nc;d;e\n"),
      (QStringList{u"1: a;b|sagt \"ja\"|zwei\nZeilen"_s, u"3: c|d|e"_s}));
  EXPECT_EQ(gelesen("a;\"x\r\ny\"\r\n"), QStringList{u"1: a|x\r\ny"_s});
  // A quote within a value without quotes is a character.
  EXPECT_EQ(gelesen("Rohr 5\" lang;b\n"), QStringList{u"1: Rohr 5\" lang|b"_s});
  EXPECT_EQ(gelesen("a, \"b, c\" ,d\n"), QStringList{u"1: a|b, c|d"_s});
}

TEST_F(Listen, AnEmptyValueIsNullAndEmptyQuotesAreTheEmptyText) {
  EXPECT_EQ(gelesen("a;;\"\";  ;\"  \"\n"), QStringList{u"1: a|~||~|  "_s});
  EXPECT_EQ(gelesen("  a  ;\" b \"\n"), QStringList{u"1: a| b "_s});
}

TEST_F(Listen, EmptyLinesAreNoRecordsAndEveryLineEndCounts) {
  EXPECT_EQ(
      gelesen("a;b\n\n;;\n  \nc;d\re;f\r\ng;h"), (QStringList{u"1: a|b"_s, u"5: c|d"_s, u"6: e|f"_s, u"7: g|h"_s}));
  EXPECT_EQ(gelesen(""), QStringList());
}

TEST_F(Listen, BrokenQuotesCostTheirOwnLineOnly) {
  EXPECT_EQ(
      gelesen("a;b\n\"offen;c\nd;e\nf;g\n"), (QStringList{u"1: a|b"_s, u"2! "_s + Offen, u"3: d|e"_s, u"4: f|g"_s}));
  EXPECT_EQ(gelesen("\"zu\"viel;b\nd;e\n"), (QStringList{u"1! "_s + Offen, u"2: d|e"_s}));
  // The next line's quote closes it, and a letter behind shows that it was meant otherwise.
  EXPECT_EQ(gelesen("\"offen;c\n\"gut\";e\n"), (QStringList{u"1! "_s + Offen, u"2: gut|e"_s}));
}

TEST_F(Listen, ALineWithoutEndIsWrongAndTheNextOneIsRead) {
  const QByteArray lang(10 * 1024 * 1024, 'x');
  EXPECT_EQ(gelesen("a;b\n" + lang + "\nc;d\n"),
      (QStringList{u"1: a|b"_s, u"2! die Zeile ist länger als 64 KB"_s, u"3: c|d"_s}));
  EXPECT_EQ(gelesen("a;b\n\"" + lang + "\nc;d\n"),
      (QStringList{u"1: a|b"_s, u"2! die Zeile ist länger als 64 KB"_s, u"3: c|d"_s}));
  EXPECT_EQ(gelesen(lang), QStringList{u"1! die Zeile ist länger als 64 KB"_s});
}

TEST_F(Listen, ManyLinesWithinOpenQuotesAreReadOnceMore) {
  QByteArray inhalt = "a;b\n\"offen;c\n";
  for (int i = 0; i < 20'000; ++i) inhalt += "zeile;x\n";
  const QStringList alle = gelesen(inhalt);
  ASSERT_EQ(alle.size(), 20'002);
  EXPECT_EQ(alle.at(1), u"2! "_s + Offen);
  EXPECT_EQ(alle.last(), u"20002: zeile|x"_s);
}

TEST_F(Listen, AZeroCharacterIsAWrongLine) {
  EXPECT_EQ(gelesen(QByteArray("a;b\nc\0c;d\ne;f\n", 14)),
      (QStringList{u"1: a|b"_s, u"2! die Zeile enthält ein Nullzeichen"_s, u"3: e|f"_s}));
}

TEST_F(Listen, WhatIsNoFileEndsWithWords) {
  EXPECT_EQ(abbruch([&] { oeffne_Liste(ordner_.pfad(u"gibtsnicht.csv"_s)); }),
      u"Die Datei „%1“ gibt es nicht."_s.arg(ordner_.pfad(u"gibtsnicht.csv"_s)));
  EXPECT_EQ(abbruch([&] { oeffne_Liste(ordner_.pfad()); }), u"„%1“ ist keine Datei."_s.arg(ordner_.pfad()));
}

TEST_F(Listen, JsonIsAnArrayOrAnObjectALine) {
  const QStringList soll{u"1: BEL|AB|1001|?|?|?|~||?|?|?"_s};
  const QByteArray objekt =
      R"({"Typ1":"BEL","key1":"AB","KEY2":1001,"Ort":null,"projektnummer":"","fremd":[1,{"a":2}]})";
  EXPECT_EQ(gelesen(objekt + '\n', u"a.json"_s), (QStringList{u"1: BEL|AB|1001|?|?|?|~||?|?|?"_s}));
  EXPECT_EQ(gelesen('[' + objekt + ']', u"liste"_s), soll);
  EXPECT_EQ(gelesen("\xEF\xBB\xBF [\n " + objekt + ",\n{\"key1\":\n\"x\"}\n]\n", u"b.json"_s),
      (QStringList{u"2: BEL|AB|1001|?|?|?|~||?|?|?"_s, u"3: ?|x|?|?|?|?|?|?|?|?|?"_s}));
  EXPECT_EQ(gelesen("[]", u"c.json"_s), QStringList());
}

TEST_F(Listen, BrokenJsonCostsItsOwnObject) {
  const QByteArray gut = R"({"key1":"x"})";
  const QString Gut = u": ?|x|?|?|?|?|?|?|?|?|?"_s;
  EXPECT_EQ(gelesen("{\"key1\" \"x\"}\n" + gut, u"a.json"_s),
      (QStringList{u"1! das Objekt ist kein gültiges JSON"_s, u"2"_s + Gut}));
  EXPECT_EQ(gelesen("{\"key1\":\"offen}\n" + gut, u"a.json"_s), (QStringList{u"1! "_s + Offen, u"2"_s + Gut}));
  EXPECT_EQ(gelesen("{\"key1\":true}\n" + gut, u"a.json"_s),
      (QStringList{u"1! „key1“ ist weder ein Text noch eine Zahl, die genau wäre"_s, u"2"_s + Gut}));
  EXPECT_EQ(
      gelesen("{\"key1\":\"a\",\"KEY1\":\"b\"}", u"a.json"_s), QStringList{u"1! die Spalte Key1 steht zweimal da"_s});
  EXPECT_EQ(gelesen("{\"key1\":\"\xED\xA0\x80\"}\n" + gut, u"a.json"_s),
      (QStringList{u"1! das Objekt ist kein gültiges UTF-8"_s, u"2"_s + Gut}));
  EXPECT_EQ(
      gelesen("unsinn\n" + gut, u"a.json"_s), (QStringList{u"1! hier beginnt kein Objekt („{“)"_s, u"2"_s + Gut}));
  EXPECT_EQ(gelesen("[" + gut + "] noch", u"a.json"_s),
      (QStringList{u"1"_s + Gut, u"1! hinter dem Ende der Liste steht noch etwas"_s}));
}

TEST_F(Listen, JsonThatWasCutOffSaysSo) {
  const QByteArray gut = R"({"key1":"x"})";
  EXPECT_EQ(gelesen("[" + gut + ",\n", u"a.json"_s),
      (QStringList{u"1: ?|x|?|?|?|?|?|?|?|?|?"_s, u"2! die Liste hört auf, ehe sie zu Ende ist („]“ fehlt)"_s}));
  EXPECT_EQ(gelesen("{\"key1\":", u"a.json"_s), QStringList{u"1! das Objekt hört auf, ehe es zu Ende ist"_s});
}

TEST_F(Listen, AnObjectWithoutEndIsWrong) {
  const QByteArray lang = "{\"key1\":\"" + QByteArray(10 * 1024 * 1024, 'x') + "\"}\n";
  EXPECT_EQ(gelesen(lang + R"({"key1":"x"})", u"a.json"_s),
      (QStringList{u"1! das Objekt ist länger als 64 KB"_s, u"2: ?|x|?|?|?|?|?|?|?|?|?"_s}));
}

TEST_F(Listen, HeadingsNameTheColumns) {
  const auto liste = leser("Beleg-Nr.;BELEGART;fremd;Kunde;Kunden-Nr;Belegnummer\n1;AB;x;Huber;10;2\n");
  const Spaltenwahl wahl = spaltenwahl::vorschlag(*liste);
  EXPECT_TRUE(wahl.kopfzeile);
  EXPECT_EQ(wahl.spalten,
      (QList<std::optional<Vorgangsspalte>>{Vorgangsspalte::Key2, Vorgangsspalte::Key1, std::nullopt,
          Vorgangsspalte::Kundenname, Vorgangsspalte::Kundennummer, std::nullopt}));
  Listenzeile erste;
  ASSERT_TRUE(liste->naechste(erste));
  EXPECT_EQ(erste.nummer, 1);
}

TEST_F(Listen, WithoutHeadingsTheColumnsCountByPlace) {
  const auto liste = leser("BEL;AB;24-1\n");
  EXPECT_EQ(spaltenwahl::vorschlag(*liste), spaltenwahl::nach_Platz());
  EXPECT_EQ(spaltenwahl::pruefe(spaltenwahl::nach_Platz()), QString());
}

TEST_F(Listen, AChoiceThatNamesNoRecordIsRefused) {
  Spaltenwahl wahl;
  wahl.spalten = {Vorgangsspalte::Text};
  EXPECT_EQ(spaltenwahl::pruefe(wahl), u"Es fehlt die Spalte Key1, der erste Teil der Nummer"_s);
  wahl.spalten.append(Vorgangsspalte::Key1);
  EXPECT_EQ(spaltenwahl::pruefe(wahl), u"Es fehlt die Spalte Typ1, die Art der Vorgänge"_s);
  wahl.typ1 = u"ART"_s;
  EXPECT_EQ(spaltenwahl::pruefe(wahl), QString());
  wahl.spalten.append(Vorgangsspalte::Text);
  EXPECT_EQ(spaltenwahl::pruefe(wahl), u"Die Spalte Text ist mehrmals gewählt"_s);
}
