#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "host/bericht/Bericht.h"
#include "host/bericht/Seitenplan.h"

class QPrinter;

/// Puts a report on paper, its pages as the preview shows them.
namespace berichtsdruck {

/// So many pages of so many are printed; false stops. It is called before each picture too.
using Fortgang = std::function<bool(std::size_t getan, std::size_t von)>;

/// The pages, from 0, in the order in which they leave the printer, as its settings have it: range, order, copies.
/// `aktuelle` is the page in sight, from 1.
std::vector<std::size_t> folge(const QPrinter& drucker, std::size_t seiten, int aktuelle);

struct Ergebnis {
  /// So many pages have left for the printer.
  std::size_t seiten = 0;
  /// Pictures that were there when the pages were laid out and could not be read any more, by name and reason.
  QStringList verlorene;
};

/// Prints these pages; a landscape page is turned, and paper that is smaller makes the page smaller. Stopped it ends
/// with a whole page, since what is painted can't be taken back. Where the printer is a file, that one is there with
/// all its pages or stays as it was. What does not take the report ends with Abbruch, Ausgang::Datei.
Ergebnis drucke(QPrinter& drucker, const Bericht& bericht, const Seitenplan& plan,
    const std::vector<std::size_t>& seiten, const Fortgang& fortgang = {});

}  // namespace berichtsdruck
