#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

/// A row of a list, tree or grid: the texts of the columns that show ("[x]" and "[ ]" for a check mark), and the place
/// of each on the screen.
struct Anblickzeile {
  QStringList texte;
  QList<QRect> orte;
  bool gewaehlt = false;
};

/// A control of the front window; places are on the screen.
struct Element {
  QString name;
  QString text;
  QRect ort;
  bool sichtbar = false;
  bool frei = false;
  bool fokus = false;
  /// The mouse would meet it in its middle.
  bool treffbar = false;
  /// A check box or a switch that is on.
  bool an = false;
  QList<Anblickzeile> zeilen;
  /// The part of a list in which its rows show.
  QRect flaeche;

  /// The rows' texts, the columns of each joined with " | ".
  QStringList zeilentexte() const;
};

/// What the program's front window shows at a moment in which it waits for its user.
struct Anblick {
  QString name;
  QString titel;
  unsigned long kennung = 0;
  QRect ort;
  bool modal = false;
  bool aktiv = false;
  bool sanduhr = false;
  QList<Element> elemente;

  static Anblick lies(const QByteArray& zeile);
  /// The control of that name, a visible one before others, or one that has neither name nor text: never null.
  const Element& element(const QString& gesucht) const;
  const Element& operator[](const QString& gesucht) const { return element(gesucht); }
  /// The button with that text (without the mark of its short-cut).
  const Element& knopf(const QString& text) const;
  /// The control that has the keys.
  const Element& fokus() const;
  /// The last row whose first column has that text, with its list; null when there is none.
  const Anblickzeile* zeile(const QString& liste, const QString& text) const;
  /// How many visible controls have a name that begins so.
  int anzahl_sichtbarer(const QString& anfang) const;
};
