#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QDir>
#include <QFile>
#include <chrono>
#include <filesystem>

#include "platform/files/Pfadkarte.h"
#include "tests/support/Bildwurzel.h"
#include "tests/support/Fehler.h"

using namespace Qt::Literals::StringLiterals;

namespace {
QString ort(const QString& pfad) {
  return QFile::decodeName(Pfadkarte::aktuell().maschinenpfad(pfad));
}
}  // namespace

TEST(Pfadkarte, ADriveStandsForItsFolderInBothCasesAndBothSeparators) {
  const Bildwurzel wurzel;
  EXPECT_EQ(ort(u"P:\\a\\b.jpg"_s), wurzel.pfad(u"a/b.jpg"_s));
  EXPECT_EQ(ort(u"p:/a//b.jpg"_s), wurzel.pfad(u"a/b.jpg"_s));
  EXPECT_EQ(ort(u"P:"_s), wurzel.pfad());
  EXPECT_EQ(ort(u"P:\\"_s), wurzel.pfad());
}

TEST(Pfadkarte, AShareStandsForItsFolder) {
  const Testordner ordner;
  Pfadkarte::aktuell().setze(u"\\\\server\\bilder"_s, ordner.pfad());
  EXPECT_EQ(ort(u"\\\\SERVER\\Bilder\\x.jpg"_s), ordner.pfad(u"x.jpg"_s));
  Pfadkarte::aktuell().entferne(u"\\\\Server\\bilder"_s);
  EXPECT_EQ(Fehlernummer_von([] { ort(u"\\\\server\\bilder\\x.jpg"_s); }), 76);
}

TEST(Pfadkarte, DriveCIsTheRootFileSystemUnlessMapped) {
  EXPECT_EQ(ort(u"C:\\etc\\hosts"_s), u"/etc/hosts"_s);
  EXPECT_EQ(ort(u"C:"_s), QDir::currentPath());
  EXPECT_EQ(ort(u"\\etc"_s), u"/etc"_s);
  EXPECT_EQ(ort(u"x.y.z"_s), QDir::currentPath() + u"/x.y.z"_s);
}

TEST(Pfadkarte, WhatNobodyMappedIsAMissingPath) {
  EXPECT_EQ(Fehlernummer_von([] { ort(u"Q:\\a"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([] { ort(u"\\\\server"_s); }), 76);
  EXPECT_EQ(Fehlernummer_von([] { ort(QString()); }), 76);
  EXPECT_EQ(Fehlernummer_von([] { ort(u"P:\\a"_s + QChar(u'\0')); }), 52);
}

TEST(Pfadkarte, OnlyDrivesAndSharesCanBeMapped) {
  for (const QString& name : {u"P"_s, u"PQ:"_s, u"1:"_s, u"\\\\server"_s, u"\\\\s\\f\\x"_s, QString()})
    EXPECT_EQ(Fehlernummer_von([&] { Pfadkarte::aktuell().setze(name, u"/"_s); }), 5) << name.toStdString();
}

TEST(Pfadkarte, AMissingNameIsLookedUpWithoutRegardToCaseOnEveryLevel) {
  const Bildwurzel wurzel;
  wurzel.schreibe(u"Artikel/Größe/Foto.JPG"_s, "x");
  EXPECT_EQ(ort(u"P:\\ARTIKEL\\GRÖSSE\\foto.jpg"_s), wurzel.pfad(u"Artikel/GRÖSSE/foto.jpg"_s));
  EXPECT_EQ(ort(u"P:\\ARTIKEL\\grÖße\\foto.jpg"_s), wurzel.pfad(u"Artikel/Größe/Foto.JPG"_s));
}

TEST(Pfadkarte, TheExactNameWinsOverAnotherCase) {
  const Bildwurzel wurzel;
  wurzel.schreibe(u"a.jpg"_s, "1");
  wurzel.schreibe(u"A.jpg"_s, "2");
  EXPECT_EQ(ort(u"P:\\a.jpg"_s), wurzel.pfad(u"a.jpg"_s));
  EXPECT_EQ(ort(u"P:\\A.jpg"_s), wurzel.pfad(u"A.jpg"_s));
}

TEST(Pfadkarte, TrailingDotsAndBlanksGoWhereTheExactNameIsMissing) {
  const Bildwurzel wurzel;
  wurzel.schreibe(u"Allg/x.jpg"_s, "1");
  wurzel.schreibe(u"Punkt./x.jpg"_s, "1");
  EXPECT_EQ(ort(u"P:\\Allg. \\x.jpg"_s), wurzel.pfad(u"Allg/x.jpg"_s));
  EXPECT_EQ(ort(u"P:\\allg.\\x.jpg."_s), wurzel.pfad(u"Allg/x.jpg"_s));
  EXPECT_EQ(ort(u"P:\\Punkt.\\x.jpg"_s), wurzel.pfad(u"Punkt./x.jpg"_s));
  EXPECT_EQ(ort(u"P:\\neu. ."_s), wurzel.pfad(u"neu"_s));
  EXPECT_EQ(ort(u"P:\\neu\\..."_s), wurzel.pfad(u"neu/..."_s));
}

TEST(Pfadkarte, DotsNeverLeadAboveTheDrive) {
  const Bildwurzel wurzel;
  EXPECT_EQ(ort(u"P:\\..\\..\\a\\.\\b\\..\\c"_s), wurzel.pfad(u"a/c"_s));
}

TEST(Pfadkarte, ANewFileIsFoundAtOnceInAnotherCaseAlthoughTheFolderWasListedBefore) {
  const Bildwurzel wurzel;
  EXPECT_EQ(ort(u"P:\\NEU.JPG"_s), wurzel.pfad(u"NEU.JPG"_s));
  wurzel.schreibe(u"neu.jpg"_s, "1");
  EXPECT_EQ(ort(u"P:\\NEU.JPG"_s), wurzel.pfad(u"neu.jpg"_s));
}

TEST(Pfadkarte, ManyFoldersInAnotherCaseAreToldApartAndSeenChanging) {
  const Bildwurzel wurzel;
  const auto schreibe = [&](int i, const QString& name) { wurzel.schreibe(u"Ordner%1/"_s.arg(i) + name, "x"); };
  const auto alt = std::chrono::file_clock::now() - std::chrono::hours(1);
  const auto mache_alt = [&](const QString& pfad) { std::filesystem::last_write_time(pfad.toStdString(), alt); };
  for (int i = 0; i < 12; ++i) {
    schreibe(i, u"Foto%1.jpg"_s.arg(i));
    mache_alt(wurzel.pfad(u"Ordner%1"_s.arg(i)));
  }
  mache_alt(wurzel.pfad());
  const auto gefragt = [](int i, const QString& name) { return ort(u"P:\\ORDNER%1\\"_s.arg(i) + name); };
  for (int runde = 0; runde < 3; ++runde)
    for (int i = 0; i < 12; ++i)
      EXPECT_EQ(gefragt(i, u"FOTO%1.JPG"_s.arg(i)), wurzel.pfad(u"Ordner%1/Foto%1.jpg"_s.arg(i)));
  EXPECT_EQ(gefragt(11, u"FOTO3.JPG"_s), wurzel.pfad(u"Ordner11/FOTO3.JPG"_s));
  schreibe(11, u"Foto3.jpg"_s);
  EXPECT_EQ(gefragt(11, u"FOTO3.JPG"_s), wurzel.pfad(u"Ordner11/Foto3.jpg"_s));
}

TEST(Pfadkarte, TheExactPathNeedsNoDiskAndIsTheResolvedOneWhereItIsThere) {
  const Bildwurzel wurzel;
  const auto genau = [](const QString& pfad) { return QFile::decodeName(Pfadkarte::aktuell().genauer_Pfad(pfad)); };
  wurzel.schreibe(u"Größe/Foto.JPG"_s, "x");
  EXPECT_EQ(genau(u"p:/Größe//.\\a\\..\\Foto.JPG"_s), wurzel.pfad(u"Größe/Foto.JPG"_s));
  EXPECT_EQ(ort(u"P:\\Größe\\Foto.JPG"_s), wurzel.pfad(u"Größe/Foto.JPG"_s));
  EXPECT_EQ(genau(u"P:\\größe\\foto.jpg."_s), wurzel.pfad(u"größe/foto.jpg."_s));
  EXPECT_EQ(genau(u"P:"_s), wurzel.pfad());
  EXPECT_EQ(genau(u"C:\\etc\\hosts"_s), u"/etc/hosts"_s);
  EXPECT_EQ(genau(u"\\"_s), u"/"_s);
  EXPECT_EQ(Fehlernummer_von([&] { genau(u"Q:\\a"_s); }), 76);
}

TEST(Pfadkarte, TheWayBackTakesTheLongestMappedFolder) {
  const Bildwurzel wurzel;
  Pfadkarte::aktuell().setze(u"Q:"_s, wurzel.pfad(u"tief"_s));
  EXPECT_EQ(Pfadkarte::aktuell().tabellenpfad(wurzel.pfad(u"a/b.jpg"_s)), u"P:\\a\\b.jpg"_s);
  EXPECT_EQ(Pfadkarte::aktuell().tabellenpfad(wurzel.pfad(u"tief/b.jpg"_s)), u"Q:\\b.jpg"_s);
  EXPECT_EQ(Pfadkarte::aktuell().tabellenpfad(wurzel.pfad(u"tiefer"_s)), u"P:\\tiefer"_s);
  EXPECT_EQ(Pfadkarte::aktuell().tabellenpfad(u"/etc/hosts"_s), u"C:\\etc\\hosts"_s);
  EXPECT_EQ(Pfadkarte::aktuell().tabellenpfad(wurzel.pfad()), u"P:\\"_s);
  Pfadkarte::aktuell().entferne(u"Q:"_s);
}
