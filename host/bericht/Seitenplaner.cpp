#include "host/bericht/Seitenplaner.h"

#include <QLocale>
#include <algorithm>
#include <optional>

#include "host/bericht/Bildmass.h"
#include "host/bericht/Bildunterschrift.h"
#include "host/bericht/Seitengeruest.h"
#include "host/bericht/Textsatz.h"

using namespace Qt::Literals::StringLiterals;

namespace seitenplan {
namespace {

constexpr double Abstand_der_Unterschrift = 80;
/// So much of a place belongs to the text at most; the rest of a longer one goes on on a page of its own.
constexpr double Groesster_Textanteil = 0.4;

class Planer {
 public:
  Planer(const Bericht& bericht, int je_Seite, QSizeF zeichen)
      : bericht_(bericht), je_Seite_(je_Seite), zeichen_(zeichen) {}

  Seitenplan plane() {
    setze_alle(false, u"Bild %1"_s);
    setze_alle(true, u"Anlage %1"_s);
    if (bericht_.bilder.empty()) setze_Hinweis();
    beende_Seite();
    const QString datum = QLocale(QLocale::German).toString(bericht_.datum, u"dd.MM.yyyy"_s);
    for (std::size_t i = 0; i < plan_.size(); ++i) setze_Fuss(plan_[i], datum, i + 1, plan_.size());
    return std::move(plan_);
  }

 private:
  void setze_alle(bool anhang, const QString& nummernform) {
    int nummer = 0;
    for (std::size_t i = 0; i < bericht_.bilder.size(); ++i) {
      if (bericht_.bilder[i].anhang != anhang) continue;
      ++nummer;
      if (anhang && nummer == 1) beginne_Anlagen(bericht_.bilder[i]);
      setze_Bild(i, nummernform.arg(nummer));
    }
  }

  void setze_Bild(std::size_t i, const QString& nummer) {
    const Berichtsbild& bild = bericht_.bilder[i];
    if (bild.ganze_Seite) {
      if (!ueberschrift_frei_) beginne_Seite(ist_quer(bild));
      setze_in(flaeche_, i, nummer);
      beende_Seite();
    } else {
      if (!seite_ || naechster_ == plaetze_.size() || (bild.neue_Seite && !ueberschrift_frei_)) beginne_Seite(false);
      setze_in(plaetze_[naechster_++], i, nummer);
    }
    ueberschrift_frei_ = false;
  }

  static bool ist_quer(const Berichtsbild& bild) { return bild.groesse.width() > bild.groesse.height(); }

  /// The heading of the attachments stands above the first of them, at the beginning of a row.
  void beginne_Anlagen(const Berichtsbild& erste) {
    const std::size_t spalten = je_Seite_ > 2 ? 2 : 1;
    if (naechster_ % spalten != 0) ++naechster_;
    const bool neue_Seite = erste.ganze_Seite || erste.neue_Seite || bericht_.anlagen_auf_neuer_Seite;
    if (!seite_ || neue_Seite || naechster_ >= plaetze_.size()) beginne_Seite(erste.ganze_Seite && ist_quer(erste));
    const double hoehe = textsatz::zeilenhoehe(Schrift::Ueberschrift) + Abstand_der_Unterschrift;
    const QPointF ort = plaetze_[naechster_].topLeft();
    seite_->texte.push_back(
        {ort + QPointF(0, textsatz::oberlaenge(Schrift::Ueberschrift)), u"Anlagen"_s, Schrift::Ueberschrift});
    for (std::size_t i = naechster_; i < naechster_ + spalten; ++i) plaetze_[i].setTop(ort.y() + hoehe);
    flaeche_.setTop(flaeche_.top() + hoehe);
    ueberschrift_frei_ = true;
  }

  /// A picture with its text below; they are never parted.
  void setze_in(const QRectF& platz, std::size_t i, const QString& nummer) {
    const Berichtsbild& bild = bericht_.bilder[i];
    Bildunterschrift rest(nummer, bild, platz.width());
    const Bildunterschrift vorn = rest.entnimm(platz.height() * Groesster_Textanteil);
    QRectF frei = platz;
    frei.setHeight(platz.height() - vorn.hoehe() - Abstand_der_Unterschrift);
    const QRectF ort = bild.grund.isEmpty() ? bildort(frei, bild.groesse) : frei;
    seite_->bilder.push_back({ort, i, !bild.grund.isEmpty()});
    if (!bild.grund.isEmpty()) setze_Grund(ort, bild);
    vorn.setze({platz.left(), ort.bottom() + Abstand_der_Unterschrift}, seite_->texte);
    if (!rest.leer()) reste_.push_back(std::move(rest));
  }

  /// Name and reason in the middle of the empty frame.
  void setze_Grund(const QRectF& ort, const Berichtsbild& bild) {
    const double breite = ort.width() - 4 * Abstand_der_Unterschrift;
    double oben = ort.center().y() - textsatz::zeilenhoehe(Schrift::Text);
    for (const auto& [text, art] : {std::pair(bild.datei, Schrift::Nummer), std::pair(bild.grund, Schrift::Text)}) {
      const QString zeile = textsatz::gekuerzt(text, art, breite);
      const double links = ort.center().x() - textsatz::breite(zeile, art) / 2;
      seite_->texte.push_back({{links, oben + textsatz::oberlaenge(art)}, zeile, art});
      oben += textsatz::zeilenhoehe(art);
    }
  }

  void setze_Hinweis() {
    beginne_Seite(false);
    double oben = flaeche_.top();
    for (const QString& zeile : textsatz::umbruch(bericht_.ohne_Bilder, Schrift::Text, flaeche_.width())) {
      seite_->texte.push_back({{flaeche_.left(), oben + textsatz::oberlaenge(Schrift::Text)}, zeile, Schrift::Text});
      oben += textsatz::zeilenhoehe(Schrift::Text);
    }
  }

  void beginne_Seite(bool quer) {
    beende_Seite();
    auto [seite, flaeche] = mit_Kopf(bericht_, zeichen_, quer, plan_.empty());
    seite_ = std::move(seite);
    flaeche_ = flaeche;
    plaetze_ = plaetze(flaeche_, je_Seite_);
    naechster_ = 0;
  }

  /// The page is done; what its texts left goes on behind it.
  void beende_Seite() {
    if (!seite_) return;
    plan_.push_back(std::move(*seite_));
    seite_.reset();
    for (const Bildunterschrift& rest : std::exchange(reste_, {})) setze_Rest(rest);
    if (seite_) plan_.push_back(std::move(*seite_));
    seite_.reset();
  }

  void setze_Rest(Bildunterschrift rest) {
    while (!rest.leer()) {
      if (!seite_) beginne_Seite(false);
      const double frei = flaeche_.height();
      if (frei < rest.hoehe() && frei < textsatz::zeilenhoehe(Schrift::Text) * 3) {
        plan_.push_back(std::move(*seite_));
        seite_.reset();
        continue;
      }
      const Bildunterschrift vorn = rest.entnimm(frei);
      vorn.setze(flaeche_.topLeft(), seite_->texte);
      flaeche_.setTop(flaeche_.top() + vorn.hoehe() + textsatz::zeilenhoehe(Schrift::Text));
    }
  }

  const Bericht& bericht_;
  int je_Seite_;
  QSizeF zeichen_;
  Seitenplan plan_;
  /// The page that is being filled.
  std::optional<Seite> seite_;
  QRectF flaeche_;
  std::vector<QRectF> plaetze_;
  std::size_t naechster_ = 0;
  /// The heading of the attachments stands there, and nothing below it yet.
  bool ueberschrift_frei_ = false;
  std::vector<Bildunterschrift> reste_;
};

}  // namespace

Seitenplan plane(const Bericht& bericht, int je_Seite, QSizeF zeichen) {
  return Planer(bericht, je_Seite, zeichen).plane();
}

}  // namespace seitenplan
