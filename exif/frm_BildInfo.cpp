#include "exif/frm_BildInfo.h"

#include <array>

#include "exif/clsExifInfo.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int32_t Feld = 0;
constexpr std::int32_t Wert = 1;
constexpr std::int32_t Info = 2;
constexpr std::array<double, 3> Spaltenbreiten{2500, 1000, 2000};

constexpr double Startbreite = 6000;
constexpr double Starthoehe = 7200;
constexpr double Breite_OK = 1215;
constexpr double Hoehe_OK = 375;
constexpr double Oben_Liste = 80;
constexpr double Rand = 40;

constexpr Farbe Dunkelblau = farben::Klassisch[1];
constexpr Farbe Hellblau = 0xFFC0C0;

bool ist_zu_zeigen(const Variant& wert) {
  const bool* wahr = std::get_if<bool>(&wert);
  return wahr && *wahr;
}

}  // namespace

frm_BildInfo::frm_BildInfo() : Form(u"frm_BildInfo"_s) {
  Caption(u"Eigenschaften"_s);

  // Colours of its own: dark blue titles and rows can be read on them, whatever the desktop's colours are.
  Sft_Eigenschaften.BackColor(farben::Klassisch[15]);
  Sft_Eigenschaften.ForeColor(farben::Klassisch[0]);
  richte_Spalten_ein();
  Sft_Eigenschaften.ColumnTitle(Feld, u"Feld"_s);
  Sft_Eigenschaften.ColumnTitle(Wert, u"Wert"_s);
  Sft_Eigenschaften.ColumnTitle(Info, u"Info"_s);
  for (std::int32_t i = Feld; i <= Info; ++i) Sft_Eigenschaften.headerItem()->setBackground(i, QColor(236, 236, 236));
  Sft_Eigenschaften.setAccessibleName(u"Eigenschaften des Bildes"_s);
  Sft_Eigenschaften.ToolTipText(u"Exif-Angaben des Bildes"_s);

  cmd_OK.Caption(u"OK"_s);
  cmd_OK.ToolTipText(u"Eigenschaften schließen"_s);
  cmd_OK.setAccessibleName(u"OK"_s);
  cmd_OK.setDefault(true);
  cmd_OK.Click = [this] { Hide(); };
  setze_Abbruchknopf(&cmd_OK);

  // The list never follows the height (see Form_Resize): it is drawn for the size the window starts with.
  const double oben_OK = Starthoehe - Hoehe_OK - Rand;
  Sft_Eigenschaften.Move(0, Oben_Liste, Startbreite, oben_OK - 2 * Oben_Liste);
  cmd_OK.Move((Startbreite - Breite_OK) / 2, oben_OK, Breite_OK, Hoehe_OK);
  // Its size is fixed: pulled larger and then small, the list would keep a strip of the height it once had room for.
  setWindowFlag(Qt::WindowMinMaxButtonsHint, false);
  setze_Innengroesse(Startbreite, Starthoehe);
  setFixedSize(size());
}

XArrayDBObject& frm_BildInfo::Tabelle() {
  if (!Tabelle_) Tabelle_ = std::make_shared<XArrayDBObject>();
  return *Tabelle_;
}

void frm_BildInfo::Load_Exif() {
  clsExifInfo leser;
  if (!leser.Load(m_Bild)) return;
  Tabelle_ = leser.Get_ExifInfo();
  Create_List();
}

void frm_BildInfo::richte_Spalten_ein() {
  Sft_Eigenschaften.Columns(static_cast<std::int32_t>(Spaltenbreiten.size()));
  for (std::int32_t i = Feld; i <= Info; ++i) {
    Sft_Eigenschaften.ColumnWidth(i, Spaltenbreiten[static_cast<std::size_t>(i)]);
    Sft_Eigenschaften.ColumnForeColor(i, Dunkelblau);
  }
  Sft_Eigenschaften.SelectBackColor(Sft_Eigenschaften.BackColor());
  Sft_Eigenschaften.SelectForeColor(Dunkelblau);
}

void frm_BildInfo::Create_List() {
  Sft_Eigenschaften.Clear();
  Sft_Eigenschaften.Redraw(false);
  richte_Spalten_ein();

  using Spalte = clsExifInfo::Spalte;
  const XArrayDBObject& tabelle = Tabelle();
  const auto zelle = [&](std::int32_t zeile, Spalte spalte) -> const Variant& {
    return tabelle.Value(zeile, static_cast<std::int32_t>(spalte));
  };
  std::int32_t Zeile = 0;
  for (std::int32_t i = 0; i <= tabelle.UpperBound(XArrayDBObject::Dimension::Zeilen); ++i) {
    const QString wert = text::Trim(CStr(zelle(i, Spalte::Wert)));
    if (!ist_zu_zeigen(zelle(i, Spalte::Zeigen)) || wert.isEmpty()) continue;
    const QString feld = text::Trim(CStr(zelle(i, Spalte::Beschriftung)));
    Fkt_Zeile_Einfuegen(Zeile, Sft_Eigenschaften, feld, wert, QString(), 0, false);
  }
  Sft_Eigenschaften.Redraw(true);
}

void frm_BildInfo::Fkt_Zeile_Einfuegen(std::int32_t& Zeile, SftTree& tree, const QString& feld, const QString& wert,
    const QString& info, double abstand, bool hervorheben) {
  const std::int32_t eintrag = tree.AddItem(QString::number(Zeile));
  tree.ItemLevel(eintrag, 1);
  tree.CellText(eintrag, Feld, feld);
  tree.CellText(eintrag, Wert, wert);
  tree.CellText(eintrag, Info, info);
  if (hervorheben) {
    tree.CellText(eintrag, Feld, feld + u" (Verweiß auf ->)"_s);
    for (const std::int32_t zelle : {Feld, Wert}) tree.CellBackColor(eintrag, zelle, Hellblau);
  }
  ++Zeile;
  if (abstand == 0) return;
  const std::int32_t leer = tree.AddItem(QString::number(Zeile));
  tree.ItemLevel(leer, 1);
  for (const std::int32_t zelle : {Feld, Wert, Info}) tree.CellFontSize(leer, zelle, abstand);
  for (const std::int32_t zelle : {Feld, Wert, Info}) tree.CellText(leer, zelle, QString());
  ++Zeile;
}

// The list's height is computed from where the button still stands, before it moves. Beside a button at the bottom
// nothing is left for the list, which refuses that and keeps the height it has. That is known and kept; the frame lets
// nobody come upon it.
void frm_BildInfo::Form_Resize() {
  fehler::Weiter weiter;
  weiter([&] { Sft_Eigenschaften.Left(0); });
  weiter([&] { Sft_Eigenschaften.Top(Oben_Liste); });
  weiter([&] { Sft_Eigenschaften.Width(ScaleWidth()); });
  weiter([&] { Sft_Eigenschaften.Height(ScaleHeight() - (cmd_OK.Top() + cmd_OK.Height() + Oben_Liste)); });
  weiter([&] { cmd_OK.Top(ScaleHeight() - (cmd_OK.Height() + Rand)); });
  weiter([&] { cmd_OK.Left(ScaleWidth() / 2 - cmd_OK.Width() / 2); });
}
