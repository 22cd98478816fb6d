#pragma once

#include <memory>

#include "dialogs/Auftrag.h"
#include "dialogs/overview/Artikelzuordnung.h"
#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Bildfeld.h"
#include "platform/forms/steuerelemente/Flaechen.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "platform/host/Artikel.h"
#include "platform/host/Auskunft.h"
#include "store/clsBildZuordnungen.h"

/// Columns of the articles.
namespace artikel {
enum Spalte : std::int32_t { Nummer = 0, Kurztext1, Kurztext2, Lieferant, Referenz4, Letzte = 10 };
}  // namespace artikel

/// "Anzeige der Zuordnungen": attaches the marked pictures of a record to a list of articles in one step.
///
/// Usual road: set the members, Lade_Zuordnungen, Show, Unload. Of the task the folder, keys and types are read by
/// nothing here.
class frm_AnzeigeZuordnung : public Form, public Uebersichtsauftrag, public Auskunftsempfaenger {
 public:
  frm_AnzeigeZuordnung();

  /// The caller's collection. Its records are only read; its cursor and its loaded picture move.
  std::shared_ptr<clsBildZuordnungen> pBildObj;

  /// The new assignments, from the saving on.
  std::shared_ptr<clsBildZuordnungen> pNeuObj;
  bool pMitArtikelstammZF = false;
  /// The look-up while it is open.
  std::shared_ptr<clsAuskunft> pAuskunftObj;
  /// The number that a look-up gave.
  QString pAuswahlWert;
  /// Current row of the lower grid, -1 for none.
  std::int32_t pAktZeile = -1;
  /// Rows as of uebersicht::Spalte, without the last column.
  const std::shared_ptr<XArrayDBObject>& pZuordnungArray() const noexcept { return m_Zuordnungen; }
  /// Rows as of artikel::Spalte.
  const std::shared_ptr<XArrayDBObject>& pArtikelArray() const noexcept { return m_Artikel; }

  /// Reads the setting and fills the upper grid. A failure is reported.
  void Lade_Zuordnungen();
  void Init_ThumbNailArray();
  void Init_Grid();
  void Init_Artikelgrid();
  /// Opens the host's look-up of that name; a failure is reported.
  void AuskunftSelect(const QString& pName);
  void LA_Doppelclick(const QString& pWert) override;
  /// Finds an article by its number, or by a part of it, which `pArtikelNr` then is replaced by. `pFuellen` writes its
  /// texts and its supplier into the row. False when there is none, after a failure of the first search too.
  bool Lese_Artikel(QString& pArtikelNr, std::int32_t pZeile, bool pFuellen);
  /// Shows the picture of a row of the upper grid; a failure is reported.
  void Bild_Vorschau(std::int32_t pZeile);
  void VorschauBild_Einpassen(std::int32_t pZeile);
  /// Paints the picture of `quelle` as large as it fits into that many pixels, and makes `ziel` of that size.
  void StretchPicture(const Bildfeld& quelle, Bildfeld& ziel, double breite, double hoehe);
  void Pruefe_ZuordnungSchalter();
  void Dummy() {}

  // Controls, in their tab order
  TDBGrid TDBG_Zuordnungen{this, QStringLiteral("TDBG_Zuordnungen")};
  TDBGrid TDBG_WeitereZuordnungen{this, QStringLiteral("TDBG_WeitereZuordnungen")};
  SSCommand SSC_ZuordnungSpeichern{this, QStringLiteral("SSC_ZuordnungSpeichern")};
  SSCommand cmd_Abbrechen{this, QStringLiteral("cmd_Abbrechen")};
  SSPanel SSP_Info{this, QStringLiteral("SSP_Info")};
  SSPanel SSP_Anzeige{this, QStringLiteral("SSP_Anzeige")};
  Bildfeld pic_Anzeige{&SSP_Anzeige, QStringLiteral("pic_Anzeige")};
  SSPanel SSP_WeitereZuordnungen{this, QStringLiteral("SSP_WeitereZuordnungen")};
  Bildfeld Pic_Dummy{this, QStringLiteral("Pic_Dummy")};
  Bildfeld Pic_Blank{this, QStringLiteral("Pic_Blank")};
  SSCommand btnAuswahl{this, QStringLiteral("btnAuswahl")};

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_Unload() override;
  /// The press on the button to save leaves the cell that is being edited first, which may be what enables the button.
  bool eventFilter(QObject* empfaenger, QEvent* ereignis) override;

 private:
  void entwirf();
  void verbinde_Ereignisse();
  void lies_Zuordnungen();
  void nach_Artikeleingabe();
  void waehle_Artikel();
  enum class Fund { Keiner, Genau, Teil };
  Fund suche_Artikel(QString& nummer, std::int32_t zeile, bool fuellen);
  std::shared_ptr<clsArtikelManagerSQL> neuer_Artikelmanager() const;
  void lade_Vorschau(std::int32_t zeile);
  void frage_und_speichere();
  void ordne_zu(Artikelzuordnung& lauf, std::int32_t artikelzeile);
  void ordne_Bild_zu(
      Artikelzuordnung& lauf, std::int32_t zeile, const QString& artikelnummer, const QString& zielordner);
  Artikelzuordnung::Bild Bild_der_Zeile(std::int32_t zeile) const;
  bool ist_einziges(const Artikelzuordnung::Bild& bild) const;
  Artikelzuordnung::Platz Platz_von(
      const QString& ziel, const QString& name, const Artikelzuordnung::Bild& bild, bool zugeordnet) const;
  void kopiere(const Artikelzuordnung::Bild& bild, const QString& ziel, const QString& name, bool schonend);
  void uebernimm_Angaben(std::int32_t zeile);
  XArrayDBObject& Zuordnungen() const;
  XArrayDBObject& Artikel() const;
  QString Zuordnungstext(std::int32_t zeile, std::int32_t spalte) const;
  QString Artikeltext(std::int32_t zeile, std::int32_t spalte) const;

  std::shared_ptr<XArrayDBObject> m_Zuordnungen;
  std::shared_ptr<XArrayDBObject> m_Artikel;
};
