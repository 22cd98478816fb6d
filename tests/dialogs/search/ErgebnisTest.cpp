#include <QApplication>
#include <QImage>

#include "imaging/mod_GrafikKonvert.h"
#include "platform/gdiplus/Bildersitzung.h"
#include "platform/shell/Programme.h"
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
  EXPECT_EQ(zeilen(*feld),
      (QStringList{
          u"P:\\Bilder\\b.c.jpg|P:\\Bilder\\|b.c|jpg"_s, u"P:\\Bilder\\d.JPG|P:\\Bilder\\|d|JPG"_s, u"|||"_s}));
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
  EXPECT_EQ(
      zeilen(*feld), (QStringList{u"von vorher|||"_s, u"|||"_s, u"P:\\Bilder\\a.jpg|P:\\Bilder\\|a|jpg"_s, u"|||"_s}));
}

TEST_F(Ergebnis, WithNothingSelectedTheTableStaysAndTheResultIsTrue) {
  EXPECT_TRUE(rufe_auf([&](frm_BilderSuchen& f) { klicke(f.cmd_Uebernehmen); }, u"P:\\Bilder"_s));
  EXPECT_EQ(zeilen(*feld), QStringList{u"|||"_s});
}

TEST_F(Ergebnis, CancelEscapeAndTheFrameLeaveNoTable) {
  const QList<std::function<void(frm_BilderSuchen&)>> wege{[](frm_BilderSuchen& f) { klicke(f.cmd_Abbruch); },
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

TEST_F(Ergebnis, TheFormIsLoadedWithItsStartAndGetsTheTableAfterwards) {
  gdiplus::bildersitzung::naechster_Start(18);
  bool gesehen = false;
  meldungen.erwarte({u"GDI+ not inizialized."_s, u"GDI Error"_s}, oberflaeche::Antwort::OK, [&] {
    for (QWidget* fenster : QApplication::topLevelWidgets()) {
      const auto* f = dynamic_cast<frm_BilderSuchen*>(fenster);
      if (!f) continue;
      gesehen = true;
      EXPECT_TRUE(f->MultiSelect);
      EXPECT_EQ(f->pRootpath, u"P:\\Bilder"_s);
      EXPECT_EQ(f->pFindArray, nullptr);
    }
  });
  const auto meins = feld;
  EXPECT_TRUE(rufe_auf(
      [&](frm_BilderSuchen& f) {
    EXPECT_EQ(f.pFindArray, meins);
    EXPECT_TRUE(f.isModal());
    EXPECT_EQ(f.parentWidget(), nullptr);
    klicke(f.cmd_Uebernehmen);
      },
      u"P:\\Bilder"_s));
  EXPECT_TRUE(gesehen);
  EXPECT_EQ(feld, meins);
  for (QWidget* fenster : QApplication::topLevelWidgets()) EXPECT_EQ(dynamic_cast<frm_BilderSuchen*>(fenster), nullptr);
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

TEST_F(Ergebnis, ATextThatCannotBeReadLeavesTheFieldEmptyAndTheSearchOpen) {
  ordner.schreibe(u"p/Bilder/b.cjpg.txt"_s, "anderes");
  const QString geheim = ordner.schreibe(u"p/Bilder/ajpg.txt"_s, "geheim");
  ASSERT_TRUE(QFile::setPermissions(geheim, {}));
  zeige([&] {
    klicke_Zeile(form().lvwContent, 1);
    EXPECT_EQ(form().txt_Info.Text(), u"anderes"_s);
    klicke_Zeile(form().lvwContent, 0);
    EXPECT_EQ(form().txt_Info.Text(), QString());
    EXPECT_TRUE(form().isVisible());
    klicke_Zeile(form().lvwContent, 1);
    EXPECT_EQ(form().txt_Info.Text(), u"anderes"_s);
  });
  ASSERT_TRUE(QFile::setPermissions(geheim, QFile::ReadOwner | QFile::WriteOwner));
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

// ── Turning and editing ─────────────────────────────────────────────────────────────────────────────────────────────

namespace {

class Drehen : public Suchtest {
 protected:
  Drehen() {
    lege_Bild(u"Bilder/a.jpg"_s, QSize(64, 32));
    lege_Bild(u"Bilder/b.jpg"_s, QSize(64, 32));
  }
  QSize groesse(const QString& name) { return QImage(ordner.pfad(u"p/Bilder/"_s + name)).size(); }
  void waehle_beide() {
    for (const int zeile : {0, 1}) klicke_Zeile(form().lvwContent, zeile, Qt::ControlModifier);
  }
  void erwarte_Misslingen() { meldungen.erwarte({u"Das rotieren der JPG ist fehlgeschlagen."_s, u"Error"_s}); }
};

}  // namespace

TEST_F(Drehen, ChosenPicturesAreTurnedAndTheFolderIsReadAgain) {
  zeige([&] {
    klicke_Zeile(form().lvwContent, 1);
    klicke(form().SSC_Drehen);
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(64, 32));
    EXPECT_EQ(groesse(u"b.jpg"_s), QSize(32, 64));
    EXPECT_EQ(eintraege(), (QStringList{u"a.jpg"_s, u"b.jpg"_s}));
    EXPECT_EQ(form().lvwContent.SelectedItem(), 0) << "the selection is lost";
    EXPECT_EQ(form().SSC_Drehen.toolTip(), u"Bild 90° nach rechts  drehen"_s);
    waehle_beide();
    klicke(form().SSC_Drehen);
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(32, 64));
    EXPECT_EQ(groesse(u"b.jpg"_s), QSize(64, 32));
  });
}

TEST_F(Drehen, WithNothingChosenNothingHappens) {
  zeige([&] {
    lege_Bild(u"Bilder/neu.jpg"_s);
    klicke(form().SSC_Drehen);
    EXPECT_EQ(eintraege().size(), 2) << "the folder is not read";
    EXPECT_TRUE(mod_GrafikKonvert::m_GdiAktiv);
  });
}

TEST_F(Drehen, LaterPicturesGoThroughThePlainLoader) {
  ordner.schreibe(u"p/Bilder/c.tif"_s, bild(QSize(40, 30), Qt::red, "TIFF"));
  zeige([&] {
    EXPECT_NE(bild_von(3), ersatz());
    klicke_Zeile(form().lvwContent, 0);
    klicke(form().SSC_Drehen);
    EXPECT_FALSE(mod_GrafikKonvert::m_GdiAktiv);
    EXPECT_NE(bild_von(3), ersatz()) << "this read still had the session";
    form().Show_Folder_Content(u"P:\\Bilder"_s, u"*.*"_s);
    EXPECT_EQ(bild_von(3), ersatz());
  });
}

TEST_F(Drehen, APictureThatIsNoJpegStaysAndTheOthersAreTurned) {
  const QByteArray tif = bild(QSize(40, 30), Qt::red, "TIFF");
  ordner.schreibe(u"p/Bilder/a.jpg"_s, tif);
  erwarte_Misslingen();
  zeige([&] {
    waehle_beide();
    klicke(form().SSC_Drehen);
    EXPECT_EQ(ordner.lies(u"p/Bilder/a.jpg"_s), tif);
    EXPECT_EQ(groesse(u"b.jpg"_s), QSize(32, 64));
  });
}

TEST_F(Drehen, WithoutASessionNothingIsTurnedButTheFolderIsReadAgain) {
  zeige([&] {
    lege_Bild(u"Bilder/neu.jpg"_s);
    klicke_Zeile(form().lvwContent, 0);
    gdiplus::bildersitzung::naechster_Start(18);
    meldungen.erwarte({u"GDI+ not inizialized."_s, u"GDI Error"_s});
    klicke(form().SSC_Drehen);
    EXPECT_EQ(groesse(u"a.jpg"_s), QSize(64, 32));
    EXPECT_EQ(eintraege().size(), 3);
  });
}

TEST_F(Drehen, TurningEndsTheDialogsSessionsAndNoOther) {
  mod_GrafikKonvert::Fkt_GdiStartup(1);
  for (const std::int32_t start : {0, 18}) {
    zeige([&] {
      if (start != 0) meldungen.erwarte({u"GDI+ not inizialized."_s, u"GDI Error"_s});
      for (int i = 0; i < 2; ++i) {
        klicke_Zeile(form().lvwContent, 0);
        klicke(form().SSC_Drehen);
        gdiplus::bildersitzung::naechster_Start(i == 0 ? start : 0);
      }
      EXPECT_TRUE(gdiplus::bildersitzung::laeuft());
    });
    entlade();
    mod_BilderSuchen::pLetzterOrdner.clear();
    EXPECT_TRUE(gdiplus::bildersitzung::laeuft());
  }
  mod_GrafikKonvert::Fkt_GdiShutdown();
  EXPECT_FALSE(gdiplus::bildersitzung::laeuft());
}

TEST_F(Drehen, TheEditorOpensTheChosenFileAndTheListIsNotReadAgain) {
  class Wahl final : public shell::Programmwahl {
   public:
    QStringList waehle(const QString& datei, const QList<shell::Programm>&, QString&) override {
      gefragt.append(datei);
      return {};
    }
    QStringList gefragt;
  };
  const auto wahl = std::make_shared<Wahl>();
  const auto vorher = shell::setze(wahl);
  zeige([&] {
    klicke_Zeile(form().lvwContent, 1);
    lege_Bild(u"Bilder/neu.jpg"_s);
    klicke(form().SSC_Bildbearbeitung);
    EXPECT_EQ(wahl->gefragt, QStringList{ordner.pfad(u"p/Bilder/b.jpg"_s)});
    EXPECT_EQ(eintraege().size(), 2);
  });
  shell::setze(vorher);
}

TEST_F(Drehen, TheEditorWithoutAChosenFileAsksForOne) {
  meldungen.erwarte({u"Bitte wählen Sie zuerst ein Bild aus!"_s, {}});
  zeige([&] { klicke(form().SSC_Bildbearbeitung); });
}
