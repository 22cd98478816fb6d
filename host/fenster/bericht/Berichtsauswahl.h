#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

#include "host/bericht/Berichtskopf.h"
#include "host/bericht/Berichtswahl.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// The choices beside the preview of a report: how it is laid out, what is told of its pictures, and who heads it.
class Berichtsauswahl final : public QWidget {
 public:
  Berichtsauswahl(const Berichtswahl& wahl, const Berichtskopf& kopf, QWidget* oberhalb = nullptr);

  Berichtswahl wahl() const;
  Berichtskopf kopf() const;
  /// What is typed and not told yet is told now.
  void schliesse_Tippen();
  /// Asks for the picture file of the mark, beginning at the one that it is now.
  std::function<QString(const QString& bisher)> frage_Zeichen;
  /// The pictures or their texts are to be read anew.
  std::function<void()> bei_Inhalt;
  /// The same content is to be laid out anew.
  std::function<void()> bei_Satz;
  /// Something was chosen that does not show.
  std::function<void()> bei_Wahl;

 private:
  QWidget* baue_Seiten(const Berichtswahl& wahl);
  QWidget* baue_Angaben(const Berichtswahl& wahl);
  QWidget* baue_Kopf(const Berichtskopf& kopf);
  QCheckBox* haken(const QString& name, const QString& text, bool an);
  void verbinde();
  void zeichen(const QString& datei);
  void erlaube();

  QComboBox* cbo_JeSeite;
  QComboBox* cbo_Dichte;
  QCheckBox* chk_Alle;
  QCheckBox* chk_Info;
  QCheckBox* chk_Dateiname;
  QCheckBox* chk_Aufnahmedatum;
  QCheckBox* chk_Ort;
  QList<QLineEdit*> txt_Zeilen;
  QLabel* lbl_Zeichen;
  QPushButton* cmd_Zeichen;
  QPushButton* cmd_OhneZeichen;
  QString zeichen_;
  QTimer getippt_;
};
