// A large folder that is interrupted or left at any moment of its read.
#include "platform/host/Oberflaeche.h"
#include "store/mod_BilderSuchen.h"
#include "tests/dialogs/search/Suchtest.h"

using namespace Qt::Literals::StringLiterals;
using eingaben::klicke;
using oberflaeche::mauszeiger;
using oberflaeche::Zeigerform;

namespace {

constexpr int Bilder = 2000;
/// Times at which a read lets events in: before the first file, and before each.
const QList<int> Momente{1, 2, 3, Bilder / 2, Bilder, Bilder + 1};

class Unterbrechen : public Suchtest {
 protected:
  Unterbrechen() {
    lege_Bilder(Bilder);
    lege_Bilder(3, u"Anders"_s);
    ordner.schreibe(u"c/Heim/h.jpg"_s, bild());
    ordner.schreibe(u"p/Bilder/x.dat"_s, "x");
  }
  void ist_in_Ruhe() {
    EXPECT_FALSE(form().SSP_Fortschritt.Visible());
    EXPECT_FALSE(form().SSP_Liste.Visible());
    EXPECT_TRUE(form().lvwContent.Visible());
    EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
    EXPECT_EQ(form().SSP_Anzahl.Caption(), QString::number(form().lvwContent.Count()) + u" Objekt(e)"_s);
    for (int i = 1; i <= form().lvwContent.Count(); ++i)
      ASSERT_EQ(form().ilsImages.Key(form().lvwContent.Icon(i)).endsWith(u"jpg"_s),
          form().lvwContent.Text(i).endsWith(u"jpg"_s))
          << i;
  }
  void lies() { form().Show_Folder_Content(form().Dir1.Path(), u"*.*"_s); }
  /// Reads the folder; `tu` runs once, at that time of letting events in.
  void lies_und(int moment, const std::function<void()>& tu) {
    bool getan = false;
    beim_Pumpen([&](int mal) {
      if (mal != moment || getan) return;
      getan = true;
      tu();
    });
    lies();
    beim_Pumpen({});
    EXPECT_TRUE(getan) << moment;
  }
  /// Does it at each of the moments of a read; `danach` looks at what became of it.
  void zu_jedem_Moment(const std::function<void()>& tu, const std::function<void()>& danach) {
    zeige([&] {
      for (const int moment : Momente) {
        SCOPED_TRACE(moment);
        lies_und(moment, tu);
        ist_in_Ruhe();
        danach();
      }
    });
  }
  /// The same for what closes the dialog: each moment on a form of its own.
  void verlasse_zu_jedem_Moment(const std::function<void(frm_BilderSuchen&)>& weg) {
    for (const int moment : Momente) {
      SCOPED_TRACE(moment);
      mod_BilderSuchen::pLetzterOrdner.clear();
      rootpath = u"P:\\Anders"_s;
      zeige([&] {
        bool getan = false;
        beim_Pumpen([&](int mal) {
          if (mal != moment) return;
          getan = true;
          weg(form());
        });
        form().Show_Folder_Content(u"P:\\Bilder"_s, u"*.*"_s);
        EXPECT_TRUE(getan);
        EXPECT_FALSE(form().isVisible());
        EXPECT_EQ(mauszeiger().form(), Zeigerform::Standard);
        EXPECT_FALSE(form().SSP_Fortschritt.Visible());
        EXPECT_LT(form().lvwContent.Count(), moment);
      });
      beim_Pumpen({});
      entlade();
    }
  }
};

}  // namespace

TEST_F(Unterbrechen, TheButtonStopsAtEveryMoment) {
  zu_jedem_Moment([&] { klicke(form().cmd_EinlesenAbrrechen); },
      [&] {
    EXPECT_LT(form().lvwContent.Count(), Bilder);
    EXPECT_FALSE(form().pEinlesenAbbrechen);
  });
}

TEST_F(Unterbrechen, ASecondReadOfTheSameFolderListsEachFileOnce) {
  zu_jedem_Moment([&] { lies(); },
      [&] {
    EXPECT_EQ(form().lvwContent.Count(), Bilder);
    EXPECT_EQ(form().ilsImages.Count(), Bilder);
  });
}

TEST_F(Unterbrechen, AFilterChangedAtAnyMomentReadsAnew) {
  int index = 1;
  zu_jedem_Moment(
      [&] {
    index = index == 0 ? 1 : 0;
    waehle_Filter(form(), index);
      },
      [&] { EXPECT_EQ(form().lvwContent.Count(), index == 0 ? Bilder + 1 : Bilder); });
}

TEST_F(Unterbrechen, AnotherFolderAtAnyMomentTakesItsPlace) {
  zu_jedem_Moment(
      [&] {
    eingaben::doppelklicke_Zeile(form().Dir1, 0);
    eingaben::doppelklicke_Zeile(form().Dir1, 1);
      },
      [&] {
    EXPECT_EQ(form().Dir1.Path(), u"P:\\Anders"_s);
    EXPECT_EQ(eintraege(), (QStringList{u"b00000.jpg"_s, u"b00001.jpg"_s, u"b00002.jpg"_s}));
    beim_Pumpen({});
    form().Dir1.Path(u"P:\\Bilder"_s);
  });
}

TEST_F(Unterbrechen, AnotherDriveAtAnyMomentTakesItsPlace) {
  zu_jedem_Moment(
      [&] {
    form().ImageCombo1.waehle(u"P:\\"_s);
    form().ImageCombo1.setFocus();
    eingaben::taste(form(), Qt::Key_Home);
      },
      [&] {
    EXPECT_EQ(form().Dir1.Path(), u"C:\\Heim"_s);
    EXPECT_EQ(eintraege(), QStringList{u"h.jpg"_s});
    form().Dir1.Path(u"P:\\Bilder"_s);
  });
}

TEST_F(Unterbrechen, TheReturnButtonLeavesAtEveryMoment) {
  verlasse_zu_jedem_Moment([](frm_BilderSuchen& f) { klicke(f.cmd_Abbruch); });
}

TEST_F(Unterbrechen, EscapeLeavesAtEveryMoment) {
  verlasse_zu_jedem_Moment([](frm_BilderSuchen& f) { eingaben::taste(f, Qt::Key_Escape); });
}

TEST_F(Unterbrechen, TheFrameLeavesAtEveryMoment) {
  verlasse_zu_jedem_Moment([](frm_BilderSuchen& f) { eingaben::schliesse_Rahmen(f); });
}

TEST_F(Unterbrechen, TakingOverLeavesAtEveryMoment) {
  verlasse_zu_jedem_Moment([](frm_BilderSuchen& f) { klicke(f.cmd_Uebernehmen); });
}

TEST_F(Unterbrechen, AHostThatHidesTheWindowEndsTheReadAtEveryMoment) {
  verlasse_zu_jedem_Moment([](frm_BilderSuchen& f) { f.hide(); });
}

TEST_F(Unterbrechen, StoppingAndLeavingAtOnceLeaves) {
  verlasse_zu_jedem_Moment([](frm_BilderSuchen& f) {
    klicke(f.cmd_EinlesenAbrrechen);
    eingaben::taste(f, Qt::Key_Escape);
  });
}
