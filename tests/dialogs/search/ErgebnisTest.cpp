#include <QFile>

#include "imaging/mod_GrafikKonvert.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::klicke;
using eingaben::klicke_Zeile;
using Dimension = XArrayDBObject::Dimension;

namespace {

class Ergebnis : public Suchtest {
 protected:
  Ergebnis() {
    for (const auto& name : {u"a.jpg"_s, u"b.c.jpg"_s, u"d.JPG"_s}) lege_Bild(u"Bilder/"_s + name);
  }
  /// Rows of the result, the cells joined by "|".
  static QStringList zeilen(const XArrayDBObject& feld) {
    QStringList alle;
    for (std::int32_t z = feld.LowerBound(Dimension::Zeilen); z <= feld.UpperBound(Dimension::Zeilen); ++z) {
      QStringList zellen;
      for (std::int32_t s = 0; s <= 3; ++s) zellen.append(CStr(feld.Value(z, s)));
      alle.append(zellen.join(u'|'));
    }
    return alle;
  }
  void waehle(frm_BilderSuchen& f, const QList<int>& zeilen) {
    for (const int zeile : zeilen) klicke_Zeile(f.lvwContent, zeile, Qt::ControlModifier);
  }
  QString text(const QString& name) { return QString::fromLatin1(ordner.lies(u"p/Bilder/"_s + name)); }
};

}  // namespace

TEST_F(Ergebnis, EachChosenFileIsARowAndTheLastRowIsEmpty) {
  EXPECT_TRUE(rufe_auf(
      [&](frm_BilderSuchen& f) {
        waehle(f, {1, 2});
        klicke(f.cmd_Uebernehmen);
        EXPECT_FALSE(f.isVisible());
      },
      u"P:\\Bilder"_s));
  ASSERT_NE(feld, nullptr);
  EXPECT_EQ(zeilen(*feld), (QStringList{u"P:\\Bilder\\b.c.jpg|P:\\Bilder\\|b.c|jpg"_s,
                                        u"P:\\Bilder\\d.JPG|P:\\Bilder\\|d|JPG"_s, u"|||"_s}));
}

TEST_F(Ergebnis, RowsAreFilledFromTheLastOneOn) {
  feld->ReDim(0, 2, 0, 4);
  feld->Value(0, 0, u"von vorher"_s);
  rufe_auf(
      [&](frm_BilderSuchen& f) {
        waehle(f, {0});
        klicke(f.cmd_Uebernehmen);
      },
      u"P:\\Bilder"_s);
  EXPECT_EQ(zeilen(*feld),
            (QStringList{u"von vorher|||"_s, u"|||"_s, u"P:\\Bilder\\a.jpg|P:\\Bilder\\|a|jpg"_s, u"|||"_s}));
}

TEST_F(Ergebnis, WithNothingSelectedTheTableStaysAndTheResultIsTrue) {
  EXPECT_TRUE(rufe_auf([&](frm_BilderSuchen& f) { klicke(f.cmd_Uebernehmen); }, u"P:\\Bilder"_s));
  EXPECT_EQ(zeilen(*feld), QStringList{u"|||"_s});
}

TEST_F(Ergebnis, CancelEscapeAndTheFrameLeaveNoTable) {
  const QList<std::function<void(frm_BilderSuchen&)>> wege{
      [](frm_BilderSuchen& f) { klicke(f.cmd_Abbruch); },
      [](frm_BilderSuchen& f) { eingaben::taste(f, Qt::Key_Escape); },
      [](frm_BilderSuchen& f) { eingaben::schliesse_Rahmen(f); }};
  for (const auto& weg : wege) {
    feld = std::make_shared<XArrayDBObject>();
    feld->ReDim(0, 0, 0, 4);
    const auto meins = feld;
    EXPECT_FALSE(rufe_auf(
        [&](frm_BilderSuchen& f) {
          waehle(f, {0});
          weg(f);
          EXPECT_FALSE(f.isVisible());
        },
        u"P:\\Bilder"_s));
    EXPECT_EQ(feld, nullptr);
    EXPECT_EQ(zeilen(*meins), QStringList{u"|||"_s}) << "the caller's table is untouched";
  }
}

TEST_F(Ergebnis, WithoutATableTheResultIsFalse) {
  feld.reset();
  EXPECT_FALSE(rufe_auf(
      [&](frm_BilderSuchen& f) {
        waehle(f, {0});
        klicke(f.cmd_Uebernehmen);
      },
      u"P:\\Bilder"_s));
  EXPECT_EQ(feld, nullptr);
}

TEST_F(Ergebnis, SeveralFilesCanBeChosenUnlessTheCallerWantsOne) {
  for (const auto mehrere : {std::optional<bool>(), std::optional(true), std::optional(false)}) {
    mod_BilderSuchen::pLetzterOrdner.clear();
    feld->ReDim(0, 0, 0, 4);
    rufe_auf(
        [&](frm_BilderSuchen& f) {
          waehle(f, {0, 1});
          klicke(f.cmd_Uebernehmen);
        },
        u"P:\\Bilder"_s, mehrere);
    EXPECT_EQ(zeilen(*feld).size(), mehrere.value_or(true) ? 3 : 2);
  }
}

TEST_F(Ergebnis, ATableOfTooFewColumnsIsReportedAndKept) {
  feld->ReDim(0, 0, 0, 2);
  EXPECT_FALSE(rufe_auf(
      [&](frm_BilderSuchen& f) {
        waehle(f, {0});
        klicke(f.cmd_Uebernehmen);
      },
      u"P:\\Bilder"_s));
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Nummer, 9);
  EXPECT_NE(feld, nullptr);
  // The form was not unloaded: the session of its loading is still there.
  mod_GrafikKonvert::Fkt_GdiShutdown();
}

TEST_F(Ergebnis, AChosenFileShowsItsText) {
  ordner.schreibe(u"p/Bilder/ajpg.txt"_s,
                  "  Giebel \xfc"
                  "ber Eck ");
  ordner.schreibe(u"p/Bilder/b.cjpg.txt"_s, "anderes");
  zeige([&] {
    klicke_Zeile(form().lvwContent, 0);
    EXPECT_EQ(form().txt_Info.Text(), u"Giebel über Eck"_s);
    klicke_Zeile(form().lvwContent, 1);
    EXPECT_EQ(form().txt_Info.Text(), u"anderes"_s);
    klicke_Zeile(form().lvwContent, 2);
    EXPECT_EQ(form().txt_Info.Text(), QString());
  });
}

TEST_F(Ergebnis, TheKeysShowTheTextsToo) {
  ordner.schreibe(u"p/Bilder/b.cjpg.txt"_s, "zweites");
  zeige([&] {
    klicke_Zeile(form().lvwContent, 0);
    eingaben::taste(form(), Qt::Key_Right);
    EXPECT_EQ(form().txt_Info.Text(), u"zweites"_s);
  });
}

TEST_F(Ergebnis, ATextIsSavedForAllChosenFilesButTheLastItem) {
  zeige([&] {
    waehle(form(), {0, 1, 2});
    eingaben::tippe(form().txt_Info, u" Giebel"_s);
    klicke(form().cmd_TextSpeichern);
    EXPECT_EQ(text(u"ajpg.txt"_s), u" Giebel"_s) << "as it stands";
    EXPECT_EQ(text(u"b.cjpg.txt"_s), u" Giebel"_s);
    EXPECT_FALSE(ordner.vorhanden(u"p/Bilder/dJPG.txt"_s));
  });
}

TEST_F(Ergebnis, WithASingleFileNothingIsSaved) {
  rootpath = u"P:\\Eins"_s;
  lege_Bild(u"Eins/e.jpg"_s);
  zeige([&] {
    klicke_Zeile(form().lvwContent, 0);
    eingaben::tippe(form().txt_Info, u"Text"_s);
    klicke(form().cmd_TextSpeichern);
    EXPECT_FALSE(ordner.vorhanden(u"p/Eins/ejpg.txt"_s));
  });
}

TEST_F(Ergebnis, ABlankTextIsNotSaved) {
  ordner.schreibe(u"p/Bilder/ajpg.txt"_s, "bleibt");
  zeige([&] {
    klicke_Zeile(form().lvwContent, 0);
    form().txt_Info.Text(u"   "_s);
    klicke(form().cmd_TextSpeichern);
    EXPECT_EQ(text(u"ajpg.txt"_s), u"bleibt"_s);
  });
}
