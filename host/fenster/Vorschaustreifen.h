#pragma once

#include <QImage>
#include <QList>
#include <QListView>
#include <QSize>
#include <QString>
#include <functional>

/// One picture of the strip.
struct Vorschaubild {
  /// Folder and file for the loader, as the table writes them.
  QString ordner;
  QString datei;
  QString beschreibung;
  /// The file is not there, or its row leads out of the picture root, where nobody looks.
  bool fehlt = false;
  bool ausserhalb = false;
};

/// The pictures of a record as small previews with their texts, side by side and in as many lines as they need. A
/// preview is loaded when it has come into sight, one after the other between the events, so that the window is up and
/// answers at once. What leaves the sight before its turn, and what belongs to the pictures shown before, is given up.
class Vorschaustreifen final : public QListView {
 public:
  /// Gives the pixels of a picture, not larger than that size, or nothing when it can't be read.
  using Lader = std::function<QImage(const Vorschaubild&, QSize)>;

  explicit Vorschaustreifen(QWidget* oberhalb = nullptr);

  void Ladeweg(Lader lader);
  /// Shows other pictures.
  void setze(const QList<Vorschaubild>& bilder);
  int anzahl() const;
  /// The picture that the user chose, or none.
  const Vorschaubild* gewaehltes() const;
  /// Another picture was chosen, or none is any more.
  std::function<void()> bei_Wahl;
  /// Number of pictures whose pixels are there; those that can't be read count too.
  int geladene() const;
  /// The pictures whose previews are still to be loaded, in their order.
  QList<Vorschaubild> kommende() const;
  /// Loads what is in sight at once.
  void lade_Sichtbare();

 private:
  class Modell;
  class Maler;
  Modell* modell_;
};
