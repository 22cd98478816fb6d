#include "dialogs/overview/Uebersichtszeile.h"

#include <array>
#include <utility>

#include "store/Bilddatei.h"

namespace uebersicht {

Gitterspalte entworfen(const QString& caption, double breite) {
  Gitterspalte spalte;
  spalte.Caption = caption;
  spalte.Width = breite;
  spalte.Visible = false;
  spalte.Locked = true;
  spalte.HeadAlignment = Ausrichtung::Zentriert;
  spalte.BackColor = farben::Klassisch[15];
  return spalte;
}

Gitterspalte entworfen(Spalte spalte) {
  const Spaltenentwurf& entwurf = Entwurf.at(static_cast<std::size_t>(spalte));
  return entworfen(QString::fromUtf16(entwurf.Caption), entwurf.Width);
}

void baue(TDBGrid& gitter, const std::shared_ptr<XArrayDBObject>& zeilen, const std::function<void()>& spalten) {
  gitter.Visible(false);
  gitter.RemoveColumns();
  spalten();
  gitter.Array(zeilen);
  gitter.ReBind();
  gitter.Refresh();
  gitter.Visible(true);
}

void fuelle(XArrayDBObject& tabelle, clsBildZuordnungen& bilder, const QString& root,
    const std::function<void(std::int32_t)>& nach) {
  Bilddatei vorige;
  QString datei;
  bool fehlt = false;
  for (std::int32_t zeile = 0; zeile < bilder.AnzahlPos(); ++zeile) {
    if (zeile > 0) tabelle.AppendRows(1);
    bilder.AktInd(zeile);
    const QString name = bilder.Bild_Bildname();
    const QString ext = bilder.Bild_BildExt();
    const QString pfad = bilder.Bild_Pfad();
    // The assignments of one picture mostly name one and the same file; it is looked for once, and its name kept once.
    if (zeile == 0 || name != vorige.name || ext != vorige.ext || pfad != vorige.ordner) {
      vorige = {name, ext, pfad};
      datei = Bilddatei{name, ext, root + u'\\' + pfad}.pfad();
      fehlt = !bilder.Fkt_FileExists(datei);
    }
    // In the order of the columns; two of them hold nothing.
    std::array werte{Variant(true), Variant(datei), Variant(root), Variant(pfad), Variant(name), Variant(ext),
        Variant(bilder.Bild_Beschreibung()), Variant(CStr(bilder.Bild_Drucken())),
        Variant(CStr(bilder.Bild_DruckGesamteSeite())), Variant(CStr(bilder.Bild_NeueSeite())),
        Variant(CStr(bilder.Bild_AlsAnhang())), Variant(bilder.Bild_Key1()), Variant(bilder.Bild_Key2()),
        Variant(bilder.Bild_Key3()), Variant(bilder.Bild_Key4()), Variant(bilder.Bild_Typ1()),
        Variant(bilder.Bild_Typ2()), Variant(), Variant(), Variant(false), Variant(fehlt), Variant(fehlt),
        Variant(false), Variant(false), Variant(QString())};
    std::int32_t spalte = Marke;
    for (Variant& wert : werte) tabelle.Value(zeile, spalte++, std::move(wert));
    if (nach) nach(zeile);
  }
}

}  // namespace uebersicht
