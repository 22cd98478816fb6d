#pragma once

#include <QDateTime>
#include <QString>

#include "platform/basic/kvo_export.h"
#include "store/Felder.h"

/// A picture file as the table, the statements and every desk's share can hold it, with the text file beside it.
struct KVO_EXPORT Bilddatei {
  /// Longest name and longest text that the table keeps, in 16-bit characters.
  static constexpr qsizetype Namenslaenge = felder::Kurz;
  static constexpr qsizetype Textlaenge = felder::Lang;

  QString name;
  /// Without the dot.
  QString ext;
  /// Without a closing backslash; empty where the names alone are looked at.
  QString ordner = {};

  /// The file of a record below the picture root.
  static Bilddatei von(const clsBilderSpeicher& satz, const QString& wurzel = {});

  /// Put behind the root, the record's folder and name stay below it. Another program may have stored a folder that
  /// leads above it ("..\\.."), or that names a drive, a share or a root of its own.
  static bool liegt_unter_Wurzel(const clsBilderSpeicher& satz);

  QString datei() const { return name + u'.' + ext; }
  /// Name of the text file: no dot between name and extension.
  QString textdatei() const { return name + ext + QStringLiteral(".txt"); }
  QString pfad() const { return ordner + u'\\' + datei(); }
  QString textpfad() const { return ordner + u'\\' + textdatei(); }
  /// One name and extension as the table compares; the folders do not count.
  bool gleich(const Bilddatei& andere) const;
  /// With "_2" and so on behind the name for a `nummer` above 1, and the stamp behind that without a separator. The
  /// name is cut before them so that all of it fits the table, never inside a surrogate pair; blanks at the ends are
  /// gone.
  Bilddatei gestempelt(const QString& stempel, int nummer = 1) const;

  /// "yyyyMMdd_HHmmss".
  static QString Stempel(const QDateTime& zeit);
  /// By its name a text file and no picture.
  static bool ist_Textdatei(const QString& datei);

  /// Characters that no share takes in a name or a folder: / and \ apart, < > " | ? * : and the control characters.
  static bool verbietet_Freigabe(QChar zeichen);
  /// Those, \ / and all that another desk could not store in a file name or that breaks a statement.
  static bool ist_verboten(QChar zeichen);
  /// The name without them, each replaced by one character: ' by ’ and the others by _.
  static QString ersetze_verbotene(const QString& name);
  /// As much of a Drucktext as fits the table with its quotes doubled, whole: no half pair of quotes or of surrogates.
  static QString passender_Drucktext(const QString& text);
};
