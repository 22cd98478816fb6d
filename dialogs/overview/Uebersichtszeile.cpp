#include "dialogs/overview/Uebersichtszeile.h"

using namespace Qt::Literals::StringLiterals;

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

void fuelle(XArrayDBObject& tabelle, std::int32_t zeile, clsBildZuordnungen& bilder, const QString& root) {
  const auto zelle = [&](Spalte spalte, Variant wert) { tabelle.Value(zeile, spalte, std::move(wert)); };
  const QString datei =
      root + u'\\' + bilder.Bild_Pfad() + u'\\' + bilder.Bild_Bildname() + u'.' + bilder.Bild_BildExt();
  zelle(Marke, true);
  zelle(Datei, datei);
  zelle(Root, root);
  zelle(Pfad, bilder.Bild_Pfad());
  zelle(Dateiname, bilder.Bild_Bildname());
  zelle(Ext, bilder.Bild_BildExt());
  zelle(Beschreibung, bilder.Bild_Beschreibung());
  zelle(Drucken, CStr(bilder.Bild_Drucken()));
  zelle(DruckGesamteSeite, CStr(bilder.Bild_DruckGesamteSeite()));
  zelle(NeueSeite, CStr(bilder.Bild_NeueSeite()));
  zelle(AlsAnhang, CStr(bilder.Bild_AlsAnhang()));
  zelle(Key1, bilder.Bild_Key1());
  zelle(Key2, bilder.Bild_Key2());
  zelle(Key3, bilder.Bild_Key3());
  zelle(Key4, bilder.Bild_Key4());
  zelle(Typ1, bilder.Bild_Typ1());
  zelle(Typ2, bilder.Bild_Typ2());
  for (const Spalte nein : {Geaendert, Fehlt, Loeschen, DblName, Exif}) zelle(nein, false);
  zelle(ExifText, QString());
  if (bilder.Fkt_FileExists(datei)) return;
  zelle(Fehlt, true);
  zelle(Loeschen, true);
}

}  // namespace uebersicht
