#include <QList>
#include <vector>

#include "host/betrieb/vorgaenge/Vorgangspruefung.h"
#include "host/betrieb/vorgaenge/Zeitangabe.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;
using namespace vorgangspruefung;

namespace {

struct Fall {
  QString typ1;
  std::array<QString, 3> keys;
  QString grund;
};

}  // namespace

TEST(Vorgangspruefung, EachKindWantsItsParts) {
  const std::vector<Fall> faelle{
      {u"BEL"_s, {u"AB"_s, u"24-1"_s, u""_s}, u""_s},
      {u"bel"_s, {u"AB"_s, u"24-1"_s, u""_s}, u""_s},
      {u"BEL"_s, {u""_s, u"24-1"_s, u""_s}, u"Belegart fehlt"_s},
      {u"BEL"_s, {u"AB"_s, u"  "_s, u""_s}, u"Belegnummer fehlt"_s},
      {u"MON"_s, {u"AB"_s, u"1"_s, u""_s}, u"Montagenummer fehlt"_s},
      {u"ART"_s, {u""_s, u""_s, u""_s}, u"Artikelnummer fehlt"_s},
      {u"ART"_s, {u"WP"_s, u""_s, u""_s}, u""_s},
      {u"ANL"_s, {u"1"_s, u""_s, u"1"_s}, u"Anlage fehlt"_s},
      {u"ANL"_s, {u"1"_s, u"Solar"_s, u""_s}, u"Nummer der Anlage fehlt"_s},
      {u"SONST"_s, {u"1"_s, u""_s, u""_s}, u""_s},
      {u"SONST"_s, {u""_s, u"1"_s, u""_s}, u"Nummer fehlt"_s},
      {u""_s, {u"1"_s, u""_s, u""_s}, u"Die Art fehlt"_s},
  };
  for (const Fall& fall : faelle)
    EXPECT_EQ(pruefe_Schluessel(fall.typ1, fall.keys), fall.grund) << fall.typ1.toStdString();
}

TEST(Vorgangspruefung, APartIsFitForStatementsAndFolders) {
  const auto pruefe = [](const QString& key2) { return pruefe_Schluessel(u"BEL"_s, {u"AB"_s, key2, {}}); };
  EXPECT_EQ(
      pruefe(u"24'1"_s), u"Belegnummer enthält ein Hochkomma; damit ist keine Anweisung an die Datenbank möglich"_s);
  for (const QChar zeichen : u"<>\"|?*:/\\"_s)
    EXPECT_EQ(
        pruefe(u"24"_s + zeichen), u"Belegnummer enthält „%1“, das kein Ordner im Namen haben kann"_s.arg(zeichen));
  EXPECT_EQ(pruefe(u"-"_s), u"Belegnummer ist „-“; ein Teil, den es nicht gibt, bleibt leer"_s);
  EXPECT_EQ(pruefe(u"24 "_s), u"Belegnummer beginnt oder endet mit einem Leerzeichen"_s);
  EXPECT_EQ(pruefe(u" 24"_s), u"Belegnummer beginnt oder endet mit einem Leerzeichen"_s);
  EXPECT_EQ(pruefe(u"2\t4"_s), u"Belegnummer enthält ein Steuerzeichen"_s);
  EXPECT_EQ(pruefe(u"24 1-2.ä"_s), QString());
  EXPECT_EQ(
      pruefe_Schluessel(u"A/B"_s, {u"1"_s, {}, {}}), u"Die Art enthält „/“, das kein Ordner im Namen haben kann"_s);
}

TEST(Vorgangspruefung, LengthsCountSixteenBitCharacters) {
  const QString haus = u"\U0001F3E0"_s;
  EXPECT_EQ(pruefe_Schluessel(u"ART"_s, {haus.repeated(25), {}, {}}), QString());
  EXPECT_EQ(
      pruefe_Schluessel(u"ART"_s, {haus.repeated(25) + u'x', {}, {}}), u"Artikelnummer ist länger als 50 Zeichen"_s);
  EXPECT_EQ(pruefe_Text(u"Text"_s, QString(250, u'x'), 250), QString());
  EXPECT_EQ(pruefe_Text(u"Text"_s, QString(251, u'x'), 250), u"Text ist länger als 250 Zeichen"_s);
}

TEST(Vorgangspruefung, ATextMayHaveLinesButNoOtherControlCharacter) {
  EXPECT_EQ(pruefe_Text(u"Text"_s, u"a\r\n\tb"_s, 250, Umbruch::Erlaubt), QString());
  EXPECT_EQ(pruefe_Text(u"Text"_s, u"a\nb"_s, 250), u"Text enthält ein Steuerzeichen"_s);
  EXPECT_EQ(pruefe_Text(u"Text"_s, u"a\x1B"_s, 250, Umbruch::Erlaubt), u"Text enthält ein Steuerzeichen"_s);
  EXPECT_EQ(pruefe_Text(u"Text"_s, QString(QChar(u'\0')), 250, Umbruch::Erlaubt), u"Text enthält ein Nullzeichen"_s);
  for (const char16_t halbes : {u'\xD83C', u'\xDFE0'})
    EXPECT_EQ(pruefe_Text(u"Text"_s, u"a"_s + QChar(halbes) + u'b', 250),
        u"Text enthält ein halbes Zeichen (ein Surrogat ohne das andere)"_s);
}

TEST(Vorgangspruefung, AFolderStaysBelowThePictureRoot) {
  for (const QString& gut : {u""_s, u"Belege\\24-1"_s, u"Projekte\\Müller\\2026"_s})
    EXPECT_EQ(pruefe_Ordner(gut), QString());
  for (const QString& schlecht : {u"..\\x"_s, u"C:\\x"_s, u"\\\\server\\x"_s, u"a/b"_s, u"a\\\\b"_s})
    EXPECT_EQ(pruefe_Ordner(schlecht),
        u"Ordner ist „%1“; er muss unter der Bildablage bleiben und Namen haben, die jede Freigabe nimmt"_s.arg(
            schlecht));
}

TEST(Zeitangabe, SpellingsOfADateBecomeOne) {
  const QList<std::pair<QString, QString>> faelle{{u"2026-11-22 09:15:00"_s, u"2026-11-22 09:15:00"_s},
      {u"2026-11-22T09:15:30"_s, u"2026-11-22 09:15:30"_s}, {u"2026-11-22 09:15"_s, u"2026-11-22 09:15:00"_s},
      {u"2026-11-22 09:15:30.127"_s, u"2026-11-22 09:15:30"_s}, {u"2026-11-22"_s, u"2026-11-22 00:00:00"_s},
      {u"22.11.2026 09:15"_s, u"2026-11-22 09:15:00"_s}, {u"22.11.2026, 9:15 Uhr"_s, u"2026-11-22 09:15:00"_s},
      {u"2.1.26"_s, u"2026-01-02 00:00:00"_s}, {u"20261122"_s, u"2026-11-22 00:00:00"_s},
      {u"20261122T091530"_s, u"2026-11-22 09:15:30"_s}, {u"2026-07-01T10:00:00Z"_s, u"2026-07-01 12:00:00"_s},
      {u"2026-07-01T10:00:00+02:00"_s, u"2026-07-01 10:00:00"_s}, {u" 2026-11-22 "_s, u"2026-11-22 00:00:00"_s}};
  for (const auto& [angabe, soll] : faelle)
    EXPECT_EQ(als_Stand(angabe).value_or(QString()), soll) << angabe.toStdString();
}

TEST(Zeitangabe, WhatIsNoDateIsNone) {
  for (const QString& angabe :
      {u""_s, u"gestern"_s, u"31.02.2026"_s, u"11/22/2026"_s, u"2026-11-22 25:00:00"_s, u"2026-13-01"_s, u"4711"_s})
    EXPECT_FALSE(als_Stand(angabe)) << angabe.toStdString();
}
