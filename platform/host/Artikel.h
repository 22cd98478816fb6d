#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/adodb/Connection.h"
#include "platform/basic/Variant.h"
#include "platform/basic/kvo_export.h"
#include "platform/host/Komponenten.h"

/// "KVOArtik.clsArtikelManagerSQL": finds an article of the host's by its number. "KVOArtikelZF.clsArtikelManagerSQLZF"
/// is the same for hosts that keep a second article stock; the setting "MitArtikelstammZF" chooses between the two.
///
/// A new object is made for each search, Init comes first. A failure of any member counts as "not found" for the dialog
/// that asked.
class KVO_EXPORT clsArtikelManagerSQL : public komponenten::Komponente {
 public:
  ~clsArtikelManagerSQL() override;
  /// `pArt` is always 0. `pConnection` is open and stays the host's.
  virtual void Init(
      std::int32_t pArt, const QString& pConnectString, const std::shared_ptr<adodb::Connection>& pConnection) = 0;
  /// Looks for exactly that number. True makes the article the current one; False leaves the members as they were.
  /// The switches are the host's own and always come as true, false, false, false, false, true.
  virtual bool fktLeseArtikel(const QString& pArtikelnummer, bool pSchalter1, bool pSchalter2, bool pSchalter3,
      bool pSchalter4, bool pSchalter5, bool pSchalter6) = 0;
  /// Looks for an article whose number `pTeil` is a part of; True when there is one, whose full number is then
  /// Artikelnummer.
  virtual bool fktLeseArtikel_TeilArtikel(const QString& pTeil) = 0;

  // The current article; without one every member is empty.

  virtual QString Artikelnummer() const = 0;
  /// First line of the short text. Null, as a table may hold it, shows as an empty text, here and below.
  virtual Variant Bez() const = 0;
  /// Second line of the short text.
  virtual Variant bez3() const = 0;
  /// The main supplier, which is also the name of the folder for the article's pictures.
  virtual Variant Hauptlieferant() const = 0;
};
