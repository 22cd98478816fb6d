#pragma once

#include <QListView>
#include <functional>

#include "platform/forms/steuerelemente/Listenmodell.h"
#include "platform/forms/steuerelemente/Steuerelement.h"

/// A list of pictures with a line of text each, numbered from 1. An index outside raises 9. Selections made by code
/// raise no event.
class ListView : public QListView, public Steuerelement {
 public:
  explicit ListView(QWidget* behaelter, const QString& name);

  /// Side of the pictures in pixels.
  void setze_Bildseite(int pixel);
  void MultiSelect(bool wert) { setSelectionMode(wert ? ExtendedSelection : SingleSelection); }
  bool MultiSelect() const { return selectionMode() == ExtendedSelection; }
  /// The images that the items show; none leaves them without.
  void Icons(const ImageList* bilder) { modell_->zeige_Bilder(bilder); }
  const ImageList* Icons() const noexcept { return modell_->bilder; }

  int Count() const noexcept { return modell_->anzahl(); }
  void Clear();
  /// Appends an item; its index. While the list is hidden the display learns of it when it is shown again.
  int Add(const QString& text, const QString& tag);
  const QString& Text(int index) const { return modell_->eintrag(index).text; }
  void Text(int index, const QString& wert);
  const QString& ItemTag(int index) const { return modell_->eintrag(index).tag; }
  /// Index into the image list; 0 for none.
  int Icon(int index) const { return modell_->eintrag(index).bild; }
  void Icon(int index, int bild);
  bool Selected(int index) const;
  void Selected(int index, bool wert);
  /// The item that the user chose last, if it is still selected; 0 for none.
  int SelectedItem() const;

  /// The user chose an item, by mouse or key.
  std::function<void(int index)> ItemClick;
  std::function<void()> DblClick;

 protected:
  void showEvent(QShowEvent* ereignis) override;
  void currentChanged(const QModelIndex& jetzt, const QModelIndex& vorher) override;
  void focusInEvent(QFocusEvent* ereignis) override;
  void keyPressEvent(QKeyEvent* ereignis) override;
  void mousePressEvent(QMouseEvent* ereignis) override;
  void mouseDoubleClickEvent(QMouseEvent* ereignis) override;

 private:
  void melde_Auswahl(int index);

  Listenmodell* const modell_;
  bool durch_Code_ = false;
};
