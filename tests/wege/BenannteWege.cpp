#include "tests/wege/BenannteWege.h"

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace schritt;

namespace {

const Haenge_an Foto{u"Neu"_s, {u"foto.jpg"_s}};
const Haenge_an Foto_und_Haus{u"Neu"_s, {u"foto.jpg"_s, u"haus.jpg"_s}};
const Haenge_an Anderes_Foto{u"Anders"_s, {u"foto.jpg"_s}};
const Haenge_an Hochkomma_und_Foto{u"Anders"_s, {u"Müller's ß.jpg"_s, u"foto.jpg"_s}};
const Haenge_an Eigener_Ordner{u"Belege/1"_s, {u"lager.jpg"_s}};

}  // namespace

void PrintTo(const BenannterWeg& weg, std::ostream* os) {
  *os << weg.name;
}

const std::vector<BenannterWeg>& benannte_Wege() {
  static const std::vector<BenannterWeg> Wege{
      {"NothingHappens", {3, {Waehle{1}}}},
      {"APictureIsAttached", {2, {Foto, Speichere{}}}},
      {"APictureOfTheRecordsFolderIsCopiedToo", {1, {Eigener_Ordner, Speichere{}}}},
      {"APictureThatWasTakenMovesThoughTheStripScrolls", {0, {Foto_und_Haus, Ziehe{0, 0, 2}}}},
      {"AMovedPictureKeepsItsFieldsAndItsRecord",
          {4, {Ziehe{0, 2, 0}, Schreibe{-1, Feld::Drucktext, u"neu"_s}, Aktualisiere{}, Ziehe{3, 0, 0}}}},
      {"ANewPictureSavedByATurnIsStoredByTheHost", {1, {Foto, Drehe{1, 1}, Verlasse{}}}},
      {"PicturesOfOneNameAndSecondNeverMeet",
          {0, {Foto, Speichere{}, Anderes_Foto, Speichere{}, Foto, Belege{1}, Aktualisiere{}, Speichere{}}}},
      {"ATextFollowsTheRenaming", {1, {Benenne{0, u"Haus neu"_s}, Speichere{}, Waehle{0}}}},
      {"ATextStaysInItsPicturesFolder", {4, {Schreibe{3, Feld::Info, u"größer"_s}, Speichere{}}}},
      {"TheSecondRenamedPictureMovesWithAllItsRecords",
          {4, {Benenne{0, u"x"_s}, Benenne{3, u"y"_s}, Speichere{Antwort::Nein}, Waehle{3}}}},
      {"ANameThatAFileHasIsRefused",
          {3, {Benenne{1, u"lager"_s}, Schalte{1, Marke::AlsAnhang}, Speichere{Antwort::Ja}, Waehle{1}}}},
      {"ABlankNameIsNone", {1, {Benenne{0, u" "_s}, Speichere{}}}},
      {"AnApostropheInANewNameBreaksNoStatement", {0, {Hochkomma_und_Foto}}},
      {"ANewPictureThatIsMarkedIsNotCopied", {0, {Anderes_Foto, Merke_vor{0}, Aktualisiere{}}}},
      {"AMarkSurvivesATurn", {1, {Merke_vor{0}, Drehe{0, 1}, Speichere{}}}},
      {"NoTakesAMarkBackThatATurnSaved",
          {1, {Merke_vor{0}, Drehe{0, 1}, Verlasse{Ausgang::Escape, Antwort::Nein}, Waehle{0}}}},
      {"AMarkThatOnlyATurnSavedGoesWhereTheSavingStops",
          {1, {Merke_vor{0}, Drehe{0, 1}, Haenge_an{u"Neu"_s, {u"a.jpg"_s}}}}},
      {"APictureWhoseFileIsBackBeforeTheSaveStays",
          {1,
              {Schalte{0, Marke::GesamteSeite}, Verschwinde{3}, Verlasse{}, Schreibe{0, Feld::Info, u"neu"_s},
                  Kehre_zurueck{}}}},
      {"APictureWhoseFileIsBackBeforeTheSaveIsRenamedWithTheOthers",
          {2,
              {Schalte{0, Marke::GesamteSeite}, Verschwinde{3}, Verlasse{}, Benenne{1, u"foto"_s},
                  Benenne{0, u"Haus neu"_s}, Kehre_zurueck{}}}},
      {"AFolderThatIsGoneAgainBeforeTheSaveRemovesNothing",
          {1,
              {Anderes_Foto, Ziehe{0, 0, 1}, Trenne{}, Drehe{-1, 1}, Schreibe{1, Feld::Info, u"Ein 'Wort'"_s},
                  Trenne{}}}},
      {"AFolderThatIsAwayMarksNothing",
          {3, {Trenne{}, Waehle{1}, Schalte{1, Marke::Drucken}, Speichere{}, Kehre_zurueck{}, Waehle{1}}}},
      {"ACopyThatFailsKeepsThePictureNew",
          {1,
              {Foto_und_Haus, Stoere{7}, Aktualisiere{}, Schreibe{1, Feld::Drucktext, u"neu"_s}, Kehre_zurueck{},
                  Speichere{}}}},
      {"AnOrderWithAGapStaysTheOrder",
          {2, {Foto, Merke_vor{0}, Speichere{}, Hochkomma_und_Foto, Speichere{}, Waehle{0}}}},
      {"AnOrderThatWasNotSavedDoesNotReachTheTable",
          {2,
              {Schreibe{-1, Feld::Drucktext, u"neu"_s}, Aktualisiere{}, Haenge_an{u"Neu"_s, {u"a.jpg"_s}},
                  Ziehe{-1, 0, 1}}}},
      {"ARowSavedBeforeAnotherLeftTheStripKeepsItsPlace",
          {2,
              {Foto, Ziehe{2, 1, 0}, Merke_vor{1}, Schreibe{2, Feld::Drucktext, u"neu"_s}, Aktualisiere{}, Anderes_Foto,
                  Speichere{}}}},
      {"AMarkOfAMissingFileGoesWithItsReturnThoughARefreshSavedIt",
          {2, {Verschwinde{4}, Waehle{1}, Schalte{0, Marke::Drucken}, Aktualisiere{}, Kehre_zurueck{}, Speichere{}}}},
      {"ATextThatIsLeftIsNotTakenForANewPictures",
          {1, {Foto, Speichere{}, Verschwinde{4}, Ziehe{-1, 1, 0}, Verlasse{}, Foto}}},
      {"ATextWaitingUnderTheNewNameInOtherLettersIsFound",
          {1,
              {Merke_vor{0}, Anderes_Foto, Verschwinde{3}, Speichere{Antwort::Nein}, Benenne{0, u"A"_s}, Aktualisiere{},
                  Benenne{0, u"x"_s}}}},
      {"ARowWithoutANameStaysLockedWhereNothingIsReadAnew",
          {1, {Benenne{-1, u""_s}, Benenne{-1, u" "_s}, Aktualisiere{}, Merke_vor{-1}}}},
  };
  return Wege;
}
