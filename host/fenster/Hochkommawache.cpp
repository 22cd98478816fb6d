#include "host/fenster/Hochkommawache.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QTableView>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

/// The first value with an apostrophe in the grid of that name, in the columns whose headings `gemeint` takes.
template <class Ueberschrift>
std::optional<QString> wert_mit_Hochkomma(const QWidget& fenster, const QString& gitter, Ueberschrift&& gemeint) {
  const auto* tabelle = fenster.findChild<QTableView*>(gitter);
  const QAbstractItemModel* modell = tabelle ? tabelle->model() : nullptr;
  if (!modell) return std::nullopt;
  for (int spalte = 0; spalte < modell->columnCount(); ++spalte) {
    if (!gemeint(modell->headerData(spalte, Qt::Horizontal).toString())) continue;
    for (int zeile = 0; zeile < modell->rowCount(); ++zeile)
      if (const QString wert = modell->index(zeile, spalte).data().toString(); wert.contains(u'\'')) return wert;
  }
  return std::nullopt;
}

/// What the overview that stands in front would send and must not, in words; none where there is nothing.
std::optional<QString> einwand() {
  const QWidget* vorn = QApplication::activeModalWidget();
  if (!vorn) return std::nullopt;
  if (vorn->objectName() == "frm_AnzeigeZuordnung"_L1) {
    // Of an article, its number becomes the key and its supplier, in the column of that heading, the folder.
    const auto wert = wert_mit_Hochkomma(*vorn, u"TDBG_WeitereZuordnungen"_s,
        [](const QString& ueberschrift) { return ueberschrift == "Artikel-Nr"_L1 || ueberschrift == "Referenz 3"_L1; });
    if (wert)
      return u"„%1“ enthält ein Hochkomma; solchen Artikeln sind keine Bilder zuzuordnen. Nichts ist zugeordnet."_s.arg(
          *wert);
  }
  if (vorn->objectName() == "frm_AlleZuordnungen"_L1) {
    // Deleting names the whole identity of each row. The list does not tell which rows are chosen.
    const auto wert = wert_mit_Hochkomma(*vorn, u"TDBG_Zuordnungen"_s, [](const QString& ueberschrift) {
      return ueberschrift.startsWith("Referenz "_L1) || ueberschrift.startsWith("Art "_L1) ||
          ueberschrift == "Dateiname"_L1 || ueberschrift == "Ext"_L1;
    });
    if (wert)
      return u"„%1“ enthält ein Hochkomma; solange die Liste eine solche Zuordnung hat, ist keine zu löschen. Nichts "
             u"ist "
             "gelöscht."_s.arg(*wert);
  }
  return std::nullopt;
}

}  // namespace

class Hochkommawache::Fenster final : public Meldungsfenster {
 public:
  std::shared_ptr<Meldungsfenster> eigentliches;

  Antwort zeige(const Meldung& meldung) override {
    if (meldung.Auswahl == Knoepfe::OK) return eigentliches->zeige(meldung);
    const std::optional<QString> grund = einwand();
    if (!grund) return eigentliches->zeige(meldung);
    eigentliches->zeige({*grund, u"Bildzuordnung"_s, Symbol::Ausrufezeichen, Knoepfe::OK});
    return Antwort::Nein;
  }
};

Hochkommawache::Hochkommawache() {
  const auto fenster = std::make_shared<Fenster>();
  vorher_ = setze(std::shared_ptr<Meldungsfenster>(fenster));
  fenster->eigentliches = vorher_;
}

Hochkommawache::~Hochkommawache() {
  setze(vorher_);
}
