#pragma once

#include <QDate>
#include <QSizeF>
#include <QString>
#include <vector>

#include "host/bericht/Berichtskopf.h"

/// One picture of a report.
struct Berichtsbild {
  /// Folder with the picture root in front, without a closing backslash.
  QString ordner;
  QString datei;
  bool ganze_Seite = false;
  bool neue_Seite = false;
  bool anhang = false;
  /// What stands below the picture: the Drucktext, then the Bild-Info, then name and date in small print.
  QString drucktext;
  QString info;
  QString kleingedrucktes;
  /// Own size in pixels; empty when there is a reason why it can't be shown.
  QSizeF groesse;
  /// Why it can't be shown, in words for the reader of the report; empty when it can.
  QString grund;
};

/// What a report is made of: everything but the choice how many pictures stand on a page.
struct Bericht {
  Berichtskopf kopf;
  /// "Beleg AB 24-1001 – Bäckerei Huber, Freiburg".
  QString vorgang;
  QDate datum;
  /// In the order of the strip. Attachments come last, whatever their place here.
  std::vector<Berichtsbild> bilder;
  /// A later attachment begins a page, so their part does too.
  bool anlagen_auf_neuer_Seite = false;
  /// Stands in the report when it has no pictures.
  QString ohne_Bilder;
};
