#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <functional>

#include "host/bericht/Bericht.h"
#include "host/bericht/Berichtswahl.h"
#include "host/bericht/Seitenplan.h"

/// Writes a report as a PDF file: PDF/A-1b (ISO 19005-1), with the pictures coded once, at the density of the choice
/// and in the size that they have on the page.
namespace berichtsdatei {

/// So many pictures of so many are in the file; false stops.
using Fortgang = std::function<bool(std::size_t getan, std::size_t von)>;

struct Ergebnis {
  bool geschrieben = false;
  int seiten = 0;
  /// Pictures that the report shows.
  int bilder = 0;
  /// What it can't show, by name, each with its reason: "kessel.jpg: Die Datei fehlt."
  QStringList fehlende;
};

/// What the report can't show, by name and reason: its pictures, and the firm's mark.
QStringList fehlende(const Bericht& bericht);

/// Writes beside `ziel`, a path of this machine that ends in ".pdf", and renames: an existing file is replaced by a
/// whole one alone. Stopped by `fortgang` nothing is changed. A failure ends with Abbruch, Ausgang::Datei, and words;
/// nothing is changed then either.
Ergebnis schreibe(const QString& ziel, const Bericht& bericht, const Berichtswahl& wahl, const Fortgang& fortgang = {});

}  // namespace berichtsdatei
