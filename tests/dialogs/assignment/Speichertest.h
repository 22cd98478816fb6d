#pragma once

#include <QDir>

#include "platform/basic/Uhr.h"
#include "tests/dialogs/assignment/Dialogtest.h"
#include "tests/dialogs/assignment/Meldungstexte.h"

/// Saving in the assignment dialog, at the second of Stempel.
class Speichertest : public Dialogtest {
 protected:
  /// What the saving appends to the names of new pictures.
  inline static const QString Stempel = QStringLiteral("20260304_050607");
  static QDateTime feste_Zeit() { return {QDate(2026, 3, 4), QTime(5, 6, 7)}; }

  Speichertest() : uhr_vorher_(uhr::setze(feste_Zeit)) {}
  ~Speichertest() override { uhr::setze(uhr_vorher_); }

  /// What the search does once it has appended its rows.
  void zeige_Streifen() {
    std::int32_t anfang = 0;
    form().Create_ThumbNails(anfang);
    form().Zeichne_Status();
  }
  /// A picture from another folder of the tree joins the record.
  void nimm_auf(const QString& name, const QString& ordner = QStringLiteral("P:\\Neu")) {
    lege_Bild(name + QStringLiteral(".jpg"), QSize(60, 40), Qt::green, QStringLiteral("Neu"));
    haenge_neue_Zeile_an(ordner, name);
    zeige_Streifen();
  }
  void speichere() { klicke(form().SSC_ZuordnungSpeichern); }
  /// Renames a row as the user does.
  void benenne(int thumbnail, const QString& name) {
    klicke(form().Pic_Thumb(thumbnail));
    form().txt_BildName.Text(name);
  }
  QStringList dateien(const QString& ordner = QStringLiteral("Belege/1")) {
    return QDir(wurzel.pfad(ordner)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  /// "Bildname|Pfad|Changeflag|Neu|Delete" of every record of the collection.
  QStringList sammlung() {
    QStringList alle;
    for (std::int32_t i = 0; i < store->AnzahlPos(); ++i) {
      store->AktInd(i);
      const auto j = [](bool wert) { return wert ? QStringLiteral("1") : QStringLiteral("0"); };
      alle.append(QStringList{store->Bild_Bildname(), store->Bild_Pfad(), j(store->Bild_Changeflag()),
          j(store->Bild_Neu()), j(store->Bild_Delete())}
                      .join(u'|'));
    }
    return alle;
  }
  /// What the host does after the dialog: new rows get the record's keys, and all is written.
  void wirt_schreibt() {
    EXPECT_TRUE(store->fkt_Korr_Key1(QStringLiteral("RE")));
    EXPECT_TRUE(store->fkt_Korr_Key2(QStringLiteral("1")));
    EXPECT_TRUE(store->FKT_SpeichernBilder());
    lies();
  }

 private:
  uhr::Zeitgeber uhr_vorher_;
};
