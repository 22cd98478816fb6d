#pragma once

#include <QString>

#include "platform/host/Artikel.h"

/// The article manager over one of the program's own article tables: "Artikelstamm", or "ArtikelstammZF" for firms with
/// a second stock.
class Artikelstamm final : public clsArtikelManagerSQL {
 public:
  explicit Artikelstamm(QString tabelle) : tabelle_(std::move(tabelle)) {}

  void Init(
      std::int32_t pArt, const QString& pConnectString, const std::shared_ptr<adodb::Connection>& pConnection) override;
  bool fktLeseArtikel(const QString& pArtikelnummer, bool pSchalter1, bool pSchalter2, bool pSchalter3, bool pSchalter4,
      bool pSchalter5, bool pSchalter6) override;
  /// Of several articles the first in the order of their numbers. A blank part finds none.
  bool fktLeseArtikel_TeilArtikel(const QString& pTeil) override;
  QString Artikelnummer() const override { return nummer_; }
  Variant Bez() const override { return bez_; }
  Variant bez3() const override { return bez3_; }
  Variant Hauptlieferant() const override { return lieferant_; }

 private:
  bool lies(const QString& bedingung);

  QString tabelle_;
  std::shared_ptr<adodb::Connection> verbindung_;
  QString nummer_;
  Variant bez_;
  Variant bez3_;
  Variant lieferant_;
};
