#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <QWidget>

#include "host/betrieb/vorgang/Vorgang.h"
#include "host/fenster/Vorschaustreifen.h"

class QLabel;
class QPushButton;
class QStackedWidget;

/// The right side of the window: the chosen record with its pictures and what can be done with it, or words that say
/// why there is nothing to see.
class Vorgangsansicht final : public QWidget {
 public:
  explicit Vorgangsansicht(QWidget* oberhalb = nullptr);

  /// Shows a record with its pictures.
  void zeige(const Vorgang& vorgang, const QList<Vorschaubild>& bilder);
  /// Shows words in place of a record; with a button to try again where that may help.
  void zeige_Hinweis(const QString& ueberschrift, const QString& text, bool mit_Versuch = false);

  /// Where the pictures of the record are, in this widget; empty while words stand in its place.
  QRect bildflaeche() const;

  QPushButton* cmd_Zuordnen;
  QPushButton* cmd_Anzeigen;
  QPushButton* const cmd_Bericht;
  QPushButton* const cmd_Ausgeben;  ///< usable where the record has pictures
  QPushButton* cmd_Exif;            ///< usable while a picture is chosen
  QPushButton* const cmd_AlleZuordnungen;
  QPushButton* const cmd_WeitereZuordnungen;
  QPushButton* cmd_NochEinmal;
  Vorschaustreifen* lst_Bilder;

 private:
  QWidget* baue_Vorgangsseite();
  QWidget* baue_Hinweisseite();

  QStackedWidget* seiten_;
  QStackedWidget* bildseiten_;
  QLabel* lbl_Art;
  QLabel* lbl_Nummer;
  QLabel* lbl_Betreff;
  QLabel* lbl_Anzahl;
  QLabel* lbl_KeineBilder;
  QLabel* lbl_Ueberschrift;
  QLabel* lbl_Hinweis;
};
