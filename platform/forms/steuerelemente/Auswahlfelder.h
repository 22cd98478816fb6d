#pragma once

#include <QComboBox>
#include <functional>

#include "platform/forms/steuerelemente/Steuerelement.h"

/// A drop-down list of texts. Click runs when the chosen entry changes, by the user or by code, at once.
class ComboBox : public QComboBox, public Steuerelement {
 public:
  explicit ComboBox(QWidget* behaelter, const QString& name);

  void AddItem(const QString& text) { addItem(text); }
  /// Entry chosen, from 0; -1 for none. A number outside raises 380.
  int ListIndex() const { return currentIndex(); }
  void ListIndex(int wert);

  std::function<void()> Click;
};

/// A drop-down list of texts with a key and a picture each. Click runs when the user chooses; code raises nothing.
class ImageCombo : public QComboBox, public Steuerelement {
 public:
  explicit ImageCombo(QWidget* behaelter, const QString& name);

  int Count() const { return count(); }
  void Clear() { clear(); }
  /// Appends an item with the number of its image; keys are unique (457 otherwise).
  void Add(const QString& schluessel, const QString& text, int bild, const QIcon& icon);
  /// Items count from 1; an index outside raises 9.
  QString Text(int index) const { return angabe(index, Qt::DisplayRole).toString(); }
  QString Key(int index) const { return angabe(index, SchluesselRolle).toString(); }
  int Image(int index) const { return angabe(index, BildRolle).toInt(); }
  /// Selects the item with that key. Raises 35601 when there is none.
  void waehle(const QString& schluessel);
  /// Text of the selected item. Raises 91 without one.
  QString gewaehlter_Text() const;

  std::function<void()> Click;

 private:
  static constexpr int SchluesselRolle = Qt::UserRole;
  static constexpr int BildRolle = Qt::UserRole + 1;
  QVariant angabe(int index, int rolle) const;
};
