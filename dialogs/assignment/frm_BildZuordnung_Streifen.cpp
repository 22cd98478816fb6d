// The strip of thumbnails: building, drawing, selecting, scrolling.
#include <QScopeGuard>
#include <algorithm>
#include <cmath>
#include <tuple>

#include "dialogs/Bildbuehne.h"
#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/search/Vorschaubild.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Twips.h"
#include "platform/gdiplus/bild/NurKopf.h"
#include "platform/host/Meldeweg.h"
#include "platform/host/Oberflaeche.h"
#include "platform/shell/Programmstart.h"
#include "store/mod_BilderSuchen.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

constexpr double Abstand = 100, Streifen_am_Rand = 3;

}  // namespace

// ── Building ────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::Create_ThumbNails(std::int32_t& pStart) {
  fehler::Weiter weiter;
  weiter([&] { Loesche_Thumbs(); });
  if (LetzteZeile() < 0) return;
  mauszeiger().form(Zeigerform::Sanduhr);
  pStart = std::min(std::max(pStart, 0), LetzteZeile());
  // Of most pictures only the size is needed: they stand outside the visible part.
  const bildlader::NurKopf nur_Kopf;
  for (std::int32_t zeile = pStart; zeile <= LetzteZeile(); ++zeile) {
    weiter([&] { Neuer_Thumb(); });
    if (Zeile(zeile).ist_leer()) continue;
    weiter([&] { Pic_Thumb(0).Visible(false); });
    weiter([&] { stelle_Thumbnail_dar(zeile, ThumbZaehler); });
  }
  if (AktZeile == KeineZeile) {
    // Nothing to click while the table holds only its placeholder.
    if (ThumbZaehler > 0) weiter([&] { Pic_Thumb_Click(1); });
    weiter([&] { EingabenFreigeben(!text::Trim(txt_BildName.Text()).isEmpty()); });
    const auto geht = [](const Arbeitszeile& zeile) { return zeile.Entfernen; };
    const bool entfernen = wiederaufgenommen_ || std::any_of(Tabelle().begin(), Tabelle().end(), geht);
    // A lost picture offers saving at once, but not where nothing can be changed.
    SetzeDatenGeaendert(entfernen && !pNurAnzeige);
  }
  weiter([&] { Pruefe_Scroll(); });
  sage_Bilder_an();
  mauszeiger().form(Zeigerform::Standard);
}

// In the order in which they will be painted. Only a help: a failure of it must not end what is being shown.
void frm_BildZuordnung::sage_Bilder_an() {
  fehler::still_enden([this] {
    QList<bildvorlauf::Vorlauf::Wunsch> bilder = Pic_Bearbeitung.offene_Bilder();
    const double rechts = SSP_Panel(3).Width() - SSC_Scroll_Right.Width();
    for (int i = 1; i <= Pic_Thumb.UBound(); ++i) {
      if (Pic_Thumb(i).Left() >= rechts) break;
      bilder += Pic_Thumb(i).offene_Bilder();
    }
    vorlauf_.bilder(bilder);
  });
}

void frm_BildZuordnung::stelle_Thumbnail_dar(std::int32_t zeile, std::int32_t index) {
  fehler::Weiter weiter;
  const QString pfad = Zeile(zeile).VollerPfad;
  Bildfeld& thumbnail = Pic_Thumb(index);
  weiter([&] {
    if (Zeile(zeile).DateiFehlt)
      Pic_Dummy0.Picture(Pic_Blank.Picture());
    else
      stelle_auf(Pic_Dummy0, pBildObj, pfad);
  });
  thumbnail.Visible(false);
  weiter([&] { Bild_Einpassen(ThumbBreite, ThumbHoehe, Pic_Dummy0, thumbnail); });
  thumbnail.Tag = pfad;
  thumbnail.Visible(true);
}

void frm_BildZuordnung::Neuer_Thumb() {
  fehler::Weiter weiter;
  if (KeineBilder()) return;
  if (ThumbZaehler == 0 && ThumbSchritt == 0) ThumbSchritt = 1;
  ThumbZaehler += ThumbSchritt;
  if (ThumbSchritt != 1) {
    weiter([&] { Pic_Thumb.Unload(ThumbZaehler); });
    return;
  }
  weiter([&] {
    Bildfeld& neu = Pic_Thumb.Load(ThumbZaehler);
    const Bildfeld& vorher = Pic_Thumb(ThumbZaehler - 1);
    neu.Top(Pic_Thumb(0).Top());
    neu.Left(vorher.Left() + vorher.Width() + Abstand);
    neu.Visible(true);
  });
}

void frm_BildZuordnung::Loesche_Thumbs() {
  for (int i = Pic_Thumb.UBound(); i > 0; --i)
    if (Pic_Thumb.vorhanden(i)) Pic_Thumb.Unload(i);
  ThumbZaehler = 0;
  ThumbSchritt = 0;
}

void frm_BildZuordnung::Bild_Einpassen(std::int32_t pBreite, std::int32_t pHoehe, Bildfeld& pQuelle, Bildfeld& pZiel) {
  const double quellbreite = pQuelle.ScaleWidth();
  const double quellhoehe = pQuelle.ScaleHeight();
  if (pBreite <= 0 || pHoehe <= 0 || quellbreite <= 0 || quellhoehe <= 0) return;
  const double rW = pBreite / quellbreite;
  const double rH = pHoehe / quellhoehe;
  const double faktor = quellbreite * rH <= pBreite ? rH : rW;
  const double breite = std::nearbyint(quellbreite * faktor);
  const double hoehe = std::nearbyint(quellhoehe * faktor);
  pZiel.Width(breite * twips::JePixel);
  pZiel.Height(hoehe * twips::JePixel);
  if (pQuelle.Picture()) pZiel.PaintPicture(pQuelle.Picture(), QRectF(0, 0, breite, hoehe));
}

// ── Drawing ─────────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::Zeichne_Status() {
  if (KeineBilder()) return;
  fehler::Weiter weiter;
  for (int i = 1; i <= Pic_Thumb.UBound(); ++i)
    weiter([&] {
      Bildfeld& thumbnail = Pic_Thumb(i);
      const Farbe farbe = Zeile(ErsteZeile + i - 1).Gespeichert ? farben::Hellgruen : farben::Hellrot;
      const double breite = thumbnail.ScaleWidth();
      const double hoehe = thumbnail.ScaleHeight();
      thumbnail.Kasten(QPointF(-1, hoehe - Streifen_am_Rand), QPointF(breite, hoehe), farbe);
    });
}

void frm_BildZuordnung::Zeichne_Entfernt(bool pNichtNeu) {
  fehler::Weiter weiter;
  if (!pNichtNeu) {
    weiter([&] { Create_ThumbNails(ErsteZeile); });
    weiter([&] { Zeichne_Status(); });
  }
  for (int i = 1; i <= Pic_Thumb.UBound(); ++i)
    weiter([&] {
      if (!Zeile(ErsteZeile + i - 1).Entfernen) return;
      Bildfeld& thumbnail = Pic_Thumb(i);
      const double breite = thumbnail.ScaleWidth();
      const double hoehe = thumbnail.ScaleHeight();
      thumbnail.Linie(QPointF(0, 0), QPointF(breite, hoehe), farben::Klassisch[12]);
      thumbnail.Linie(QPointF(0, hoehe), QPointF(breite, 0), farben::Klassisch[12]);
    });
}

namespace {

/// Puts a frame around a thumbnail.
void rahme_ein(Shape& rahmen, const Bildfeld& thumbnail) {
  const double b = rahmen.BorderWidth();
  rahmen.Move(
      thumbnail.Left() - (b + 30), thumbnail.Top() - (b + 30), thumbnail.Width() + b + 80, thumbnail.Height() + b + 70);
  rahmen.Visible(true);
}

}  // namespace

void frm_BildZuordnung::Markiere_Auswahl() {
  if (KeineBilder()) return;
  if (ErsteZeile == -1) ErsteZeile = 0;
  ErsteZeile = std::min(ErsteZeile, LetzteZeile());
  const std::int32_t i = std::min(AktZeile - ErsteZeile + 1, Pic_Thumb.Count() - 1);
  if (i < 0)
    Shp_Thump.Visible(false);
  else
    rahme_ein(Shp_Thump, Pic_Thumb(i));
}

void frm_BildZuordnung::Markiere_Ziel(std::int32_t pIndex) {
  if (pIndex < 0)
    Shp_Sort.Visible(false);
  else
    rahme_ein(Shp_Sort, Pic_Thumb(pIndex));
}

// The two buttons are only ever enabled together; nothing stops at the ends but the clamps of the rebuilding.
void frm_BildZuordnung::Pruefe_Scroll() {
  const auto beide = [this](bool wert) {
    SSC_Scroll_Left.Enabled(wert);
    SSC_Scroll_Right.Enabled(wert);
  };
  if (LetzteZeile() < 0) return beide(false);
  const double frei = SSP_Panel(3).Width() - SSC_Scroll_Left.Width() - SSC_Scroll_Right.Width();
  double noetig = 0;
  for (int i = 1; i <= Pic_Thumb.UBound(); ++i) noetig += Pic_Thumb(i).Width() + Abstand;
  beide(noetig > frei || ErsteZeile >= 1);
  for (int i = 1; i <= Pic_Thumb.UBound(); ++i) {
    if (Pic_Thumb(i).Left() + Pic_Thumb(i).Width() < frei) continue;
    SichtbareThumbs = i;
    return;
  }
}

// ── Selecting ───────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::Pic_Thumb_Click(std::int32_t index) {
  // The pointer keeps waiting after a failure until the next selection sets it back.
  fehler::gemeldet(Name(), u"Pic_Thumb_Click", [&] {
    const auto fertig = qScopeGuard([this] { AnzeigeAufbau = false; });
    mauszeiger().form(Zeigerform::Sanduhr);
    AktThumb = std::max(index, 1);
    AktZeile = ErsteZeile + AktThumb - 1;
    if (AktZeile > LetzteZeile()) AktZeile = 0;
    zeige_Auswahl();
    Markiere_Auswahl();
    mauszeiger().form(Zeigerform::Standard);
  });
}

/// Shows the selected row in the fields and in large.
void frm_BildZuordnung::zeige_Auswahl() {
  AnzeigeAufbau = true;
  NameWarnung(false);
  NameGeaendertAnzeige(false);
  const Arbeitszeile& gewaehlte = Zeile(AktZeile);
  std::tie(AktDatei, AktName, AktExt, AktPfad) =
      std::tie(gewaehlte.VollerPfad, gewaehlte.Bildname, gewaehlte.BildExt, gewaehlte.Pfad);
  std::tie(AktKey1, AktKey2, AktKey3, AktKey4) =
      std::tie(gewaehlte.Key1, gewaehlte.Key2, gewaehlte.Key3, gewaehlte.Key4);
  std::tie(AktTyp1, AktTyp2) = std::tie(gewaehlte.Typ1, gewaehlte.Typ2);
  lade_grosses_Bild();
  fuelle_Eingaben();
  for (Arbeitszeile& zeile : Tabelle()) zeile.Aktuell = false;
  Zeile(AktZeile).Aktuell = true;
  Zeige_Bild();
  if (!text::Trim(txt_BildName.Text()).isEmpty()) {
    SSP_Anzahl(1).Caption(QString::number(AktZeile + 1));
    // A row without a name has locked the fields; that is over.
    if (!txt_BildInfo.Enabled() && ThumbZaehler > 0) EingabenFreigeben(true);
  } else {
    SSP_Anzahl(1).Caption(u"0"_s);
    chk_Delete.Enabled(false);
    EingabenFreigeben(false);
  }
  AnzeigeAufbau = false;
}

void frm_BildZuordnung::lade_grosses_Bild() {
  if (AktDatei.isEmpty()) {
    Pic_Dummy.Picture(nullptr);
    Pic_Bearbeitung.Cls();
    return;
  }
  if (Zeile(AktZeile).DateiFehlt) {
    Pic_Dummy.Picture(Pic_Blank.Picture());
    if (!pNurAnzeige) chk_Delete.Enabled(true);
    sperre_Fehlende();
    return;
  }
  // What is no picture leaves nothing of the one before, whatever becomes of its icon.
  if (!vorschaubild::ist_Bildtyp(mod_BilderSuchen::Fkt_SplitFileName(AktDatei, 3))) {
    Pic_Dummy.Picture(nullptr);
    Pic_Bearbeitung.Cls();
  }
  stelle_auf(Pic_Dummy, pBildObj, AktDatei);
  if (!pNurAnzeige) chk_Delete.Enabled(true);
}

// The controls raise their events while they are filled: what they write is the row's own, and they mark the row.
void frm_BildZuordnung::fuelle_Eingaben() {
  const Arbeitszeile zeile = Zeile(AktZeile);
  txt_BildName.Text(AktName);
  txt_BildName.Tag = AktName;
  txt_BildExt.Text(AktExt);
  txt_BildExt.Tag = AktExt;
  if (zeile.NameDoppelt) NameWarnung(true);
  if (zeile.NameGeaendert) NameGeaendertAnzeige(true);
  txt_BildInfo.Text(zeile.BildInfo);
  chk_AlsAnhang.Value(zeile.AlsAnhang ? 1 : 0);
  chk_Drucken.Value(zeile.Drucken ? 1 : 0);
  chk_GesamteSeite.Value(zeile.DruckGesamteSeite ? 1 : 0);
  chk_NeueSeite.Value(zeile.NeueSeite ? 1 : 0);
  chk_Delete.Value(zeile.Entfernen ? 1 : 0);
  erzwinge_Anhang();
  txt_BildText.Text(zeile.Beschreibung);
  SSC_ExifInfo.Enabled(mit_Exif(AktZeile).HatExif.value_or(false));
}

void frm_BildZuordnung::zeige_im_Programm(const QString& datei) {
  if (!text::Trim(datei).isEmpty()) shell::ShellExecute_open(datei);
}

// ── Scrolling ───────────────────────────────────────────────────────────────────────────────────────────────────────

void frm_BildZuordnung::scrolle(std::int32_t schritte) {
  const std::int32_t vorher = ErsteZeile;
  ErsteZeile += schritte;
  baue_Streifen_neu();
  // The picture that was taken stays the source, though the keys scroll the strip while it is dragged.
  if (DragAktiv) DragQuelle -= ErsteZeile - vorher;
}

void frm_BildZuordnung::zeichne_Streifen() {
  const Sichtbarkeitspause pause;
  Create_ThumbNails(ErsteZeile);
  Zeichne_Status();
  Zeichne_Entfernt(true);
}

// Built twice: once for the row, once by the crosses. The selection does not move with the strip.
void frm_BildZuordnung::baue_Streifen_neu() {
  const Sichtbarkeitspause pause;
  Create_ThumbNails(ErsteZeile);
  Zeichne_Status();
  Zeichne_Entfernt(false);
  if (!AnzeigeAufbau) Markiere_Auswahl();
}

void frm_BildZuordnung::Zeige_Zeile(std::int32_t& pZeile, bool pScrollen, bool& pErgebnis) {
  pErgebnis = false;
  if (ErsteZeile > pZeile) {
    ErsteZeile = pZeile;
    baue_Streifen_neu();
    pZeile = 1;
    pErgebnis = true;
    return;
  }
  const std::int32_t i = std::min(pZeile - ErsteZeile + 1, Pic_Thumb.UBound());
  const double links = SSP_Panel(3).Left() + SSC_Scroll_Left.Width();
  const double rechts = SSP_Panel(3).Width() - SSC_Scroll_Right.Width();
  const auto vor_dem_Rand = [&](int k) { return Pic_Thumb(k).Left() + Pic_Thumb(k).Width() <= rechts; };
  if (i > 0 && Pic_Thumb(i).Left() >= links && vor_dem_Rand(i)) {
    pZeile = i;
    pErgebnis = true;
    return;
  }
  if (!pScrollen) return;
  std::int32_t n = 0;
  for (int k = 1; k <= Pic_Thumb.UBound(); ++k)
    if (vor_dem_Rand(k)) n = k;
  if (n == 0 || i <= n) return;
  ErsteZeile = pZeile - n + 1;
  baue_Streifen_neu();
  pZeile = n;
  pErgebnis = true;
}
