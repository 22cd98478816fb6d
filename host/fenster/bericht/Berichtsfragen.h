#pragma once

#include <QString>
#include <functional>

class QPrinter;
class QWidget;

/// What the report's window asks its user through windows of the system's kind. Nothing, or false, where he gives up.
namespace berichtsfragen {

/// File that the report goes to; asks before it names one that is there already.
QString ziel(QWidget* ueber, const QString& vorschlag);
/// Picture file of the firm's mark.
QString zeichen(QWidget* ueber, const QString& bisher);
/// Chooses a printer, pages and copies for a report of so many pages.
bool drucker(QWidget* ueber, QPrinter& drucker, int seiten);

}  // namespace berichtsfragen

struct Berichtsfragen {
  std::function<QString(QWidget*, const QString&)> ziel = berichtsfragen::ziel;
  std::function<QString(QWidget*, const QString&)> zeichen = berichtsfragen::zeichen;
  std::function<bool(QWidget*, QPrinter&, int)> drucker = berichtsfragen::drucker;
};
