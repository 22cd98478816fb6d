#include "dialogs/overview/Uebersichtszeile.h"

#include <vector>

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
  QString vorige;
  bool fehlt = false;
  for (std::int32_t zeile = 0; zeile < bilder.AnzahlPos(); ++zeile) {
    if (zeile > 0) tabelle.AppendRows(1);
    bilder.AktInd(zeile);
    const QString datei =
        Bilddatei{bilder.Bild_Bildname(), bilder.Bild_BildExt(), root + u'\\' + bilder.Bild_Pfad()}.pfad();
    // The assignments of one picture mostly name one and the same file; it is looked for once.
    if (datei != vorige) fehlt = !bilder.Fkt_FileExists(datei);
    vorige = datei;
    // In the order of the columns; two of them hold nothing.
    const std::vector<Variant> werte{true, datei, root, bilder.Bild_Pfad(), bilder.Bild_Bildname(),
        bilder.Bild_BildExt(), bilder.Bild_Beschreibung(), CStr(bilder.Bild_Drucken()),
        CStr(bilder.Bild_DruckGesamteSeite()), CStr(bilder.Bild_NeueSeite()), CStr(bilder.Bild_AlsAnhang()),
        bilder.Bild_Key1(), bilder.Bild_Key2(), bilder.Bild_Key3(), bilder.Bild_Key4(), bilder.Bild_Typ1(),
        bilder.Bild_Typ2(), Variant(), Variant(), false, fehlt, fehlt, false, false, QString()};
    std::int32_t spalte = Marke;
    for (const Variant& wert : werte) tabelle.Value(zeile, spalte++, wert);
    if (nach) nach(zeile);
  }
}

}  // namespace uebersicht
