#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QImage>
#include <QRegion>
#include <QTimer>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "host/bericht/Bericht.h"
#include "host/bericht/Seitenplan.h"

/// The pages of a report, one below the other. Only what is in sight is painted, and a picture is loaded only then, one
/// after the other between the events, so that the window is up and answers at once. Pixels that were not seen for
/// longest are forgotten first.
class Seitenansicht final : public QAbstractScrollArea {
 public:
  /// How large the pages are: as the window allows, or as the user chose.
  enum class Mass { Seitenbreite, Ganze_Seite, Frei };
  /// Gives a picture's pixels, not larger than that size, or nothing when it can't be read.
  using Bildlader = std::function<QImage(const Berichtsbild&, QSize)>;
  /// The same for the firm's mark.
  using Zeichenlader = std::function<QImage(const QString& datei, QSize)>;
  /// Bytes of pixels that are kept at most.
  static constexpr qsizetype Vorrat = 64 * 1024 * 1024;

  explicit Seitenansicht(QWidget* oberhalb = nullptr);

  void Ladewege(Bildlader bilder, Zeichenlader zeichen);
  /// Gets those pictures, with their sizes, that will be loaded next, in their order; each call is the whole list.
  std::function<void(const std::vector<std::pair<const Berichtsbild*, QSize>>& naechste)> bei_Plan;
  /// Shows a report in pages. Where the picture in sight is still part of it, it stays in sight.
  void zeige(Bericht bericht, Seitenplan plan);
  const Bericht& bericht() const noexcept { return bericht_; }
  const Seitenplan& plan() const noexcept { return plan_; }

  int seiten() const noexcept { return static_cast<int>(plan_.size()); }
  /// The page of which most is in sight, counted from 1; 0 where there are none.
  int seite() const;
  void gehe_zu(int seite);
  Mass mass() const noexcept { return mass_; }
  void mass(Mass wert);
  /// Pixels of the screen for a twip.
  double massstab() const noexcept { return massstab_; }
  /// By so many steps; fewer than none makes the pages smaller.
  void vergroessere(int stufen);
  /// Another page, or another size of them, is in sight.
  std::function<void()> bei_Blick;

  /// Pictures in sight are still to be loaded.
  bool laedt() const noexcept { return !wuensche_.empty(); }
  /// How often pixels were loaded, and how many bytes of them are kept.
  int geladene() const noexcept { return geladene_; }
  qsizetype vorratsgroesse() const;

 protected:
  void paintEvent(QPaintEvent* ereignis) override;
  void resizeEvent(QResizeEvent* ereignis) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* ereignis) override;
  void wheelEvent(QWheelEvent* ereignis) override;

 private:
  /// Pixels, and the size that was asked for.
  struct Geladenes {
    QImage pixel;
    QSize gewuenscht;
  };
  struct Wunsch {
    QString schluessel;
    /// Index of the picture; none for the firm's mark.
    std::optional<std::size_t> bild;
    QSize groesse;
  };
  /// A place of a page that is to stay below a point of the screen.
  struct Anker {
    QPoint punkt;
    std::size_t seite = 0;
    QPointF anteil;
  };
  QString schluessel(std::size_t bild) const;
  void ordne_an();
  void richte_Balken_ein();
  /// Where a sheet stands in the view.
  QRect blatt(std::size_t seite) const;
  Anker anker(QPoint punkt) const;
  void halte(const Anker& anker);
  void setze_Massstab(double wert, QPoint punkt);
  std::size_t seite_mit(const QString& gesuchter) const;
  void male_Blatt(QPainter& maler, std::size_t seite, const QRect& anteil);
  void male_Bild(QPainter& maler, const QRectF& ort, const Wunsch& wunsch, const QRect& anteil);
  /// The pixels for that wish as far as they are there; what is missing is put on the list.
  const QImage* pixel(const Wunsch& wunsch);
  QRegion zu_sehen(const QString& gesuchter) const;
  void lade_naechstes();
  void sage_Plan();
  void sage_Blick();

  Bericht bericht_;
  Seitenplan plan_;
  Bildlader bildlader_;
  Zeichenlader zeichenlader_;
  Mass mass_ = Mass::Ganze_Seite;
  double massstab_ = 1;
  /// The sheets one below the other, each at the left edge.
  std::vector<QRect> blaetter_;
  int breite_ = 0;
  int raddrehung_ = 0;
  QCache<QString, Geladenes> vorrat_;
  std::vector<Wunsch> wuensche_;
  bool plan_neu_ = false;
  int geladene_ = 0;
  QTimer wecker_;
};
