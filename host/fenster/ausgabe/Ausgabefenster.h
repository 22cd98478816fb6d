#pragma once

#include <QDialog>
#include <QString>

#include "host/bericht/ausgabe/Ausgabeeinstellung.h"
#include "host/bericht/ausgabe/Bilderausgabe.h"
#include "host/fenster/ausgabe/Zielwahl.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

/// Hands out the pictures of a record: asks for a folder or a ZIP file and what goes with them, and writes them. It
/// stays alive meanwhile, and can be given up.
class Ausgabefenster final : public QDialog {
 public:
  struct Auftrag {
    clsBildZuordnungen& store;
    /// The picture root without a closing backslash.
    QString wurzel;
    /// The record as its target is called.
    QString name;
    /// What is chosen is kept for the next time.
    bool merken = true;
  };

  Ausgabefenster(const Auftrag& auftrag, Zielwahl zielwahl, QWidget* ueber);

  /// What was written, once the window was accepted.
  const Ausgabeergebnis& ergebnis() const noexcept { return ergebnis_; }

 protected:
  void reject() override;

 private:
  void baue_auf();
  void baue_Ziel(QVBoxLayout& lage);
  void baue_Wahl(QVBoxLayout& lage);
  void baue_Fuss(QVBoxLayout& lage);
  void waehle_Ordner();
  void waehle_Zip();
  void merke() const;
  Ausgabewahl wahl() const;
  QString ziel() const;
  /// The choices have changed: counts anew.
  void zeige_Anzahl();
  void sage(const QString& worte);
  void erlaube();
  void gib_aus();
  bool zeige_Fortschritt(int fertige, int alle);

  const Auftrag auftrag_;
  const Zielwahl zielwahl_;
  Ausgabeergebnis ergebnis_;
  int anzahl_ = 0;
  bool schreibt_ = false;
  bool angehalten_ = false;
  QLineEdit* txt_Ziel;
  QPushButton* cmd_Ordner;
  QPushButton* cmd_Zip;
  QCheckBox* chk_Texte;
  QCheckBox* chk_Gekennzeichnete;
  QCheckBox* chk_Ort;
  QLabel* lbl_Meldung;
  QProgressBar* bar_Fortschritt;
  QPushButton* cmd_Ausgeben;
  QPushButton* cmd_Abbrechen;
};
