#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <functional>
#include <memory>
#include <vector>

#include "platform/forms/steuerelemente/ImageList.h"
#include "platform/forms/steuerelemente/Steuerelement.h"

/// A list of pictures with a line of text each, numbered from 1. An index outside raises 9. Selections made by code
/// raise no event.
class ListView : public QListView, public Steuerelement {
 public:
  explicit ListView(QWidget* behaelter, const QString& name);
  ~ListView() override;

  /// Side of the pictures in pixels.
  void setze_Bildseite(int pixel);
  void MultiSelect(bool wert);
  bool MultiSelect() const;
  /// The images that the items show; none leaves them without.
  void Icons(const ImageList* bilder);
  const ImageList* Icons() const noexcept;

  int Count() const noexcept;
  void Clear();
  /// Appends an item; its index. While the list is hidden the display learns of it when it is shown again.
  int Add(const QString& text, const QString& tag);
  const QString& Text(int index) const;
  void Text(int index, const QString& wert);
  const QString& ItemTag(int index) const;
  /// Index into the image list; 0 for none.
  int Icon(int index) const;
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
  QPalette::ColorRole hintergrund() const override { return QPalette::Base; }
  QPalette::ColorRole vordergrund() const override { return QPalette::Text; }

 private:
  class Modell;
  void melde_Auswahl(int index);

  std::unique_ptr<Modell> modell_;
  bool durch_Code_ = false;
};
