#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <span>

#include "platform/basic/Text.h"
#include "store/clsBilderSpeicher.h"

/// The columns of the table Bild_Zuordnungen: what each is called, where a record holds it, and what a statement does
/// with its value. Reading, writing, copying and the checks go by these lists.
namespace felder {

/// What a column keeps of a value that a statement cuts, in 16-bit characters.
inline constexpr qsizetype Kurz = 50;
inline constexpr qsizetype Lang = 250;
inline constexpr qsizetype Ganz = 0;

enum class Besonderheit {
  Keine,
  Verdoppelt,        ///< its apostrophes are doubled in a statement; all other values stand there as they are
  Zuletzt_im_Update  ///< an UPDATE sets it behind the other texts
};

/// A column that holds text.
struct Feld {
  QStringView Name;
  QString clsBilderSpeicher::*Wert;
  /// Where a statement cuts the value that it writes; Ganz leaves it as it is.
  qsizetype Laenge = Ganz;
  Besonderheit besonderes = Besonderheit::Keine;
  /// The name as INSERT and UPDATE spell it.
  QStringView Spalte = Name;

  /// The record's value as a statement writes it, its quotes as they are.
  QString gekuerzt(const clsBilderSpeicher& satz) const {
    return Laenge == Ganz ? satz.*Wert : (satz.*Wert).left(Laenge);
  }
};

/// In the order of an INSERT. The first eight tell a row from others.
inline constexpr std::array Texte{
    Feld{u"Key1", &clsBilderSpeicher::Bild_Key1, Kurz},
    Feld{u"Key2", &clsBilderSpeicher::Bild_Key2, Kurz},
    Feld{u"Key3", &clsBilderSpeicher::Bild_Key3, Kurz},
    Feld{u"Key4", &clsBilderSpeicher::Bild_Key4, Kurz, Besonderheit::Keine, u"key4"},
    Feld{u"Bildname", &clsBilderSpeicher::Bild_Bildname, Kurz},
    Feld{u"BildExt", &clsBilderSpeicher::Bild_BildExt},
    Feld{u"Typ1", &clsBilderSpeicher::Bild_Typ1},
    Feld{u"Typ2", &clsBilderSpeicher::Bild_Typ2},
    Feld{u"BildPfad", &clsBilderSpeicher::Bild_Pfad, Lang},
    Feld{u"Beschreibung", &clsBilderSpeicher::Bild_Beschreibung, Lang, Besonderheit::Verdoppelt},
    Feld{u"Druckkennzeichen", &clsBilderSpeicher::Bild_Druckkennzeichen},
    Feld{u"GrafikAnbNr", &clsBilderSpeicher::Bild_GrafikAnbNr, Ganz, Besonderheit::Zuletzt_im_Update},
    Feld{u"Grafik_Ursprung", &clsBilderSpeicher::Bild_Grafik_Ursprung},
};
inline constexpr auto Kennung = std::span(Texte).first<8>();

/// The one column that holds a number, last in every statement.
inline constexpr QStringView SortIndex = u"SortIndex";

/// The print flags, packed into Druckkennzeichen in this order, "1" or "0" each; blanks fill it up to Kurz.
inline constexpr std::array Kennzeichen{&clsBilderSpeicher::Bild_NeueSeite, &clsBilderSpeicher::Bild_AlsAnhang,
    &clsBilderSpeicher::Bild_DruckGesamteSeite, &clsBilderSpeicher::Bild_Drucken};

/// Without blanks at the end, which the table does not tell apart.
inline QStringView ohne_Fuellung(QStringView text) {
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}
/// The form in which the table compares texts: the case of letters does not count either.
inline QString vergleichsform(QStringView text) {
  return text::UCase(ohne_Fuellung(text));
}

/// What stands in a row for a part of its identity that has no value.
inline QString oder_Strich(const QString& teil) {
  return teil.isEmpty() ? QStringLiteral("-") : teil;
}

}  // namespace felder
